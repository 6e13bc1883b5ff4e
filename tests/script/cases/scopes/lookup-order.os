@@ Where a name is found: the function's own blocks, then every caller's frames, then the native scope, then globals.
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

v = "global"
function read()
  return v
end
function frame(v)
  return read()
end
function loop()
  for v = 7, 7
    return read()
  end
end
function genericLoop()
  for k, v in pairs(["entry"])
    return read()
  end
end
function block()
  local v = "block"
  return read()
end
function blockInside()
  local v = "block"
  if true
    local v = "inner block"
    while true
      return v
    end
  end
end
print(read(), frame("frame"), loop(), genericLoop(), block(), blockInside())

@@ a callee reads and writes what its callers hold in frames
function write(text)
  v = text
end
function lends(v)
  write("written by a callee")
  return v
end
print(lends("lent"), v)
function far(v)
  return middle()
end
function middle()
  write("from two calls away")
  return read()
end
print(far("far"), v)
function nearest(v)
  return frame("nearer") + " " + read()
end
print(nearest("mine"))
function loopVariable()
  local log = ""
  for v = 1, 3
    write(v * 10)
    log += v + " "
  end
  return log
end
print(loopVariable(), v)

@@ but not what they hold in blocks
function hides()
  local v = "hidden"
  write("went past the block")
  return v
end
print(hides(), v)
v = "global"

@@ a block's own local comes before the frame, wherever the frame was made
function both(v)
  local v = v + " local"
  for v = 1, 1
    return v
  end
end
print(both("parameter"))
function afterwards()
  for v = 1, 1
    local v = "block in the loop"
    return v
  end
end
print(afterwards())

@@ what no scope holds is a new global
function makes()
  fresh = "made"
  return fresh
end
print(fresh, makes(), fresh)
function nilled(fresh)
  fresh = "in the frame"
  return fresh
end
print(nilled(), fresh)
holdsNil = not
function overNil()
  holdsNil = "global was there"
end
overNil()
print(holdsNil)
function nilLocal()
  local holdsNil
  return holdsNil
end
print(nilLocal())

@@ the place of a name in one line changes from call to call
function moves(n)
  if n == 1
    local w = "local"
    return see(n)
  end
  return see(n)
end
function see(n)
  return w
end
function withFrame(w)
  return see(0)
end
w = "global"
print(see(0), withFrame("frame"), moves(1), moves(2), see(0))
function lateLocal()
  local log = ""
  for i = 1, 3
    log += w + " "
    if i == 2
      log += "| "
    end
    local w = "local " + i
    log += w + ", "
  end
  return log
end
print(lateLocal())

@@ recursion keeps each call's own
function nestedCalls(n)
  local mine = n
  if n > 0
    nestedCalls(n - 1)
  end
  log += mine + "/" + n + " "
end
log = ""
nestedCalls(3)
print(log)
function sameName(n, tag)
  if n == 0
    return readTag()
  end
  return sameName(n - 1, tag + n) + " " + tag
end
function readTag()
  return tag
end
print(sameName(3, "t"))

@@ a chunk is called like a function
v = "global"
chunk = load("local seen = v\nv = \"by the chunk\"\nreturn seen")
function runs(v)
  local x = chunk()
  return x + ", " + v
end
print(runs("frame"), v)
function runsHidden()
  local v = "block"
  return chunk()
end
print(runsHidden(), v)
