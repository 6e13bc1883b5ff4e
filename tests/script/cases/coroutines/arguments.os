@@ What a coroutine gets from its call: parameters, further arguments, its own scopes.
function turns(n)
  for round = 1, n
    local rest = round
  end
end
decay function shows(a, b)
  seen = [a, b]
end
shows()
print("none:", seen)
shows(1)
print("one:", seen)
shows(1, 2, 3)
print("surplus:", seen)
decay function further(a, ...)
  local b, c = ...
  seen = [a, b, c]
end
further(1)
turns(2)
print("no further ones:", seen)
further(1, 2, 3, 4)
turns(2)
print("further ones:", seen)

@@ the arguments are those of the call, whatever happens to the variables later
decay function keeps(word, list)
  local x = 1
  x = 2
  seen = [word, list]
end
word = "first"
list = [1]
keeps(word, list)
word = "second"
push(list, 2)
list = "other"
turns(1)
print("kept:", seen)

@@ parameters and locals last from turn to turn and are nobody else's
decay function own(p)
  local v = p
  p += 1
  v += 10
  seen = [p, v]
end
p = "main p"
v = "main v"
own(1)
function reads()
  local first = [p, v]
  first = [p, v]
  return first
end
print("main line:", reads())
turns(1)
print("coroutine:", seen)

@@ it sees neither the locals nor the frames of whoever runs when its turn comes
decay function looks()
  seen = [hidden, parameter, loopVariable]
  seenLater = [hidden, parameter, loopVariable]
end
function around(parameter)
  local hidden = 1
  for loopVariable = 1, 1
    looks()
    hidden = 2
  end
end
around(1)
print("looks:", seen, seenLater)

@@ a function that it calls sees its parameters, not its locals
decay function lends(lent)
  local kept = 1
  borrow()
end
function borrow()
  borrowed = [lent, kept]
end
lends("parameter")
turns(1)
print("borrowed:", borrowed)

@@ it writes globals, its native scope and explicit scopes
native shared = "outside"
decay function writes()
  made = 1
  native shared = "inside"
  seen = shared
  explicit#1 = 2
end
writes()
turns(3)
print("written:", made, seen, shared, explicit)

@@ its native scope is that of a function declared at its place
decay function native1()
  native mine = "of depth one"
end
function native2()
  return mine
end
native1()
print("native:", native2())

@@ declared under an index
box = {}
decay function box["in"](a)
  seen = "in the box " + a
end
print("gives:", box["in"]("now"))
print(seen)
decay function short(a)
  return a
end
print("one line:", short(5))

@@ a function without the word is no coroutine, and a variable may have that name
decay = 5
function plain()
  return decay
end
print("plain:", plain())
