@@ A caught error leaves every scope as it was at the protected call, whichever way the error came.
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

function hard()
  local a = 1
  for i = 1, 5
    local b = 2
    for k, v in pairs([1, 2])
      local c = 3
      nest("somewhere")
        native inDepth = 5
        return 1 + not
      end
    end
  end
end
function soft()
  local a = 1
  for i = 1, 5
    local b = 2
    for k, v in pairs([1, 2])
      local c = 3
      nest("somewhere")
        native inDepth = 6
        error("soft")
      end
    end
  end
end
function variadicHard(...)
  return hard()
end
function variadicSoft(...)
  return soft()
end
function textHard()
  return load("local a = 1\nreturn hard()", "given/name.os")()
end
function notFunction()
  local a = 1
  return a()
end
function deep(n)
  local a = n
  if n == 0
    return hard()
  end
  for i = n, n
    deep(n - 1)
  end
end
function lost()
  return toString(a) + toString(b) + toString(c) + toString(i) + toString(k) + toString(v)
end
function caller(failing, ...)
  local mine = "mine"
  local log = ""
  for round = 1, 2
    local inner = "inner " + round
    local ok, fault = pcall(failing, 3)
    local first = ...
    log += toString(ok) + " " + mine + " " + inner + " " + round + " " + first + " " + lost() + ", "
  end
  return log
end
for number, failing in pairs([hard, soft, variadicHard, variadicSoft, textHard, notFunction, deep])
  print(number, caller(failing, "rest"))
end
print(...)

@@ what was written before the fault stays written
function writesThenFails(how)
  written = "written"
  native kept = "kept"
  external ext = "ext"
  list[1] = "element"
  if how == "hard"
    return 1 + not
  end
  error("soft")
end
function readsKept()
  return kept
end
for number, how in pairs(["hard", "soft"])
  written = not
  list = []
  ok, fault = pcall(writesThenFails, how)
  print(ok, written, readsKept(), ext#0, list)
end

@@ reports speak of the right line and file again
ok, fault = pcall(textHard)
ok, fault = pcall(load("x = 1 +", "other/name.os"))
ok, fault = pcall(load("local q = 1\nq = q + not"))
print(fault)
