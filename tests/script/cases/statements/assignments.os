@@ Assignments: lists of targets and values, elements, containers that are made on the way, and compound operators.
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

function pair()
  return 1, 2
end
function nothing()
end
order = ""
function note(name, value)
  order += name
  return value
end

a, b = 1
print("missing is nil", a, b)
a = 1, 2
print("surplus is dropped", a)
a, b, c = pair()
print("expanded", a, b, c)
a, b, c = pair(), 9
print("first of it", a, b, c)
a, b, c = 0, pair()
print("last expanded", a, b, c)
a, b = pair(), pair()
print("both", a, b)
a = pair()
print("single", a)
a = nothing()
print("nothing", a)
a, b = nothing()
print("nothing twice", a, b)
a = (pair())
print("in parentheses", a)
a = [pair(), 5]
print("inside a literal", typeOf(a[1]), a[2])
list = []
list[1] = pair()
list[2], list[3] = pair()
print("elements", list)
a, b = 1, 2
a, b = b, a
print("swapped", a, b)
a, a = 1, 2
print("same target", a)
list = [1, 2, 3]
i = 1
i, list[i] = 2, "second"
print("target by target", i, list)
a, b = note("1", "x"), note("2", "y"), note("3", "z")
print("order of values", order, a, b)
order = ""
list[note("key1 ", 1)], list[note("key2 ", 2)] = note("value1 ", "p"), note("value2 ", "q")
print("values before keys", order, list)

@@ containers that are missing
madeArray[3] = "third"
print(typeOf(madeArray), len(madeArray), madeArray)
madeTable["k"] = 1
print(madeTable)
madeZero[0] = "zero"
print(madeZero)
madeFloat[2.0] = "whole float"
print(madeFloat)
madeHalf[0.5] = "half"
print(madeHalf)
madeNegative[-1] = 1
print(madeNegative)
madeBool[true] = 1
print(madeBool)
madeDeep[1]["x"][2] = "deep"
print(madeDeep)
madeNil = not
madeNil["a"] = 1
print(madeNil)
holds = [not, {x = not}]
holds[1][1] = "array in the place of nil"
holds[2]["x"]["y"] = "table in the place of nil"
print(holds)
turns = [1, 2]
turns["k"] = 3
print(turns[1], turns["2"], turns["k"], len(turns))
turns = ["a"]
also = turns
turns["k"] = "b"
print(typeOf(also), len(also), turns["1"], turns["k"])
fills = [1]
fills[4] = 4
print(fills)
both = {a = 1}
alsoBoth = both
both["b"] = 2
print(alsoBoth["b"])
function inParameter(p)
  p["k"] = 1
  return p
end
print(inParameter(), typeOf(p))
function inLocal()
  local mine
  mine[1] = "local"
  return mine
end
print(inLocal(), typeOf(mine))
function localElement()
  local unseen["k"] = "v"
  return unseen
end
print(localElement(), typeOf(unseen))

@@ strings are changed in place, one byte at a time
s = "abc"
copy = s
s[2] = "X"
print(s, copy)
t = {s = "abc"}
t["s"][1] = "Y"
print(t)

print(try("x = 5\nx[1] = 1"))
print(try("s = \"abc\"\ns[4] = \"d\""))
print(try("s = \"abc\"\ns[0] = \"d\""))
print(try("s = \"abc\"\ns[1] = 5"))
print(try("s = \"abc\"\ns[1] = \"de\""))
print(try("s = \"abc\"\ns[\"a\"] = \"d\""))
print(try("s = \"abc\"\ns[1][1] = \"d\""))
print(try("x = [1]\nx[[]] = 1"))
print(try("x = {}\nx[not] = 1"))
print(try("freshName[not] = 1"), typeOf(freshName))
print(try("x = [5]\nx[1][1] = 1"))
print(try("x = try\nx[1] = 1"))
print(try("x = [1]\nx[1 2] = 1"))
print(try("x ="))
print(try("x = 1 2"))
print(try("x = 1, 2 3"))
print(try("x, y = 1,"))
print(try("x, y = , 1"))
print(try("x, = 1"))
print(try("5 = 1"))
print(try("x, 5 = 1, 2"))
print(try("x[1 = 1"))
print(try("= 1"))
print(try("x = y = 1"))
print(try("f() = 1"))
print(try("(x) = 1"))

@@ a fault in a value leaves the targets alone
kept = "kept"
print(try("kept, b = 1, 1 + not"), kept)
print(try("kept, neverMade[not] = \"changed\", 2"), kept)

@@ several targets of every kind
x, list[1], t["s"], s[1] = "x", "l", "t", "s"
print(x, list[1], t["s"], s)
