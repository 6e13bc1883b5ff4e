@@ How long a local lives: one run of its block.
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
for i = 1, 3
  log += toString(fresh)
  local fresh = i
  log += fresh + " "
end
print(log, fresh)
n = 0
log = ""
while n < 3
  log += toString(kept)
  local kept = n
  n += 1
end
print(log, kept)
n = 0
log = ""
repeat
  log += toString(again)
  local again = n
  n += 1
until n == 3
print(log, again)

local top = "local of the text"
function seesTop()
  return top
end
print(top, seesTop())
if true
  local top = "inner"
  print(top)
  top = "changed"
  print(top)
end
print(top)
nest("block")
  local top = "in a nest"
  print(top)
end
print(top)
nest
  top = "assigned in a nest"
end
print(top)
if false
elseif true
  local branch = "branch"
else
end
print(branch)

@@ names of one block in one block
local a, b = 1, 2
local a = a + b
print(a, b)
function shadow(a)
  local log = a + " "
  if true
    local a = a + "1"
    log += a + " "
    if true
      local a = a + "2"
      log += a + " "
    end
    log += a + " "
    a = "changed"
    log += a + " "
  end
  return log + a
end
print(shadow("p"))

@@ leaving a block by break, return and fault
for i = 1, 2
  local leaving = i
  break
end
print(leaving)
function returns()
  local leaving = "x"
  if true
    local leaving = "y"
    return leaving
  end
end
print(returns(), leaving)
function fails()
  local leaving = "x"
  for i = 1, 3
    local leaving = "y"
    if i == 2
      return 1 + not
    end
  end
end
print(pcall(fails) == 5, leaving, i)
function failsSoftly()
  local leaving = "x"
  for i = 1, 3
    local leaving = "y"
    if i == 2
      error("soft")
    end
  end
end
ok, fault = pcall(failsSoftly)
print(ok, fault, leaving, i)

@@ the caller's locals are back behind the call, whatever happened in it
function caller()
  local mine = "mine"
  local ok = pcall(fails)
  local also = pcall(failsSoftly)
  mine += " still"
  return mine
end
print(caller())

@@ each text run by name sees what stands around it, each function only what it was given
function around()
  local near = "near"
  Ostrel["runScript"]("copied = near\nlocal near = \"its own\"\nnear = \"its own\"\nseen = near")
  return near
end
print(around(), copied, seen)
function called()
  local near = "near"
  return load("return near")()
end
print(called())
