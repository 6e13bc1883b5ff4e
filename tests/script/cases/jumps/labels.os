@@ forward in the running chunk
log = ""
function forward()
  log = log + "a"
  jumpTo("ahead")
  log = log + "skipped"
  nest("ahead")
    log = log + "b"
  end
  log = log + "c"
end
forward()
print("forward:", log)

@@ the rest of the statement is still evaluated
log = ""
pushed = []
function rest()
  x = [jumpTo("behind"), push(pushed, "r")]
  log = log + "skipped"
  nest "behind"()
    log = log + "s"
  end
end
rest()
print("rest:", pushed, log)

@@ backwards, out of a loop and a branch
log = ""
rounds = 0
function back()
  nest("again")
    rounds = rounds + 1
  end
  for i = 1, 5
    if rounds < 3
      jumpTo("again")
    end
    log = log + i
  end
end
back()
print("back:", rounds, log)

@@ into a function that isn't running: its tail runs, then the script goes on
log = ""
function tail(p)
  log = log + "head "
  nest("in-tail")
    log = log + "tail " + toString(p) + " "
  end
  log = log + "end "
end
jumpTo("in-tail")
log = log + "on"
print("tail:", log)

@@ out of a called function into the caller's chunk
log = ""
function leaves()
  jumpTo("out")
  log = log + "skipped"
end
leaves()
log = log + "skipped too"
nest("out")
  log = log + "out"
end
print("out:", log)

@@ the last declaration of a label wins
function one()
  nest("shared")
    log = "one"
  end
end
function two()
  nest("shared")
    log = "two"
  end
end
jumpTo("shared")
print("shared:", log)

ok, message = pcall(jumpTo, "")
print(message)
ok, message = pcall(jumpTo, 1)
print(message)
ok, message = pcall(jumpTo)
print(message)
function nowhere()
  jumpTo("no such place")
end
ok, message = pcall(nowhere)
print(ok, string["find"](message, "jumpTo target not found: no such place", 1, true) != not)
