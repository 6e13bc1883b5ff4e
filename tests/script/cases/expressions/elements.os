function firstLine(text)
  text = toString(text)
  local stop = string["find"](text, "\n", 1, true)
  if stop == not
    return text
  end
  return string["sub"](text, 1, stop - 1)
end

@@ the value of a chunk, or the first line of what is wrong with it
function attempt(text)
  local chunk, why = load(text)
  if chunk == not
    return "rejected: " + firstLine(why)
  end
  local ok, value = pcall(chunk)
  if ok
    return value
  end
  return string["sub"](firstLine(value), 21)
end

list = [10, 20, 30]
map = {k = 1, "2" = "two"}
print(list[1], list[3.0], list[4], list[0], list[-1], list[1.5], list["1"], list[true], list[not], list[[]])
print(map["k"], map[2], map["none"], map[2.0], attempt("return map[not]"), attempt("return map[[]]"))
word = "abc"
print(word[1], word[3], word[0], word[4], word[-1], word["none"], word["len"](), word["sub"](2, 3), word["rep"](2))
print(attempt("return word[1.0]"), attempt("return word[true]"), attempt("return word[not]"), attempt("return word[[]]"))
keep = string
string["twice"] = keep["upper"]
print("ab"["twice"]())
string["value"] = 5
print("ab"["value"])
function shout(text, mark)
  return text + mark
end
string["shout"] = shout
print("ab"["shout"]("!"), "ab"["shout"]()) 
bound = "ab"["shout"]
print(bound("?"), typeOf(bound))
string = not
print("ab"["upper"], "ab"[1])
string = [1]
print("ab"["upper"])
string = keep
word[2] = "X"
print(word, attempt("word[0] = \"x\""), attempt("word[4] = \"x\""), attempt("word[1] = \"xy\""), attempt("word[1] = \"\""), attempt("word[1] = 5"), attempt("word[\"a\"] = \"x\""), attempt("word[1.0] = \"x\""))
list[2] += 5
list[1] -= 1
map["k"] *= 7
map["2"] += "!"
print(list, map["k"], map["2"])
print(attempt("list[4] += 1"), attempt("list[9] += \"x\""), attempt("list[0] += \"x\""), attempt("list[1.5] += \"x\""), attempt("map[\"none\"] += \"x\""), attempt("missing[1] += 1"))
print(attempt("list[9][1] += 1"), attempt("map[\"none\"][1] += 1"), attempt("word[1][1] += 1"), attempt("five = 5\nfive[1] = 1"), attempt("five[1][1] = 1"))
print(list, keys(map))
list["k"] = "now a table"
print(keys(list), #list)
