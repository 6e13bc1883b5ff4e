@@ What a snapshot holds, and what comes back.
function comes(name, value)
  kept = value
  local image = exportState()
  kept = "changed"
  importState(image)
  print(name, kept, typeOf(kept))
end
comes("nil:", not)
comes("int:", 2147483647)
comes("negative:", -7)
comes("float:", 1.5)
comes("small float:", 1.0 / 3)
comes("string:", "text")
comes("empty string:", "")
comes("bool:", true)
comes("false:", false)
comes("array:", [1, "two", [3, []], not])
comes("table:", {a = {b = [1]}})
comes("empty table:", {})
kept = "a" + string["char"](0) + "\n\"" + string["char"](255)
whole = kept
image = exportState()
kept = 5
importState(image)
print("bytes of a string:", kept == whole, #kept)

@@ an int stays an int, a float a float
kept = [1, 1.0, true]
image = exportState()
kept = not
importState(image)
print("kinds:", kept, kept[1] \ 2, kept[2] / 4, typeOf(kept[3]))

@@ a multi value
function pair()
  local one = 1
  return one, [2]
end
kept = [pair()]
image = exportState()
kept = not
importState(image)
a, b = kept[1]
print("multi value:", a, b, toString(kept[1]))

@@ raw values: an image inside an image
inner = exportState()
image = exportState()
inner = not
importState(image)
print("raw:", typeOf(inner), importState(inner))

@@ a table's keys keep their text
kept = {[1] = "one", [10] = "ten", [2] = "two", "x y" = "blank", [1.5] = "fraction", [true] = "bool"}
image = exportState()
kept = not
importState(image)
for key, value in pairs(kept)
  print("key:", key, typeOf(key), value)
end
print("length:", #kept)

@@ a container that is held twice comes back as two
shared = [1]
first = [shared, shared]
second = {s = shared}
image = exportState()
push(shared, 2)
print("before:", first, second)
importState(image)
push(shared, 3)
push(first[1], 4)
print("after:", shared, first, second["s"])

@@ what it can't hold is left out, each global as a whole and without a word
loop = [1]
push(loop, loop)
through = {list = []}
push(through["list"], through)
beside = [[1], loop]
native1 = print
holdsNative = {a = 1, f = print}
holdsDeep = [[{x = [len]}]]
decay function coroutine()
end
holdsCoroutine = [coroutine]
pointer = $1F
holdsPointer = [$1F]
image = exportState()
names = ["loop", "through", "beside", "native1", "holdsNative", "holdsDeep", "coroutine", "holdsCoroutine", "pointer", "holdsPointer"]
loop = 1
through = 1
beside = 1
native1 = 1
holdsNative = 1
holdsDeep = 1
coroutine = 1
holdsCoroutine = 1
pointer = 1
holdsPointer = 1
print("result:", importState(image))
print("left out:", [loop, through, beside, native1, holdsNative, holdsDeep, coroutine, holdsCoroutine, pointer, holdsPointer])

@@ what is not in the image stays; what is in it is replaced; what is gone comes back
stays = not
present = 1
image = exportState()
stays2 = "new"
present = "other"
importState(image)
print("merged:", stays2, present)

@@ locals, frames and native scopes are no part of it
native hiddenNative = 1
function inFunction(parameter)
  local hiddenLocal = 1
  local image = exportState()
  hiddenLocal = 2
  parameter = 2
  importState(image)
  return [hiddenLocal, parameter]
end
print("locals:", inFunction(1), typeOf(hiddenLocal#1), typeOf(parameter#1), typeOf(hiddenNative#1))

@@ two images of one world are the same bytes
local one = exportState()
local two = exportState()
print("same bytes:", one == two)
importState(one)
print("also after the import:", exportState() == one)
anything = 1
print("a new global shows:", exportState() == one)

@@ shared a thousand ways, still soon done
wide = [1]
for i = 1, 12
  wide = [wide, wide]
end
image = exportState()
wide = not
importState(image)
at = wide
depth = 0
while typeOf(at) == "table"
  at = at[2]
  depth += 1
end
print("wide:", depth, at)
far = [print]
for i = 1, 200
  far = [far, far]
end
image = exportState()
far = "kept"
importState(image)
print("far:", far)
