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

t = {}
t[1] = "one"
print(t["1"], t[1], t[1.0], t["1.000000"])
t[1.0] = "one point nothing"
print(t[1], t[1.0], t["1.000000"], t["1.0"])
t[true] = "yes"
t["false"] = "no"
print(t["true"], t[false], t[flse], t[not true])
t[-0.0] = "minus nothing"
print(t["-0.000000"], t[0.0])
t[0] = "zero"
t[-5] = "five below"
print(t["0"], t["-5"], #t)
list = [10, 20, 30]
print(list[1.0], list[2.5], list["1"], list[true], list[0], list[-1], list[4], list[2147483647], list[2147483648.0])
print(attempt("t2 = {}\nt2[not] = 1"), attempt("t2[[]] = 1"), attempt("t2[{}] = 1"), attempt("return t2[print]"), attempt("return {[not] = 1}"))
print(attempt("return t2[$1]"), attempt("function two()\nreturn 1, 2\nend\nreturn t2[two()]"))
print(attempt("a2 = [1]\na2[not] = 1"), attempt("return a2"))
text = ""
for key, value in pairs({[10] = "", [9] = "", x = "", [1.5] = "", "1e3" = "", "007" = "", "" = "", "-3" = "", "a b" = "", "1e99" = "", "+4" = "", "5." = ""})
  text += typeOf(key) + " " + key + ", "
end
print(text)
sum = 0
for key in pairs({10, 20, 30, x = 1})
  if typeOf(key) == "number"
    sum += key
  end
end
print(sum)
print(keys({[3] = 0, [20] = 0, [1] = 0, b = 0, B = 0, a = 0}))
