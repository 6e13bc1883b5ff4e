@@ From the call to the end.
decay function three(mark)
  log += mark + "1 "
  log += mark + "2 "
  log += mark + "3 "
end

@@ the call gives nil at once, and nothing of the body has run before its statement ends
log = ""
seen = [three("a"), log + "|"]
print("call:", seen, log)
print("second turn:", log)
print("third turn:", log)
print("finished:", log)

@@ one turn a statement, and after the last nothing more
log = ""
three("a")
for i = 1, 10
  log += "- "
end
print("finished after the third:", log)

@@ started in a function, it goes on when the function has returned
log = ""
function starts()
  three("b")
  log += "in "
end
starts()
log += "out "
print("outlives its caller:", log)

@@ one that is running is dropped where it stands, without any notice
log = ""
three("c")
three("d")
x = 1
x = 2
x = 3
print("replaced:", log)

@@ the caller of another one ends in the middle of its statement
log = ""
decay function first()
  log += "f1 "
  log += toString(three("g")) + "never "
  log += "never "
end
first()
log += "m1 "
log += "m2 "
log += "m3 "
log += "m4 "
log += "m5 "
print("succeeded:", log)

@@ no protected call and no function in between holds that up
log = ""
decay function protects()
  x, y = pcall(three, "h")
  log += "never "
end
protects()
for i = 1, 5
  x = i
end
print("through pcall:", log)
log = ""
function between()
  log += "b "
  three("i")
  log += "never "
end
decay function calls()
  between()
  log += "never "
end
calls()
for i = 1, 5
  x = i
end
print("through a function:", log)
log = ""
decay function sorts()
  two = [2, 1]
  table["sort"](two, compares)
  log += "never "
end
function compares(a, b)
  three("j")
  log += "never "
end
sorts()
for i = 1, 5
  x = i
end
print("through the library:", log)

@@ one that starts itself goes on from its beginning
log = ""
decay function again(n)
  log += n + " "
  again(n + 1)
  log += "never "
end
again(1)
x = 1
x = 2
x = 3
x = 4
kill()
print("again:", log)

@@ an empty one ends at once, so do strays
decay function empty()
end
empty()
x = 1
print("empty: done")

@@ kill ends it, from the main line and from inside
log = ""
three("k")
print("kill gives:", kill())
x = 1
print("killed:", log)
print("nothing to kill:", kill())
log = ""
decay function ends()
  log += "e1 "
  log += "[" + toString(kill()) + "] "
  log += "never "
end
ends()
x = 1
x = 2
x = 3
print("killed from inside:", log)
log = ""
function killing()
  kill()
  log += "rest "
  return "value "
end
decay function killedInside()
  kept = killing()
  log += "never "
end
killedInside()
x = 1
x = 2
print("killed in a function:", log, kept)
ok, message = pcall(kill, 1)
print("kill:", ok, message)
ok, message = pcall(kill, not)
print("kill:", ok, message)

@@ a name is looked up when its line runs
log = ""
word = "old "
decay function late()
  log += word
  log += word
end
late()
word = "new "
x = 1
print("late:", log)

@@ replaced while it runs, its function is still the old one
log = ""
decay function changes()
  log += "o1 "
  log += "o2 "
  log += "o3 "
end
changes()
decay function changes()
  log += "n1 "
end
x = 1
print("declared again:", log)
changes()
print("and called:", log)

@@ it takes its turn in whatever script runs
log = ""
chunk = load("x = 1\nx = 2")
three("l")
chunk()
print("in a chunk:", log)
