@@ Declarations without a value, and several names at once.
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

function locals()
  local a
  local b, c = 1
  local d, e, f
  d = "d"
  return [a, b, c, d, e, f]
end
print(locals(), a, b, d)
a = "global"
function hides()
  local a
  a = "local"
  return a
end
print(hides(), a)
function again()
  local a = 1
  local a
  return a
end
print("declared again", again())
function natives()
  native n1, n2
  n1 = "native"
  return n1, n2
end
function readNatives()
  return n1, n2
end
x, y = natives()
print(x, y, n1)
x, y = readNatives()
print(x, y)
external e1, e2 = 1, 2
external e3
print(e1, e2, e1#0, e2#0, e3#0)
function pair()
  return 1, 2
end
function fromPair()
  local p, q, r = pair()
  return [p, q, r]
end
print(fromPair())
function ownValue()
  local a = a
  a += "!"
  return a
end
print(ownValue(), a)

@@ the keyword alone is a name like any other
print(try("local = 5\nreturn local"))
print(try("local\nreturn \"fine\""))
print(try("local 5"))
print(try("local a b"))
print(try("local a,"))
print(try("local f()"))
