@@ Only compiled code follows a jump. A coroutine's own statements and functions that are walked line by line (those
@@ that a coroutine declares) only ask for it; it happens when compiled code comes to its next boundary.
function rounds(n)
  for round = 1, n
    local rest = round
  end
end

@@ a block in a coroutine runs in sequence, whatever its label
log = ""
decay function block()
  log += "a"
  nest("of the coroutine")
    log += "b"
  end
  log += "c"
end
block()
rounds(3)
print("in sequence:", log)

@@ a jump in a coroutine moves the main line, not the coroutine
log = ""
decay function asks()
  log += "1"
  jumpTo("main line")
  log += "2"
  nest("main line")
    log += "3"
  end
  log += "4"
end
function main()
  asks()
  log += "a"
  log += "-"
  nest("main line")
    log += "m"
  end
  log += "b"
  log += "c"
end
main()
rounds(3)
print("moves the main line:", log)

@@ also as the last statement of a loop's body
log = ""
decay function asksOnce()
  jumpTo("behind the loop")
end
function loops()
  for i = 1, 9
    log += i
    if i == 2
      asksOnce()
    end
  end
  nest("behind the loop")
    log += "l"
  end
end
loops()
kill()
print("out of the main line's loop:", log)

@@ to a label nowhere: the fault is the main line's
decay function asksForNothing()
  jumpTo("nowhere")
  log += "1"
end
function hit()
  asksForNothing()
  log += "-"
end
log = ""
ok, message = pcall(hit)
rounds(2)
print("nowhere:", ok, gsub(message, "re:\n[\\s\\S]*", "") != not, log)

@@ compiled code that a coroutine calls follows a jump of its own
log = ""
function ownJump()
  jumpTo("own")
  log += "-"
  nest("own")
    log += "o"
  end
end
decay function callsCompiled()
  ownJump()
  log += "c"
end
callsCompiled()
rounds(1)
print("in a called function:", log)

@@ a walked function runs its blocks in sequence; a jump ends it with nil and is followed by its caller
decay function declares()
  function walked(jump)
    log += "a"
    nest("walked")
      log += "b"
      if jump
        jumpTo("in the caller")
      end
      log += "c"
    end
    log += "d"
    return "value"
  end
end
declares()
rounds(1)
log = ""
print("walked:", walked(false), log)
function callsWalked()
  local value = "before"
  value = [walked(true)]
  log += "-"
  nest("in the caller")
    return value
  end
end
log = ""
print("left by a jump:", callsWalked(), log)

@@ its loops end with it
decay function declaresLoops()
  function walkedLoops()
    while true
      for i = 1, 3
        repeat
          for v in [1, 2]
            log += v
            jumpTo("around the loops")
          end
          log += "-"
        until false
        log += "-"
      end
    end
    log += "-"
  end
end
declaresLoops()
rounds(1)
log = ""
function callsLoops()
  walkedLoops()
  log += "-"
  nest("around the loops")
    log += "l"
  end
end
callsLoops()
print("loops:", log)

@@ its labels are nobody's targets
function jumpsTo(label)
  jumpTo(label)
end
ok, message = pcall(jumpsTo, "walked")
print("no target:", ok)
