@@ Names that ask for a scope by number: 0 external, 1 global, 2 native, 3 block.
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

name = "global"
function blocks(name)
  local name = "block"
  return [name, name#0, name#1, name#2, name#3]
end
print(blocks("frame"))
function frames(name)
  return [name, name#0, name#1, name#2, name#3]
end
print(frames("frame"))

@@ assignment makes the entry in that scope
external#0 = 5
print(external#0, external)
name#0 = "external"
print(name, name#0, name#1)
function writesGlobal(name)
  local name = "block"
  name#1 = "written"
  return name
end
print(writesGlobal("frame"), name)
newGlobal#1 = "new"
print(newGlobal, newGlobal#1)
function writesNative()
  name#2 = "native"
  return [name, name#2]
end
function readsNative()
  return [name, name#2]
end
print(writesNative(), readsNative(), name)
function writesBlock()
  made#3 = "in a block"
  if true
    made#3 = "changed where it was"
    inner#3 = "in the inner block"
  end
  return [made, made#3, inner]
end
print(writesBlock(), made)
function blockOverFrame(p)
  p#3 = "block"
  return [p, p#3]
end
print(blockOverFrame("frame"))
atTop#3 = "in the block of the text"
print(atTop, atTop#3)
function seesTop()
  return [atTop, atTop#3]
end
print(seesTop())
for i = 1, 2
  inLoop#3 = toString(inLoop#3) + i
end
print(inLoop, inLoop#3)

@@ a caller's blocks are as hidden by number as by name
function hidden()
  local name = "hidden"
  return reader()
end
function reader()
  return [name#3, name]
end
print(hidden())

@@ with index parts, operators and lists
table#1["k"] = "kept"
print(table["k"], typeOf(table["insert"]))
list#0[2] = "x"
print(list#0, list)
count#1 = 1
count#1 += 4
print(count)
function compound()
  local count = 100
  count#1 *= 2
  count#3 -= 1
  return count
end
print(compound(), count)
a#1, b#1 = 1, 2
print(a, b)
print(try("missing#1 += 1"))
print(try("missing#0 += 1"))
print(try("missing#2 += 1"))
print(missing#0, missing#1, missing#2, missing#3)
function named#1(p#3)
  return p
end
print(named("parameter"), typeOf(named#1))

@@ 4 and above name nothing
print(try("x = name#4"))
print(try("name#4 = 1"))
print(try("name#x = 1"))

@@ the keyword gives way to the number
local keyword#1 = "global after all"
print(keyword#3, keyword#1)
