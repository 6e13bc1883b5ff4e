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
  return firstLine(value)
end

@@ eight words for two values, ahead of variables
tre = 5
flse = 6
true = 7
print(true, ture, tre, tue, false, flase, fasle, flse)
print(True, TRUE, trues)
print(1.5, .5, 5., 007, 2147483647, 2147483648, -2147483648, 0.1 + 0.2)
print(attempt("return 1e5"), attempt("return 1..2"), attempt("return 1.2.3"), attempt("return 5a"), attempt("return 0x10"))
print(attempt("return 1" + string["rep"]("0", 39)), attempt("return 0." + string["rep"]("0", 50) + "1"), attempt("return 1" + string["rep"]("0", 38)))
print($ff, $FF == $ff, $0000ff, attempt("return $10000000000000000"), attempt("return $fg"), attempt("$fg = 3\nreturn $fg"))
print(toString($12ab), attempt("return " + toString($12ab)))
print(attempt("return t.x"), attempt("return x&y"), attempt("return a?"), attempt("return é"), attempt("return ~ 5"))
_ = 1
$ = 2
a$b_9 = 3
print(_, $, a$b_9)
if1 = 4
endless = 5
nots = 6
print(if1, endless, nots)
x = 10
x#1 = 11
print(x, x#1, x#01, attempt("return x#4"), attempt("return x#x"), attempt("return x#"), attempt("return 5#1"), attempt("return x#1#1"))
external later = 5
print(later, later#0)
native deepest = 6
print(deepest, deepest#2)
function scopes()
  local x = "local"
  return [x, x#1, x#3, later#0, missing#3]
end
print(scopes())
print(attempt("x#3 = \"block\"\nreturn [x, x#1]"), x)
print("a"+"b"+'c' == "abc", "abc"[2], #"abc"+1, not or"unused")
print(attempt("return \"a\" \"b\""), attempt("return 1 2"), attempt("return a b"))
