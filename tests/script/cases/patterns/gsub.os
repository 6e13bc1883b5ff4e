@@ Replacing: what is replaced, by what, and how often.
function twoOf(text, pattern, replacement)
  local result, count = gsub(text, pattern, replacement)
  return [result, count]
end
print("several:", twoOf("banana", "an", "<>"))
print("none:", twoOf("banana", "x", "<>"))
print("by nothing:", twoOf("banana", "a", ""))
print("from nothing:", twoOf("", "a", "b"), twoOf("", "", "b"))
print("adjacent:", twoOf("aaaa", "aa", "b"))
print("the result is not searched again:", twoOf("aaa", "a", "aa"))
print("whole text:", twoOf("abc", ".*", "x"))
print("single digits:", twoOf("a1b22", "%d", "#"), twoOf("no digits", "%d", "#"), twoOf("7", "%d", "[\\0]"))

@@ empty matches: one at each place, and behind a match that isn't empty
print("empty pattern:", twoOf("abc", "", "-"))
print("star:", twoOf("abc", "x*", "-"))
print("star that sometimes matches:", twoOf("baac", "a*", "-"))
print("lazy star:", twoOf("ab", "a-", "-"))
print("end of the text:", twoOf("ab", "$", "-"), twoOf("ab", "^", "-"))

@@ the backslash in a replacement
print("whole match:", twoOf("abc", "b", "[\\0]"), twoOf("abc", "b", "[\\&]"))
print("before and behind:", twoOf("abc", "b", "[\\`]"), twoOf("abc", "b", "[\\']"))
print("before and behind, twice:", twoOf("a1b2c", "%d", "(\\`|\\')"))
print("captures:", twoOf("key=value", "(%a+)=(%a+)", "\\2=\\1"))
print("last capture:", twoOf("key=value", "(%a+)=(%a+)", "\\+"), twoOf("key", "key", "[\\+]"))
print("a capture that doesn't exist:", twoOf("abc", "(b)", "[\\2]"), twoOf("abc", "b", "[\\1]"))
print("a capture without a part:", twoOf("b", "re:(a)?b", "[\\1]"), twoOf("b", "re:(a)?b", "[\\+]"))
print("digits behind a capture:", twoOf("abc", "(b)", "\\10"), twoOf("abc", "(b)", "\\12"), twoOf("abc", "(b)", "\\91"))
print("nought is the match, whatever follows:", twoOf("abc", "(b)", "\\01"))
many = "re:(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)"
print("two digits:", twoOf("abcdefghijk", many, "\\10\\11\\1"), twoOf("abcdefghijk", many, "\\12"), twoOf("abcdefghijk", many, "\\110"))
print("a backslash:", twoOf("abc", "b", "\\\\"), twoOf("abc", "b", "\\\\0"))
print("any other:", twoOf("abc", "b", "\\n\\x\\."))
print("at the end:", twoOf("abc", "b", "x\\"))
print("a percent means nothing:", twoOf("abc", "(b)", "%0%1%%"))
print("a dollar neither:", twoOf("abc", "(b)", "$1$&"))

@@ tables
print("table:", twoOf("one two", "%a+", {one = 1, two = 2.5}))
print("whole match, not capture:", twoOf("a1", "(%a)%d", {a1 = "yes", a = "no"}))
print("values are taken as they stand:", twoOf("a", "a", {a = "\\0%0"}))
print("values of all kinds:", twoOf("abcd", "%a", {a = true, b = not, c = [1], d = "x"}))
print("unused:", twoOf("abc", "x", {}))
ok, message = pcall(gsub, "abc", "%a", {a = 1})
print("missing:", ok, message)
ok, message = pcall(gsub, "a", "x*", {a = 1})
print("missing, empty:", ok, "[" + message + "]")
ok, message = pcall(gsub, "a", "a", ["b"])
print("array:", ok, message)

@@ both names are one function
a, b = string["gsub"]("aa", "a", "b")
print("the table's:", a, b)
text = "method"
a, b = text["gsub"]("t", "T")
print("as a method:", a, b)
a = gsub("aa", "a", "b")
print("first value:", a, typeOf(gsub("aa", "a", "b")))

@@ large texts
long = string["rep"]("ab", 200000)
a, b = gsub(long, "a", "xyz")
print("long:", #a, b)
a, b = gsub(long, "(ab)+", "x")
print("long match:", a, b)
ok, a = pcall(gsub, string["rep"]("a", 1000), "a", "\\`")
print("all that stands before, each time:", ok, #a)
