@@ Functions that replace themselves, their callers and what they stand in while they run.
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

function once()
  once = "spent"
  load("filler = [1, 2, 3]")()
  return "ran to its end, " + once
end
print(once(), once)

function redeclares(n)
  if n == 0
    return "first"
  end
  function redeclares(n)
    return "second " + n
  end
  return redeclares(n) + " from the first"
end
print(redeclares(1), redeclares(1))

holder = {}
function holder["f"]()
  holder["f"] = not
  holder = "gone"
  local log = ""
  for i = 1, 3
    log += i
  end
  return log + holder
end
print(holder["f"](), holder)

list = [1, 2]
function list[3](a)
  clear(list)
  push(list, a)
  return len(list)
end
print(list[3]("pushed"), list)

@@ arguments are held by the call
table1 = {k = "kept"}
function dropsGlobal(t)
  table1 = not
  return t["k"]
end
print(dropsGlobal(table1), table1)

@@ a loop whose function is replaced from inside
function step(n)
  if n == 2
    step = replaced
  end
  return "step " + n
end
function replaced(n)
  return "replaced " + n
end
for i = 1, 3
  print(step(i))
end

@@ one line bodies, too
function short()
  return drop() + " still here"
end
function drop()
  short = not
  drop = not
  return "dropped"
end
print(short(), short, drop)
function guarded(x)
  if changes(x)
    error("bad")
  end
  return "guarded " + toString(x)
end
function changes(x)
  guarded = not
  return x
end
kept = guarded
print(kept(false), guarded)
ok, fault = pcall(kept, true)
print(ok, fault)

@@ `error` itself may be another function
builtin = error
function error(text)
  told = text
end
function guard(x)
  if x
    error("told only")
  end
  return "went on"
end
print(guard(true), told)
error = builtin
ok, fault = pcall(guard, true)
print(ok, fault)

@@ a text that runs itself again
again = load("rounds += 1\nif rounds < 4\nagain()\nend\nlocal x = rounds\nreturn x")
rounds = 0
print(again(), rounds)
