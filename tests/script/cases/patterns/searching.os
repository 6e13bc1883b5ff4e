@@ find, match and gmatch: what they give, where they begin, what they refuse.
find = string["find"]
match = string["match"]
gmatch = string["gmatch"]
@@ the values of a call in words
function words(value)
  local a, b, c, d, e, f = value
  local text = ""
  for one in [[a], [b], [c], [d], [e], [f]]
    if typeOf(one) != "not"
      text += one + "/"
    end
  end
  return text
end
print("place:", words(find("hello", "l+")))
print("captures:", words(find("k=v", "(%a)=(%a)")))
a, b, c, d, e = find("b", "re:(a)?(b)")
print("a capture without a part:", a, b, c, d, e)
print("none:", find("abc", "z"), find("", "z"))
print("empty match:", words(find("abc", "x*")), words(find("", "x*")), words(find("abc", "$")))
print("leftmost:", words(find("xaab", "a*b")), words(find("xaab", "a-b")))

@@ the place to begin
print("from:", words(find("banana", "an", 2)), words(find("banana", "an", 3)), find("banana", "an", 5))
print("below 1 is 1:", words(find("banana", "an", 0)), words(find("banana", "an", -2)))
print("nil is 1:", words(find("banana", "an", not)))
print("a fraction is cut:", words(find("banana", "an", 3.9)))
print("one behind the end:", words(find("abc", "x*", 4)), find("abc", "x*", 5), find("abc", "%a", 4))
print("the rest is a text of its own:", words(find("banana", "^an", 2)), find("banana", "^an"), words(find("banana", "re:\\ban", 4)))
print("plain:", words(find("a.b", ".", 1, true)), words(find("a.b", ".", 1, false)), words(find("a.b", ".", 1, not)))
print("plain by truth:", words(find("a+b", "+", 1, 0)), words(find("a+b", "+", 1, "")))
print("plain, empty text:", words(find("abc", "", 2, true)), find("abc", "", 5, true))
print("plain needs no good pattern:", words(find("re:(", "re:(", 1, true)), words(find("/x/q", "/x/q", 1, true)))

@@ match
print("whole:", match("hello 42", "%d+"), match("hello", "%d+"))
print("one capture:", match("k=v", "%a=(%a)"))
print("several captures:", words(match("k=v", "(%a)=(%a)")))
a, b = match("b", "re:(a)?(b)")
print("a capture without a part:", a, b, match("b", "re:(a)?b"))
print("captures in captures:", words(match("ab1", "((%a)%a)(%d)")))
print("a repeated group has its last round:", match("abc", "(%a)+"))
print("from:", match("a1b2", "%a%d", 2), match("a1b2", "%d", 3), match("a1", "%d", 3), match("a1", "%d", 4))
print("empty match:", "[" + match("abc", "x*") + "]", "[" + match("abc", "()") + "]")

@@ gmatch gives an array
print("whole:", gmatch("one two", "%a+"), gmatch("a1b22", "%d+"))
print("one capture:", gmatch("a=1 b=2", "(%a)=%d"))
print("several:", gmatch("a=1 b=2", "(%a)=(%d)"))
print("none:", gmatch("abc", "x"), gmatch("", "x"), typeOf(gmatch("abc", "x")))
print("empty matches:", gmatch("ab", "x*"), gmatch("", ""), #gmatch("abc", ""))
print("a capture without a part:", gmatch("abb", "re:(a)?b"), gmatch("ab b", "re:(a)?(b)"))
print("adjacent:", gmatch("aaaa", "aa"))
log = ""
for word in gmatch("x yy", "%a+")
  log += "<" + word + ">"
end
for key, value in gmatch("a=1 b=2", "(%a)=(%d)")
  log += key + value + ";"
end
print("walked:", log)

@@ the text is copied: what changes it later changes no match
text = "a b"
log = ""
for word in gmatch(text, "%a")
  text = "c d e"
  log += word
end
print("changed while it is walked:", log)

@@ what they refuse
function tries(name, f)
  local ok, message = pcall(f)
  print(name, ok, message)
  ok, message = pcall(f, "abc")
  print(name, ok, message)
  ok, message = pcall(f, 5, "b")
  print(name, ok, message)
  ok, message = pcall(f, "abc", 5)
  print(name, ok, message)
  ok, message = pcall(f, not, "b")
  print(name, ok, message)
  ok, message = pcall(f, "abc", not)
  print(name, ok, message)
end
tries("find:", find)
tries("match:", match)
tries("gmatch:", gmatch)
ok, message = pcall(find, "abc", "b", 1, true, 1)
print("five:", ok, message)
ok, message = pcall(match, "abc", "b", 1, true)
print("four:", ok, message)
ok, message = pcall(gmatch, "abc", "b", 1)
print("three:", ok, message)
ok, message = pcall(find, "abc", "b", "1")
print("text for a place:", ok, message)
ok, message = pcall(match, "abc", "b", [1])
print("array for a place:", ok, message)

@@ long texts
long = string["rep"]("ab", 500000) + "c"
print("long:", words(find(long, "(ab)+c")), #match(long, "[ab]+"), words(find(long, "c$")), words(find(long, "bc")))
print("long gmatch:", #gmatch(long, "a"), #gmatch(long, "re:(ab)*"))
