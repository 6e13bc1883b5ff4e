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

function show(text)
  print(text, "->", attempt(text))
end
show("return 1 + 2 * 3 ^ 2")
show("return 2 ^ 3 ^ 2")
show("return -2 ^ 2")
show("return 2 * 3 % 2")
show("return 100 / 7 % 4")
show("return 2 ^ 7 % 4")
show("return !1 == 2")
show("return #\"ab\" * 2 + 1")
show("return 1 or 2 and 3")
show("return 1 < 2 == true")
show("return 3 <- 2")
show("return 2 -> 3")
show("return 2 <- 2 <- 2")
show("return not")
show("return not or 5")
show("return not not")
show("return not not 1")
show("return not 1 + 1")
show("return not -1")
show("return [not, 1, not]")
show("return {a = not, b = not 0}[\"b\"]")
show("return ((((5))))")
show("return [1, 2, 3][5]")
show("return \"abc\"[2]")
show("return {\"a\"}[1]")
show("return [[1, 2], [3]][1][2]")
show("return \"abc\"[\"upper\"]()[1]")
show("return {1, 2, k = 3, 4}[3]")
show("return {1, 2,}")
show("return {[1] = 5}")
show("return {a = 1, a : 2}")
show("return {[1.5] = 1}")
show("return {true = 1}")
show("return +\"a\" + +not")
show("return - -5")
show("return -true")
show("return true + true")
show("return \"a\" + 1 + 2")
show("return 1 + 2 + \"a\"")
show("return 0 or 5")
show("return \"\" and 5")
show("return nobody")
show("return nobody and 5")
show("return $0 == $00")
show("return ...")
