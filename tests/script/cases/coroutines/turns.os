@@ a decay function advances by one statement after each statement of the main line
log = ""
decay function three(mark)
  log = log + mark + "1 "
  log = log + mark + "2 "
  log = log + mark + "3 "
end
print("call gives", three("a"))
x = 1
x = 2
print("after three statements:", log)
x = 3
print("and no more:", log)

@@ blocks and loops cost no turn
log = ""
decay function loops()
  for i = 1, 2
    if i == 2
      log = log + "two "
    else
      log = log + "one "
    end
  end
  repeat
    log = log + "once "
  until true
end
loops()
x = 1
x = 2
print("loops:", log)

@@ starting another one drops the first where it stands
log = ""
three("b")
three("c")
x = 1
x = 2
x = 3
print("replaced:", log)

@@ a coroutine that starts another ends at that statement
log = ""
decay function first()
  log = log + "first "
  three("d")
  log = log + "never "
end
first()
x = 1
x = 2
x = 3
x = 4
x = 5
print("succeeded:", log)

@@ kill ends it
log = ""
three("e")
kill()
x = 1
x = 2
print("killed:", log)

@@ its scopes are its own
decay function counting()
  local n = 10
  n = n + 1
  seen = n
end
n = 1
counting()
x = 1
x = 2
x = 3
print("own local:", seen, "and the main line's:", n)

@@ an error surfaces at the main line's next statement
decay function failing()
  error("from the side")
end
function waits()
  failing()
  local a = 1
  a = 2
  return "not reached"
end
ok, message = pcall(waits)
print(ok, string["find"](message, "from the side", 1, true) != not)

@@ a return ends it without evaluating its values
log = ""
decay function returning()
  log = log + "before "
  return three("f")
end
returning()
x = 1
x = 2
x = 3
print("returned:", log)
ok, message = pcall(kill, 1)
print(message)
