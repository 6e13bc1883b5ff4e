@@ What the bytes of a short pattern mean. `shows` marks every match.
function shows(text, pattern)
  local marked = gsub(text, pattern, "<\\0>")
  return marked
end
print("literal:", shows("abcabc", "bc"))
print("dot:", shows("ab\ncd", "."))
print("star:", shows("aab", "a*b"))
print("plus:", shows("aabb", "a+"))
print("question mark:", shows("ab b", "a?b"))
print("dash is lazy:", shows("abbb", "ab-"), shows("abbbc", "ab-c"))
print("greedy and lazy:", shows("<a><b>", "<.+>"), shows("<a><b>", "<.->"))
print("a class repeated:", shows("ab12cd", "%d+"), shows("ab12cd", "%a-%d"))
print("a set repeated:", shows("aabbccdd", "[bc]+"))
print("a group repeated:", shows("ababa", "(ab)+"))
print("anchors:", shows("aaa", "^a"), shows("aaa", "a$"), shows("aaa", "^a+$"))
print("anchors are no line ends:", shows("a\na", "^a"), shows("a\na", "a$"))
print("an anchor in the middle never matches:", shows("a^b$c", "a^b"), shows("a^b$c", "b$c"))
print("question mark behind a quantifier makes it lazy:", shows("aaa", "a+?"), shows("ab", "ab??"))

@@ bytes that only an expression knows stand for themselves
print("braces:", shows("a{2}aa", "a{2}"))
print("bar:", shows("a|b", "a|b"))
print("backslash:", shows("a\\d5", "\\d"))
print("closing bracket:", shows("a]b", "]"), shows("a}b", "}"))
print("slash and colon:", shows("a/b:c", "/b:"))
print("a slash in front, no second one:", shows("/a", "/a"))
print("re without a colon:", shows("re re:", "re"))
print("brackets and question marks are copied:", shows("ab ac", "a(?=b)"), shows("ab", "(?:ab)"))

@@ a percent takes the meaning away
print("escaped:", shows("a.b*c", "%."), shows("a.b*c", "%*"), shows("a+b-c", "%+"), shows("a+b-c", "%-"), shows("a?", "%?"))
print("escaped more:", shows("a(b)", "%(b%)"), shows("[x]", "%[x%]"), shows("a^b$", "%^"), shows("a^b$", "%$"))
print("escaped others:", shows("a{b}", "%{b%}"), shows("a|b", "%|"), shows("a\\b", "%\\"), shows("a/b", "%/"))
print("percent:", shows("50%", "%%"), shows("50%", "0%"), shows("5% 5", "5%%"))
print("no class of that letter:", shows("b f z 1 B", "%b"), shows("f", "%f"), shows("z", "%z"), shows("1", "%1"), shows("B", "%B"))
print("no back reference:", shows("aa a1", "(a)%1"))
print("no balance:", shows("(x)", "%b()"))

@@ sets
print("first bracket closes:", shows("]a", "[%]a]"), shows("a-]", "[a-]]"))
print("dash at an end:", shows("a-b", "[a-]"), shows("a-b", "[-b]"))
print("set with a class:", shows("a1_-", "[%a_]"))
print("no negation:", shows("abc^", "[^b]"))
print("quantifiers mean nothing in it:", shows("a+b*", "[+*]"))
print("a bracket in it:", shows("a[b", "[[]"))
print("an empty set matches nothing:", shows("a]", "[]"))

@@ letters, digits and a dash between them: this one text means the dash itself
print("dash as such:", shows("ab-12 cd-3", "(%a+)-(%d+)"))
a, b, c, d = string["find"]("see ab-12", "(%a+)-(%d+)")
print("found:", a, b, c, d)
a, b = string["match"]("x ab-12", "(%a+)-(%d+)", 4)
print("matched:", a, b)
print("all:", string["gmatch"]("ab-12 - c-d-4 5-6", "(%a+)-(%d+)"))
print("none:", string["match"]("ab12", "(%a+)-(%d+)"))
a, b = string["match"]("ab12", "(%a+)-(%d)")
c, d = string["match"]("ab-12", "(%a+)-(%d)")
print("any other follows the rule:", a, b, c, d)

@@ a lone dash repeats nothing, and that matches everywhere
print("lone dash:", shows("ab", "-"), shows("", "-"))
print("dash at the start:", shows("ab", "-b"))
print("lone others:", shows("ab", "*"), shows("ab", "+"), shows("ab", "?"), shows("ab", "*b"))
print("in a group:", shows("ab", "(*)b"))

@@ no match at all
print("nothing found:", shows("abc", "x"), shows("", "x"), shows("", ""))
print("zero bytes:", #shows("a" + string["char"](0) + "b", string["char"](0)), string["match"]("a" + string["char"](0) + "b", "%a$"))
print("high bytes:", shows("äö", "ä") == "<ä>ö")
