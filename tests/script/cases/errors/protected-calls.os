@@ pcall: what it gives, what it catches, and protected calls in protected calls.
function why(text)
  text = toString(text)
  local cut = string["find"](text, "\n", 1, true)
  if cut == not
    return text
  end
  return string["sub"](text, 1, cut - 1)
end
function try(text)
  local chunk, fault = load(text)
  if chunk == not
    return "load: " + why(fault)
  end
  local ok, result = pcall(chunk)
  if ok
    return result
  end
  return why(result)
end

function show(...)
  local text = ""
  local a, b, c, d = ...
  return toString(a) + " " + why(b) + " " + toString(c) + " " + toString(d)
end
function pair(a, b)
  return a, b
end
function nothing()
end
function fails(text)
  error(text)
end
function faulty()
  return 1 + not
end
a, b, c, d = pcall(pair, 1, 2)
print(a, b, c, d)
a, b, c, d = pcall(pair)
print(a, b, c, d)
a, b, c, d = pcall(nothing)
print(a, b, c, d)
a, b, c, d = pcall(fails, "text")
print(a, b, c, d)
a, b = pcall(faulty)
print(a, why(b))
a, b = pcall(fails)
print(a, b)
a, b = pcall(error)
print(a, b)
a, b = pcall(error, "direct")
print(a, b)
a, b = pcall(5)
print(a, b)
a, b = pcall(not)
print(a, b)
print(try("pcall()"))
a, b = pcall(pcall)
print(a, b)
a, b, c = pcall(pcall, fails, "inner")
print(a, b, c)
a, b, c = pcall(pcall, pair, 1, 2)
print(a, b, c)
print(typeOf(pcall(pair, 1, 2)), typeOf(pcall(fails, "x")))
single = pcall(fails, "x")
print(single)
print(pcall(nothing) == pcall(nothing))

@@ one inside the other: each catches its own
log = ""
function inner(how)
  log += "i"
  if how == 1
    error("inner error")
  elseif how == 2
    return 1 + not
  end
  log += "I"
  return "inner result"
end
function outer(how)
  log += "o"
  local ok, result = pcall(inner, how)
  log += "O"
  if how == 1 or how == 3
    error("outer after " + why(result))
  end
  return result
end
for how = 0, 3
  log = ""
  ok, result = pcall(outer, how)
  print(ok, why(result), log)
end
function third()
  local ok, result = pcall(outer, 1)
  local again, second = pcall(outer, 2)
  error(result + " / " + why(second))
end
ok, result = pcall(third)
print(ok, result)

@@ the error of a callback inside a library function
function compares(a, b)
  compared += 1
  error("in a callback")
end
compared = 0
ok, result = pcall(table["sort"], [3, 2, 1, 4], compares)
print(ok, result, compared)
function sorts()
  table["sort"]([3, 2, 1], compares)
  print("never")
end
ok, result = pcall(sorts)
print(ok, result)
a, b = pcall(assert, false, "asserted")
print(a, b)
a, b = pcall(load, "if true")
print(a, b)
a, b = pcall(runFile, "no/such/file.os")
print(a, string["sub"](b, 1, 28) == "Failed to open script file: ")

@@ outside of one, an error is an error again
function later()
  return pcall(fails, "caught")
end
print(later() == 5)
ok, result = pcall(later)
print(ok, result)

@@ texts and functions made inside
function makesAndFails()
  load("error(\"from a text\")")()
  print("never")
end
ok, result = pcall(makesAndFails)
print(ok, result)
ok, result = pcall(load("return load(\"error('twice')\")() or \"never\""))
print(ok, result)
ok, result = pcall(Ostrel["runScript"], "error(\"run\")\nnever = 1")
print(ok, result, never)
