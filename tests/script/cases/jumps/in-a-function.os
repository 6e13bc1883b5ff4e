@@ Jumps in the chunk that runs and in the chunks around it.
log = ""

@@ forward: what stands between is left out, behind the block it goes on
function forward()
  log += "a"
  jumpTo("ahead")
  log += "-"
  nest("ahead")
    log += "b"
  end
  log += "c"
end
forward()
print("forward:", log)

@@ backward
log = ""
function backward()
  local n = 0
  nest("again")
    n += 1
    log += n
  end
  if n < 3
    jumpTo("again")
  end
  log += "!"
end
backward()
print("backward:", log)

@@ to the block that it stands in
log = ""
n = 0
function within()
  nest("self")
    n += 1
    log += n
    if n < 3
      jumpTo("self")
      log += "-"
    end
    log += "."
  end
end
within()
print("within itself:", log)

@@ it gives nil, and the rest of its statement is still evaluated
log = ""
function rest()
  gives = [jumpTo("behind"), push(done, 1), "x"]
  log += "-"
  nest "behind"()
    log += "b"
  end
end
done = []
rest()
print("rest of the statement:", gives, done, log)

@@ of two in one statement the later counts
log = ""
function twice()
  gives = [jumpTo("first"), jumpTo("second")]
  nest("first")
    log += "1"
  end
  nest("second")
    log += "2"
  end
end
twice()
print("twice:", log)

@@ each kind of statement that holds it is finished first
log = ""
function kinds()
  local x = jumpTo("one")
  log += "-"
  nest("one")
    log += "1"
  end
  t["key"] = jumpTo("two")
  log += "-"
  nest("two")
    log += "2"
  end
  count += 1 + len([jumpTo("three")])
  log += "-"
  nest("three")
    log += "3"
  end
  a, b = 5, jumpTo("four")
  log += "-"
  nest("four")
    log += "4"
  end
end
t = {key = 1}
count = 0
kinds()
print("kinds:", log, count, a, b)

@@ in a condition: the branch is entered and left again
log = ""
function condition()
  if jumpTo("if") == not
    log += "-"
  end
  log += "-"
  nest("if")
    log += "i"
  end
  while jumpTo("while") == not
    log += "-"
  end
  log += "-"
  nest("while")
    log += "w"
  end
  for i = 1, len([jumpTo("for")])
    log += "-"
  end
  log += "-"
  nest("for")
    log += "f"
  end
end
condition()
print("conditions:", log)

@@ out of blocks of every kind, at once: no further round, no further condition
log = ""
function checks(text, value)
  log += text
  return value
end
function leaves()
  while checks("w", true)
    for i = 1, 3
      for k, v in pairs([1, 2])
        repeat
          if true
            nest
              log += "in "
              jumpTo("out")
              log += "-"
            end
            log += "-"
          end
          log += "-"
        until checks("u", true)
        log += "-"
      end
      log += "-"
    end
    log += "-"
  end
  log += "-"
  nest("out")
    log += "out"
  end
end
leaves()
print("leaves:", log)

@@ as the last statement of a loop's body
log = ""
function last()
  repeat
    log += "r"
    jumpTo("last")
  until checks("u", false)
  log += "-"
  nest("last")
    log += "l"
  end
end
last()
print("last in a loop:", log)

@@ to a block in a block around, and on from there
log = ""
function between()
  for i = 1, 2
    if i == 1
      jumpTo("middle")
    end
    log += "a" + i
    nest("middle")
      log += "m" + i
    end
    log += "b" + i
  end
end
between()
print("into the loop's own body:", log)

@@ the innermost of several chunks with the label gets it
log = ""
function several()
  if true
    jumpTo("same")
    log += "-"
    nest("same")
      log += "inner"
    end
  end
  nest("same")
    log += "outer"
  end
end
several()
print("innermost:", log)

@@ of two in one chunk the first
log = ""
function duplicates()
  jumpTo("double")
  nest("double")
    log += "1"
  end
  nest("double")
    log += "2"
  end
end
duplicates()
print("first in the chunk:", log)

@@ not into a block that doesn't stand around it: that label is one of a function like any other
log = ""
function sideways()
  log += "a"
  if log == "a"
    jumpTo("in the branch")
  else
    log += "e"
    nest("in the branch")
      log += "n"
    end
    log += "t"
  end
  log += "z"
end
sideways()
print("into another branch:", log)

@@ local names of the blocks that are left are gone, those around stay
function scopes()
  local kept = "kept"
  if true
    local kept = "inner"
    local gone = 1
    jumpTo("behind scopes")
  end
  nest("behind scopes")
    local own = 1
    seen = [kept, gone]
  end
  return seen, own
end
a, b = scopes()
print("scopes:", a, b)

@@ the loop variables too
function loopNames()
  for i = 1, 2
    jumpTo("behind the loop")
  end
  nest("behind the loop")
    return i
  end
end
print("loop variable:", loopNames())

@@ a function that is left by a jump gives nil
function gives()
  jumpTo("the caller's")
  return "never"
end
function caller()
  local value = "before"
  value = gives()
  return "never"
  nest("the caller's")
    return [value]
  end
end
print("a function left:", caller())

@@ also through protected calls and several functions
log = ""
function deepest()
  jumpTo("far out")
  log += "-"
end
function deeper()
  deepest()
  log += "-"
end
function far()
  ok, value = pcall(deeper)
  log += "-"
  nest("far out")
    log += "far "
  end
end
far()
print("through pcall:", log, ok, value)

@@ break and return in the block do what they always do
function returns()
  jumpTo("returning")
  nest("returning")
    return 1, 2
  end
  return 3
end
a, b = returns()
print("return:", a, b)
log = ""
function breaks()
  while true
    jumpTo("breaking")
    nest("breaking")
      log += "n"
      break
    end
    log += "-"
  end
  log += "o"
end
breaks()
print("break:", log)

@@ on the top level
log = ""
jumpTo("here")
log += "-"
nest("here")
  log += "top"
end
print("top level:", log)
log = ""
for i = 1, 3
  if i == 2
    jumpTo("behind")
  end
  log += i
end
nest("behind")
  log += "b"
end
print("top level, out of a loop:", log)

@@ in a loaded chunk
log = ""
chunk = load("jumpTo(\"of the chunk\")\nlog += \"-\"\nnest(\"of the chunk\")\nlog += \"c\"\nend\nreturn \"value\"")
print("chunk:", chunk(), log)
log = ""
chunk = load("jumpTo(\"around the chunk\")\nlog += \"-\"\nreturn \"value\"")
x = chunk()
log += "-"
nest("around the chunk")
  log += "around"
end
print("out of a chunk:", log, x)
