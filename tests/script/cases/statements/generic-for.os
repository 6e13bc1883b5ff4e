@@ The loop over a container or an array of entries: what it walks, when it is read, and its faults.
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

log = ""
function note(a, b)
  log += toString(a) + "=" + toString(b) + " "
end
function told()
  local text = "[" + log + "]"
  log = ""
  return text
end

for k, v in pairs(["x", "y"])
  note(k, v)
end
print("array", told())
for k, v in pairs({b = 2, a = 1, [10] = "ten", [9] = "nine", [1.5] = "float", [true] = "bool"})
  note(k, v)
end
print("table", told())
for k in pairs({[1] = "a", ["2"] = "b", ["x"] = "c", ["1e3"] = "d", [""] = "e"})
  log += typeOf(k) + " "
  if k == 1000.0
    log += k + " "
  end
end
print("keys are read", told())
for k, v in ipairs(["x", not, "z"])
  note(k, v)
end
print("ipairs stops at nil", told())
for k, v in pairs(["x", not, "z"])
  note(k, v)
end
print("pairs does not", told())
for k, v in ipairs({[1] = "a", [2] = not, [3] = "c"})
  note(k, v)
end
print("nil element of a table", told())
for k, v in ipairs({[1] = "a", [3] = "c", x = "y"})
  note(k, v)
end
print("gap in a table", told())
for k, v in pairs([])
  note(k, v)
end
for k, v in pairs({})
  note(k, v)
end
for k, v in ipairs([])
  note(k, v)
end
for v in []
  note(v)
end
print("nothing", told())
for k, v, more in pairs(["only"])
  note(v, more)
end
print("third name", told())

@@ entries are unpacked to the names
for v in [5, 6]
  note(v)
end
print("plain entries", told())
for v in [[1, 2], [3]]
  note(v)
end
print("one name takes the first", told())
for a, b in [[1, 2, 3], [4], 5, [], not, "text", {x = 1}]
  note(a, b)
end
print("missing parts are nil", told())
function pair()
  return 1, 2
end
for a, b in [pair()]
  note(typeOf(a), b)
end
print("multi value is one entry", told())

@@ the state at the loop's start is what it shows
list = [1, 2, 3]
for k, v in pairs(list)
  list[k + 3] = v * 10
  list[3] = "late"
  note(k, v)
end
print("array grown", told(), len(list))
list = [1, 2, 3]
for k, v in ipairs(list)
  clear(list)
  note(k, v)
end
print("array cleared", told())
map = {a = 1, b = 2}
for k, v in pairs(map)
  map["c"] = 3
  erase(map, "b")
  note(k, v)
end
print("table changed", told())
list = [1, 2]
for v in list
  push(list, v)
  list = "gone"
  note(v)
  list = []
end
print("iterator replaced", told())

@@ whatever the names hold, literally named they are the built-in ones
kept = pairs
pairs = "redefined"
for k, v in pairs(["still"])
  note(k, v)
end
pairs = kept
print("redefined", told())
walk = pairs
for k, v in walk({x = 1})
  note(k, v)
end
entries = pairs({y = 2})
for k, v in entries
  note(k, v)
end
for k, v in ipairs(["p"])
  note(k, v)
end
print("by another name", told())

@@ names live in a frame: callees see them, nobody does behind the loop
function seen()
  return a + b
end
for a, b in [["x", "y"]]
  log += seen()
  a = "changed"
  log += " " + seen()
end
print("callee", told(), a, b)
a = "outer"
for a in [1, 2]
end
print("outer", a)

@@ leaving early
for v in [1, 2, 3]
  if v == 2
    break
  end
  note(v)
end
print("break", told())
function search(list, wanted)
  for k, v in pairs(list)
    for n in [1]
      if v == wanted
        return k, v
      end
    end
  end
end
k, v = search(["p", "q"], "q")
print("return", k, v)

@@ string.byte may stand as an iterator
for b in string["byte"]("abc", 1, 3)
  note(b)
end
for b in string["byte"]("a")
  note(b)
end
for b in string["byte"]("", 1)
  note("never")
end
byte = string["byte"]
for b in byte("xy", 1, 2)
  note(b)
end
print("bytes", told())

print(try("for k, v in pairs(5)\nend"))
print(try("for k, v in pairs(\"text\")\nend"))
print(try("for k, v in pairs(neverMade)\nend"))
print(try("for k, v in ipairs(5)\nend"))
print(try("for k, v in ipairs(pair())\nend"))
print(try("for v in 5\nend"))
print(try("for v in \"text\"\nend"))
print(try("for v in {}\nend"))
print(try("for v in neverMade\nend"))
print(try("for v in pair()\nend"))
print(try("for v in pair\nend"))
print(try("for 5 in []\nend"))
print(try("for v, 5 in []\nend"))
print(try("for v, in []\nend"))
print(try("for in []\nend"))
print(try("for v of []\nend"))
print(try("for v w in []\nend"))
print(try("for v\nend"))
print(try("for x y z\nend"))
print(try("for v in\nend"))
print(try("for v in [] do\nend"))
print(try("for k, v in pairs([]) do\nend"))
print(try("for k, v in pairs([] [])\nend"))
print(try("for v in [1"))
