@@ The counting loop: its clauses, its course and its faults.
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

function course(text)
  log = ""
  local told = try("for i = " + text + "\nlog += i + \" \"\nend\nreturn log")
  return "[" + told + "]"
end
print(course("1, 3"), course("3, 1"), course("2, 2"), course("-1, 1"))
print(course("3, 1, -1"), course("1, 3, -1"), course("3, 1, -2"), course("1, 10, 4"), course("0, -4, -2"))
print(course("1.9, 3.9"), course("-1.9, 1.9"), course("1, 2.99"), course("0.9, 0.1"), course("1, 9, 2.9"))
print(course("true, 3"), course("false, true"), course("1, 4, true"))
print(course("1, 3, 0"), course("1, 3, 0.9"), course("1, 3, false"))
print(course("2147483646, 2147483647"), course("-2147483647, -2147483647 - 1, -1"))
print(course("1, 2147483647, 2147483647"), course("2147483647, 2147483647, 2147483647"))
print(course("\"1\", 3"), course("1, \"3\""), course("1, 3, \"1\""), course("not, 3"), course("1, neverMade"))
print(course("[1], 3"), course("1, {}"), course("1, 2, try"), course("(1), (2)"), course("1 + 1, 2 * 2, 1 + 1"))
print(course("len([1, 2]), 4"), course("[1, 2][2], 3"), course("1, #[5, 5]"))

print(try("for i = 1\nend"))
print(try("for i = 1 2\nend"))
print(try("for i = 1, 3 do\nend"))
print(try("for i = 1, 3, 1 do\nend"))
print(try("for i = 1, 3, 1, 1\nend"))
print(try("for i = 1,\nend"))
print(try("for i = , 3\nend"))
print(try("for i = 1, 3,\nend"))
print(try("for i =\nend"))
print(try("for i\nend"))
print(try("for\nend"))
print(try("for 5 = 1, 3\nend"))
print(try("for i == 1, 3\nend"))
print(try("for i = 1, 3"))
print(try("for i = 1, 3\nif true\nend"))

@@ the clauses are read once, from left to right, before the first round
asked = ""
function ask(name, answer)
  asked += name
  return answer
end
limit = 3
for i = ask("start ", 1), ask("limit ", limit), ask("step ", 1)
  limit = 1
  asked += i + " "
end
print(asked)
asked = ""
print(try("for i = ask(\"a\", \"x\"), ask(\"b\", 1)\nend"), asked)
asked = ""
print(try("for i = ask(\"a\", 1), ask(\"b\", \"x\"), ask(\"c\", 1)\nend"), asked)

@@ changing the variable in the body does not change the count
log = ""
for i = 1, 4
  log += i + ">"
  i = i * 10
  log += i + " "
end
print(log)
log = ""
for i = 1, 3
  i = "text"
  i += "s"
  log += i + " "
end
for i = 1, 2
  i = [i]
  log += i[1]
end
print(log)

@@ the variable is gone behind the loop, and an outer one of the same name is as it was
print("gone", i)
i = "mine"
for i = 1, 3
end
print("kept", i)
for i = 1, 2
  for i = 7, 8
  end
  print("inner gone", i)
end
for i = 1, 3
  if i == 2
    break
  end
end
print("kept behind a break", i)
function leave()
  for i = 1, 3
    return i
  end
end
print("returned", leave(), i)
ok, fault = pcall(load("for i = 1, 3\nx = 1 + not\nend"))
print("kept behind a fault", ok, i)

@@ it is an integer, whatever the clauses were
for i = 1.5, 1.5
  print(i, i == 1)
end

@@ a clause that fails softly ends the statement
function failing()
  error("in a clause")
end
function clauses(which)
  for i = which == 1 and failing() or 1, which == 2 and failing() or 2, which == 3 and failing() or 1
    reached = true
  end
  reached = true
end
for which = 1, 3
  reached = false
  ok, fault = pcall(clauses, which)
  print(ok, fault, reached)
end
