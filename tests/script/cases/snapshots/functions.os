@@ Functions in a snapshot: each with its whole program, so that it runs where its script was never loaded.
function plain(a, b)
  local sum = a + b
  return sum
end
function variadic(first, ...)
  local second, third = ...
  return [first, second, third]
end
function blocks(n)
  local text = ""
  for i = 1, n
    if i % 2 == 0
      text += i
    else
      repeat
        text += "-"
      until true
    end
  end
  for key, value in pairs({a = 1})
    text += key + value
  end
  while #text > 4
    text = string["sub"](text, 1, -2)
  end
  return text
end
function short(n)
  return n * 2
end
function guarded(n)
  if n < 0
    error("negative")
  end
  return n
end
function declares()
  function declared(x)
    local y = x + 1
    return y
  end
  return declared(1)
end
function recursive(n)
  if n == 0
    return "done"
  end
  local rest = recursive(n - 1)
  return rest + "."
end
function fails()
  local x = 1
  x = nothing()
end
function labelled()
  nest("label in the image")
    log += "n"
  end
  return "l"
end
native function ofDepth()
  local x = 5
  return x
end
table1 = {}
function table1["method"](x)
  local y = x
  return [y]
end
chunk = load("local x = 4\nreturn x", "chunk.os")
native depthName = "native of the script"
function readsNative()
  native own = 7
  local x = own
  return x
end
image = exportState()
plain = not
variadic = not
blocks = not
short = not
guarded = not
declares = not
declared = not
recursive = not
faults = fails
fails = not
labelled = not
table1 = not
chunk = not
readsNative = not
importState(image)
print("plain:", plain(2, 3), typeOf(plain))
print("missing and surplus:", variadic(), variadic(1, 2, 3, 4))
print("blocks:", blocks(4))
print("short:", short(21), guarded(3), pcall(guarded, -1) != not)
ok, message = pcall(guarded, -1)
print("guarded:", ok, message)
print("declares:", declares(), typeOf(declared), declared(5))
print("recursive:", recursive(3))
print("in a table:", table1["method"](6))
print("chunk:", chunk())
print("native:", readsNative())
ok, message = pcall(fails)
ok2, message2 = pcall(faults)
print("the same report:", message == message2, ok, ok2)
print(message)

@@ its labels are not registered: only where it runs is its block found
log = ""
function jumps()
  jumpTo("label in the image")
end
ok, message = pcall(jumps)
print("label:", ok)
print("runs:", labelled(), log)

@@ a function that is held twice comes back as two, both good
function twice(n)
  local m = n + n
  return m
end
copies = [twice, twice]
print("one function:", copies[1] == copies[2])
importState(exportState())
print("two functions:", copies[1] == copies[2], copies[1](2), copies[2](3), twice(4))

@@ an image taken from an image
importState(exportState())
image = exportState()
importState(image)
print("once more:", plain(4, 5), variadic(1)[1], copies[1](5))

@@ a function that replaces itself while it runs goes on
function replaces(image)
  importState(image)
  local x = "went on"
  return x
end
image = exportState()
print("replaced:", replaces(image))

@@ a coroutine of a restored function's making
function starts()
  side()
  x = 1
  x = 2
end
decay function side()
  seen = "turn"
end
importState(exportState())
starts()
print("coroutine:", seen)
