@@ Depth: thousands of calls stand, also in instrumented builds; a runaway recursion is an error like any other.
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

function deep(n)
  if n == 0
    return 0
  end
  return 1 + deep(n - 1)
end
print(deep(4000))
function statements(n)
  local mine = n
  if n > 0
    for i = 1, 1
      statements(n - 1)
    end
  end
  return mine
end
print(statements(4000))
function short(n)
  return n == 0 or short(n - 1)
end
print(short(4000))
function even(n)
  if n == 0
    return true
  end
  return odd(n - 1)
end
function odd(n)
  return n != 0 and even(n - 1)
end
print(even(4000), odd(4000))
function variadic(n, ...)
  if n == 0
    local a = ...
    return a
  end
  return variadic(n - 1, n, ...)
end
print(variadic(4000, "x"))

function runaway(n)
  return runaway(n + 1) + 1
end
ok, fault = pcall(runaway, 0)
print(ok, why(fault))
text = load("return runawayText()")
function runawayText()
  text()
end
ok, fault = pcall(runawayText)
print(ok, why(fault))
function runawayShort()
  return runawayShort()
end
ok, fault = pcall(runawayShort)
print(ok, why(fault))
function runawayProtected(n)
  local ok, fault = pcall(runawayProtected, n + 1)
  if deepest == not
    deepest = why(fault)
  end
  error("on the way back")
end
ok, fault = pcall(runawayProtected, 0)
print(ok, fault, deepest)
function runawaySort()
  table["sort"]([3, 1, 2], compares)
end
function compares(a, b)
  runawaySort()
  return a < b
end
ok, fault = pcall(runawaySort)
print(ok, why(fault))
function runawayHeader()
  for i = 1, runawayHeader()
  end
end
ok, fault = pcall(runawayHeader)
print(ok, why(fault))
list = []
function runawayIndex()
  list[runawayIndex()] = 1
end
ok, fault = pcall(runawayIndex)
print(ok, why(fault))

@@ and everything works as before
print(deep(4000), statements(3))

@@ a hundred thousand blocks and brackets run, or are an error like any other
function bearable(fault)
  return fault == not or string["find"](why(fault), "native stack exhausted", 1, true) != not
end
text = string["rep"]("if true\n", 100000)
chunk, fault = load(text)
print(chunk, bearable(fault) or why(fault) == "Missing 'end' for if block")
chunk, fault = load(text + string["rep"]("end\n", 100000))
if chunk != not
  ok, fault = pcall(chunk)
  fault = ok and not or fault
end
print(bearable(fault))
text = "x = " + string["rep"]("(", 100000)
ok, fault = pcall(load(text))
print(ok, bearable(fault) or string["find"](fault, "Unexpected end of expression", 1, true) != not)
ok, fault = pcall(load(text + "1" + string["rep"](")", 100000)))
print(ok and x == 1 or bearable(fault))
