print(gsub("hello", "l+", "<\\0>"), string["gsub"]("a-b", "(%a)-(%a)", "\\2\\1\\+\\`\\'"))
print(string["find"]("key=value", "(%w+)=(%w*)"), string["match"]("x12", "%d+"), gsub("aXb", "/x/i", "-"))
for word in string["gmatch"]("one two", "[%a_]+")
  print(word)
end
print(gsub("abc", "re:(a|b)*?c", {abc = "T"}), pcall(gsub, "a", "re:(", ""), pcall(gsub, "a", "/x/q", ""))
print(gsub("a\nb", "/a.b/m", "."), string["match"]("aaa", "re:(?=a)(a{2,3})\\1?"))
