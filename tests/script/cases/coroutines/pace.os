@@ A turn after every statement of the main line, those inside of blocks and called functions included.
decay function count()
  for i = 1, 40
    log += i + " "
  end
end

@@ the calling statement is the first
kill()
log = ""
count()
log += "a "
log += "b "
print("statements:", log)

kill()
log = ""
count()
if true
  log += "a "
end
print("if:", log)

kill()
log = ""
count()
if false
  log += "a "
elseif not false
else
  log += "b "
end
print("if without statements:", log)

kill()
log = ""
count()
n = 0
while n < 2
  n += 1
end
print("while:", log)

kill()
log = ""
count()
repeat
  n -= 1
until n == 0
print("repeat:", log)

kill()
log = ""
count()
for i = 1, 3
  n = i
end
for i = 1, 0
  n = i
end
print("numeric for:", log)

kill()
log = ""
count()
for k, v in pairs({a = 1})
  n = v
end
print("generic for:", log)

kill()
log = ""
count()
nest("block")
  n = 1
end
print("nest:", log)

kill()
log = ""
count()
while true
  break
end
print("break:", log)

kill()
log = ""
count()
function declared()
  local x = 1
  x = 2
  return x
end
print("declaration:", log)

@@ a called function's statements, its return, then the calling statement
kill()
log = ""
count()
n = declared()
print("call:", log)

@@ the calls in one statement, one after the other
kill()
log = ""
count()
n = [declared(), log, declared(), log]
print("calls:", n[2], n[4], log)

@@ while a library function runs the coroutine stands still, but for the scripts that it calls
kill()
log = ""
count()
a = [3, 1, 2]
table["sort"](a)
print("library:", log)

@@ several statements on one line are several statements
kill()
log = ""
count()
n = 1 ; n = 2 ; n = 3
print("one line:", log)

@@ a chunk's statements count like all others
kill()
log = ""
chunk = load("n = 1\nn = 2")
count()
chunk()
print("chunk:", log)
kill()
