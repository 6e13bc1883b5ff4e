@@ An error in a coroutine is reported with its own line and surfaces at the main line's next statement.
function rounds(n)
  for round = 1, n
    local rest = round
  end
end
log = ""
decay function failing()
  log += "c "
  local x = nothing["at all"]
  log += "never "
end
function waits()
  failing()
  log += "m1 "
  log += "m2 "
  return "not reached"
end
ok, message = pcall(waits)
print(ok, message)
print("log:", log)
rounds(2)
print("none is scheduled any more:", log)

@@ an error on purpose gets a report, too; its text alone is no place
decay function raising()
  error("on purpose")
end
function waitsAgain()
  raising()
  log = "never"
end
ok, message = pcall(waitsAgain)
print(ok, message)

@@ one in a called function has the coroutine's line if it has no place of its own
function deep()
  local x = 1
  error("deep")
end
decay function calls()
  deep()
end
function waitsThird()
  calls()
  log = "never"
end
ok, message = pcall(waitsThird)
print(ok, message)

@@ and its own line if it has one
function divides()
  local x = 0
  x = 1 / x
end
decay function callsDivides()
  divides()
end
function waitsFourth()
  callsDivides()
  log = "never"
end
ok, message = pcall(waitsFourth)
print(ok, message)

@@ a report stays as it is
decay function raisesReport()
  error("OstrelScript error: made by hand")
end
function waitsFifth()
  raisesReport()
  log = "never"
end
ok, message = pcall(waitsFifth)
print(ok, message)

@@ it surfaces where the main line is, whoever started the coroutine
decay function late()
  local x = 1
  x = 2
  x = 3
  error("late")
end
late()
ok, message = pcall(rounds, 5)
print("surfaced in rounds:", ok)

@@ at the latest it surfaces where the running function ends
decay function atOnce()
  error("at once")
end
function starts()
  atOnce()
end
ok, message = pcall(starts)
print("at the end of a function:", ok)

@@ the next statement is not begun
function meets()
  log = ""
  atOnce()
  log = "never"
end
ok, message = pcall(meets)
print("next statement:", ok, "[" + log + "]")

@@ a protected call inside the coroutine catches its own errors
decay function protects()
  kept, reason = pcall(error, "inside")
  kept2, reason2 = pcall(deep)
  log = "went on"
end
protects()
rounds(2)
print(kept, reason, kept2, reason2, log)

@@ the main line's protected calls are not the coroutine's
function around()
  local ok2, message2 = pcall(beneath)
  return ok2
end
function beneath()
  raising()
  log = "never"
end
print("innermost on the main line:", around())

@@ a soft error of the main line is kept apart from the turn that follows it
decay function counts()
  for i = 1, 3
    turns += 1
  end
end
function raises()
  error("soft")
  log = "never"
end
turns = 0
counts()
ok, message = pcall(raises)
print(ok, message, turns)
rounds(2)
print("the coroutine went on:", turns)

@@ a second coroutine may be started after the first has failed
function both()
  raising()
  x = 1
end
ok = pcall(both)
turns = 0
counts()
rounds(2)
print("another one:", ok, turns)

@@ a loop around the main line's statements ends with the error
function loops()
  n = 0
  while n < 10
    n += 1
    if n == 3
      raising()
    end
  end
end
ok, message = pcall(loops)
print("loop:", ok, n)
