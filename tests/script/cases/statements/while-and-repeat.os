@@ The two loops with a condition: rounds, leaving early, and their faults.
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

n = 0
while n < 3
  n += 1
end
print("while", n)
while n < 3
  print("never")
end
n = 3
while n
  n -= 1
end
print("down to zero", n)
n = 5
repeat
  n += 1
until true
print("once at least", n)
repeat
  n += 1
until n == 10
print("repeat", n)
while true
  n += 1
  if n == 12
    break
  end
end
print("break", n)
repeat
  n += 1
  if n > 14
    break
  end
until false
print("break in repeat", n)
repeat
until n > 0
while n < 0
end
print("empty bodies", n)

@@ a break leaves the innermost loop only
log = ""
for i = 1, 3
  while true
    repeat
      log += i
      break
    until false
    log += "."
    break
  end
end
print(log)

function find(limit)
  while true
    repeat
      limit -= 1
      if limit < 0
        return "left both at " + limit
      end
    until false
  end
end
print(find(2))

@@ the names of the body are gone when the condition is asked
inside = "outside"
rounds = 0
repeat
  local inside = "inside"
  rounds += 1
until inside == "outside"
print("until sees", inside, rounds)
rounds = 0
repeat
  rounds += 1
  atLeast = rounds >= 2
until atLeast
print("until sees assignments", rounds)

@@ a condition is asked anew each round, and counts 0 as false where it is a plain number
list = [3, 2, 1, 0, 5]
at = 1
while list[at]
  at += 1
end
print("stopped at", at)
at = 0
repeat
  at += 1
until list[at] == 0
print("found at", at)
countdown = 2
repeat
  countdown -= 1
until countdown - 1
print("0 is false for until", countdown)

print(try("while true do\nend"))
print(try("while\nend"))
print(try("while 1 < \"a\"\nend"))
print(try("repeat\nuntil"))
print(try("repeat\nuntil true true"))
print(try("repeat\nuntil 1 < \"a\""))
print(try("while true"))
print(try("repeat"))
print(try("repeat\nend"))
print(try("repeat\nend\nuntil true"))
print(try("while true\nuntil true"))
print(try("while true\nbreak\nuntil true\nend\nreturn \"a stray until is skipped\""))
print(try("repeat\nwhile false\nend\nuntil true\nreturn \"nested\""))
