@@ Regular expressions given as such: "re:..." and "/.../flags".
function shows(text, pattern)
  local marked = gsub(text, pattern, "<\\0>")
  return marked
end
function refuses(pattern)
  local ok, message = pcall(gsub, "a", pattern, "")
  if ok
    return "no"
  end
  return message
end
print("re:", shows("a1b22", "re:[0-9]+"), shows("5%d", "re:%d"), shows("a-b", "re:-"))
print("re takes no flags:", shows("aA", "re:a"), shows("/a/i", "re:/a/i"))
print("empty re:", shows("ab", "re:"))
print("slashes:", shows("aab", "/a+/"), shows("ab", "//"))
print("flag i:", shows("aXbx", "/x/i"), shows("aBcD", "/[a-c]/i"), shows("HeLLo", "/hello/i"), shows("É", "/é/i"))
print("flag m:", shows("a\nb", "/a.b/m"), shows("a\nb", "/a.b/"))
print("m leaves these dots:", shows("a.\n", "/\\./m"), shows("a.\n", "/[.]/m"), shows("[\n", "/\\[./m") == "<[\n>")
print("m behind a set:", shows("a\n", "/[a]./m") == "<a\n>", shows("]\n", "/[\\]]./m") == "<]\n>", shows("\\\n", "/\\\\./m") == "<\\\n>")
print("m moves no anchor:", shows("a\nb", "/^b/m") == "a\nb", shows("a\nb", "/a$/m") == "a\nb")
print("both, in any number:", shows("A\nB", "/a.b/im") == "<A\nB>", shows("A\nB", "/a.b/mimi") == "<A\nB>")
print("escaped slash:", shows("a/b", "/a\\/b/"), shows("a/b/c", "/a/b/"))
print("a slash that is no end:", shows("/a\\/", "/a\\/"), shows("/a/1", "/a/1"), shows("/a/ i", "/a/ i"))
print("one slash:", shows("a/b", "/"))
print("a set of slashes:", shows("a/b", "/[/]/"))

@@ unknown flags
print(refuses("/x/q"))
print(refuses("/x/g"))
print(refuses("/x/iz"))
print(refuses("/x/I"))
print(refuses("/a/b"))
print(refuses("/(/q"))
for f in [string["find"], string["match"], string["gmatch"]]
  ok, message = pcall(f, "a", "/x/q")
  print(ok, message)
end

@@ what is no expression
opening = "gsub: invalid regex pattern '"
for pattern in ["re:(", "re:)", "re:[a", "re:*", "re:+a", "re:a{2,1}", "re:a{x}", "re:\\", "re:(?<a)", "re:[b-a]", "/(/", "/*/i", "(", "[a", "%a)"]
  message = refuses(pattern)
  words = opening + pattern + "': "
  print(pattern, string["sub"](message, 1, len(words)) == words, len(message) > len(words))
end
ok, message = pcall(string["find"], "a", "re:(")
print("find:", string["sub"](message, 1, 35))
print("again, the same:", refuses("re:(") == refuses("re:("))
print("a lone dash in an expression is itself:", shows("a-b", "re:-"), shows("a-b", "/-/"))
print("a lone quantifier in an expression is a fault:", string["sub"](refuses("/+/"), 1, 28))

@@ the grammar
print("alternatives:", shows("cat dog", "re:cat|dog"), shows("ab", "re:a|ab"), shows("ab", "re:(?:a|ab)$"))
print("counts:", shows("aaaa", "re:a{2}"), shows("aaaa", "re:a{3,}"), shows("aaaa", "re:a{1,2}"), shows("aaaa", "re:a{1,2}?"))
print("a repeated quantifier:", shows("aaab", "re:a**b"))
print("lazy:", shows("aaa", "re:a+?"), shows("<a><b>", "re:<.*?>"))
print("groups:", shows("abab", "re:(?:ab)+"), shows("aabb", "re:(a)\\1(b)\\2"))
print("look-ahead:", shows("ab ac", "re:a(?=c)"), shows("ab ac", "re:a(?!c)"))
print("word boundaries:", shows("cat concat", "re:\\bcat\\b"), shows("cat concat", "re:\\Bcat"))
print("escapes:", shows("a\tb", "re:\\t") == "a<\t>b", shows("A", "re:\\x41"), shows("A", "re:\\u0041"))
print("classes:", shows("a_1 !", "re:\\w+"), shows("a_1 !", "re:\\W+"), shows("a1", "re:\\D"), shows("a b", "re:\\S"))
print("classes in a set:", shows("a1 !", "re:[\\d\\s]"), shows("a1!", "re:[[:alpha:]]"), shows("a1!", "re:[^[:alnum:]]"))
print("dots and line ends:", shows("a\nb", "re:.") == "<a>\n<b>")

@@ a search that explodes ends in an error, in the words of whoever searched
text = string["rep"]("a", 5000) + "cb"
hard = "re:(a+)+b"
ok, message = pcall(gsub, text, hard, "")
print(ok, message)
ok, message = pcall(string["find"], text, hard)
print(ok, message)
ok, message = pcall(string["match"], text, hard)
print(ok, message)
ok, message = pcall(string["gmatch"], text, hard)
print(ok, message)
print("and the next one is as good as ever:", shows("aab", hard))
