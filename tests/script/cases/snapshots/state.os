number = 7
fraction = 2.5
words = "text"
flag = true
nothing = not
list = [1, [2, 3]]
book = {b = 2, a = [1]}
function twice(n)
  local m = n * 2
  return m
end
pointer = $ff
loop = [1]
loop[2] = loop
holder = {f = print}
math["randomSeed"](42)
random()
image = exportState()
print("type:", typeOf(image))
expected = random(1000)
number = 8
fraction = 1
words = 0
flag = "x"
nothing = 1
list = not
book = not
twice = not
pointer = "kept"
loop = "kept"
holder = "kept"
later = "kept"
print("result:", importState(image))
print(number, fraction, words, flag, nothing, list, book["a"], book["b"], twice(21))
print("left out:", pointer, loop, holder, later)
print("same random numbers:", random(1000) == expected)
place = Ostrel["getPath"]() + "../Resources/volatile/world.state"
print("saved:", exportState(place))
number = 1
print("loaded:", importState(place), number)
ok, message = pcall(exportState, 1)
print(message)
ok, message = pcall(exportState, "a", "b")
print(message)
ok, message = pcall(importState)
print(message)
ok, message = pcall(importState, 5)
print(message)
ok, message = pcall(importState, Ostrel["getPath"]() + "missing.state")
a, b = string["find"](message, "Failed to open state file for reading: ", 1, true)
print(a)
