@@ Native variables belong to a depth of definition, external ones to nobody until the outermost script has ended.
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

function sets()
  native n = "native"
  return n
end
function reads()
  return n
end
print(n, reads(), sets(), reads(), n)
function changes()
  n += "!"
end
changes()
print(reads(), n)
n = "global"
print(reads(), n)
function overNative(n)
  return reads()
end
print(overNative("frame"), reads())
function localOverNative()
  local n = "local"
  return n + " " + reads()
end
print(localOverNative())

@@ a block stands one deeper, and so does a function that is declared in it
function inBlocks()
  native depth = "function"
  if true
    local seen = depth
    native depth = "block"
    return toString(seen) + " " + depth
  end
end
print(inBlocks())
function afterBlocks()
  local log = depth + " "
  if true
    log += depth + " "
    for i = 1, 1
      log += toString(depth)
    end
  end
  return log
end
print(afterBlocks())
if true
  function declaredDeeper()
    return depth
  end
end
print(declaredDeeper())
function outer()
  native level = "outer"
  function declaredInside()
    return toString(level) + " " + toString(depth)
  end
  return declaredInside()
end
print(outer(), declaredInside())
function callsFromAfar()
  while true
    if true
      return declaredDeeper() + " " + afterBlocks()
    end
  end
end
print(callsFromAfar())

@@ at the text's own level
native atTop = "at the top"
print(atTop)
function topFromFunction()
  return atTop
end
print(topFromFunction())
if true
  print(atTop)
end
print(atTop)

@@ a text that is loaded shares the level at which it runs first
function loads()
  native shared = "shared"
  local own = load("shared += \", seen\"\nnative fromText = \"from the text\"\nreturn shared")
  return own() + ", " + fromText
end
print(loads())
everywhere = load("return shared")
function runsFirst()
  return everywhere()
end
print(runsFirst(), everywhere())

@@ every declaration without a value empties it
function empties()
  native n
  return n
end
print(empties(), reads(), n)

@@ external variables are read by number alone
external e = "external"
print(e, e#0)
function writesExternal()
  external e = "changed"
  external f, g = 1, 2
  return [e, e#0, f#0, g#0]
end
print(writesExternal(), e, e#0)
e = "global"
print(e, e#0)
e#0 += "!"
print(e, e#0)
external list[2] = "x"
print(list, list#0)
Ostrel["runScript"]("external h = 1")
print(h, h#0)
load("external i = 2")()
print(i, i#0)
