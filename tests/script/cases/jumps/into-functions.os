@@ Jumps to the labels of functions that don't run: the tail of the function runs, then the script goes on behind the
@@ statement that asked for it.
log = ""
function whole()
  log += "head "
  nest("tail")
    log += "nest "
  end
  log += "tail "
end
jumpTo("tail")
log += "on"
print("tail:", log)

@@ a call without arguments: parameters are nil, and so are further ones
function parameters(a, b, ...)
  nest("parameters")
    local c, d = ...
    seen = [a, b, c, d]
  end
end
jumpTo("parameters")
x = 1
print("parameters:", seen)

@@ what it returns is dropped
function returning()
  nest("returning")
    log += "r"
    return "value"
  end
  log += "-"
end
log = ""
x = jumpTo("returning")
print("return:", log, x)

@@ a block in a block: to the end of the chunk that it stands in, no further
function inside()
  for i = 1, 2
    if true
      log += "-"
      nest("inner")
        log += "n"
      end
      log += "t"
    end
    log += "-"
  end
  log += "-"
end
log = ""
jumpTo("inner")
log += "!"
print("inner block:", log)

@@ a block in a block with a label of its own
function nested()
  nest("outer one")
    log += "o"
    nest("inner one")
      log += "i"
    end
    log += "p"
  end
  log += "q"
end
log = ""
jumpTo("outer one")
log += "!"
jumpTo("inner one")
log += "!"
print("nested:", log)

@@ a break that comes out of it is as stray as in a call
function breaking()
  while true
    nest("breaking")
      break
    end
  end
end
function jumps(label)
  jumpTo(label)
  log += "-"
end
function head(message)
  local text = gsub(message, "re:\n[\\s\\S]*", "")
  return text
end
log = ""
ok, message = pcall(jumps, "breaking")
print("break:", ok, head(message), log)

@@ an error in it is an error of whoever jumps
function failing()
  nest("failing")
    local x = 1
    x = nothing()
  end
end
log = ""
ok, message = pcall(jumps, "failing")
print("fault:", ok, head(message), log)
function raising()
  nest("raising")
    error("on purpose")
    log += "-"
  end
  log += "-"
end
ok, message = pcall(jumps, "raising")
print("error:", ok, message, log)

@@ every stack is as it was before
function around(p)
  local kept = p
  for i = 1, 2
    jumpTo("parameters")
    kept += i
  end
  return kept
end
seen = not
print("balanced:", around(1), seen)
print("after a fault:", pcall(jumps, "failing") != not, p, kept)

@@ the caller's locals are hidden, its parameters are not
function looking()
  nest("looking")
    seen = [parameter, hidden]
  end
end
function looked(parameter)
  local hidden = 1
  jumpTo("looking")
  return parameter
end
print("sees:", looked("p"), seen)

@@ the last declaration of a label wins
function one()
  nest("shared")
    log += "one "
  end
end
function two()
  nest("shared")
    log += "two "
  end
end
log = ""
jumpTo("shared")
function one()
  nest("shared")
    log += "one again "
  end
end
jumpTo("shared")
print("last declaration:", log)

@@ in one function, too, however deep the blocks stand
function deepFirst()
  if true
    nest("in both")
      log += "deep"
    end
  end
  nest("in both")
    log += "flat"
  end
end
log = ""
jumpTo("in both")
print("in one function:", log)
function flatFirst()
  nest("in both, again")
    log += "flat"
  end
  if true
    for i = 1, 1
      nest("in both, again")
        log += "deep"
      end
    end
  end
end
log = ""
jumpTo("in both, again")
print("the other way round:", log)

@@ in bodies of every kind
function everywhere()
  if false
  elseif false
    nest("elseif")
      log += "elseif "
    end
  else
    nest("else")
      log += "else "
    end
  end
  while false
    nest("while")
      log += "while "
    end
  end
  repeat
    nest("repeat")
      log += "repeat "
    end
  until true
  for i = 1, 0
    nest("numeric for")
      log += "numeric "
    end
  end
  for v in []
    nest("generic for")
      log += "generic "
    end
  end
  nest
    nest("nest")
      log += "nest "
    end
  end
end
log = ""
for label in ["elseif", "else", "while", "repeat", "numeric for", "generic for", "nest"]
  jumpTo(label)
  log += "| "
end
print("bodies:", log)

@@ a function in a function gives its labels when it is declared itself
function declares()
  function inner()
    nest("of the inner function")
      log += "inner "
    end
  end
  nest("of the outer function")
    log += "outer "
  end
end
log = ""
ok, message = pcall(jumps, "of the inner function")
print("not declared yet:", ok, head(message))
declares()
jumpTo("of the inner function")
print("declared:", log)

@@ all kinds of declarations give them
local function ofBlock()
  nest("local function")
    log += "local "
  end
end
native function ofDepth()
  nest("native function")
    log += "native "
  end
end
decay function ofCoroutine(a)
  nest("decay function")
    log += "decay " + toString(a) + " "
  end
  log += "at once "
end
box = {}
function box["f"]()
  nest("in a table")
    log += "table "
  end
end
log = ""
jumpTo("local function")
jumpTo("native function")
jumpTo("decay function")
jumpTo("in a table")
print("declarations:", log)

@@ a function that is gone takes its labels with it
function leaving()
  nest("gone")
    log += "-"
  end
end
leaving = not
ok, message = pcall(jumps, "gone")
print("gone:", ok, head(message))
function declaredTwice()
  nest("of the first")
    log += "-"
  end
end
function declaredTwice()
end
ok, message = pcall(jumps, "of the first")
print("declared anew:", ok, head(message))

@@ the labels of a script or chunk are reached only while it is active
nest("top level")
  x = 1
end
chunk = load("function fromChunk()\njumpTo(\"top of the chunk\")\nlog += \"-\"\nend\nnest(\"top of the chunk\")\nlog += \"t\"\nend\nif log == \"t\"\nfromChunk()\nend")
log = ""
chunk()
print("active chunk:", log)
ok, message = pcall(fromChunk)
print("finished chunk:", ok, head(message))

@@ a jump in the tail: one after the other, or out of it
function hops()
  nest("hop")
    log += "h"
    jumpTo("hop on")
    log += "-"
  end
  log += "-"
end
function hopsOn()
  nest("hop on")
    log += "o"
  end
  log += "e"
end
log = ""
jumpTo("hop")
log += "!"
print("one behind the other:", log)
function back()
  nest("leaves the tail")
    log += "l"
    jumpTo("in the caller")
    log += "-"
  end
  log += "-"
end
function calling()
  jumpTo("leaves the tail")
  log += "-"
  nest("in the caller")
    log += "c"
  end
end
log = ""
calling()
print("back into the caller:", log)
function counting()
  nest("counting")
    n += 1
    if n < 4
      jumpTo("counting")
    end
    log += n
  end
end
n = 0
log = ""
jumpTo("counting")
print("to itself:", log)

@@ the running chunks come first
function elsewhere()
  nest("here and there")
    log += "there"
  end
end
function here()
  jumpTo("here and there")
  nest("here and there")
    log += "here"
  end
end
log = ""
here()
print("the active one:", log)

@@ in another file's words: a label is any text
function odd()
  nest("a label, with \"quotes\" and 1")
    log = "odd"
  end
end
jumpTo("a label, with " + "\"quotes\" and 1")
print("label:", log)
