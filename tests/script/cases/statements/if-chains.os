@@ Branches: which one runs, what a condition counts as true, and what a faulty one says.
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

function sign(n)
  if n < 0
    return "negative"
  elseif n == 0
    return "zero"
  elseif n < 10
    return "small"
  else
    return "large"
  end
end
print(sign(-5), sign(0), sign(3), sign(30))

@@ the conditions behind a branch that was taken are not evaluated
asked = ""
function ask(name, answer)
  asked += name
  return answer
end
if ask("a", false)
  print("never")
elseif ask("b", true)
  print("b taken")
elseif ask("c", true)
  print("never")
else
  print("never")
end
print("asked", asked)

@@ an empty branch is a branch
if true
else
  print("never")
end
if false
elseif true
else
  print("never")
end
if false
  print("never")
end
if true
end

@@ else alone ends the chain; a second one is never reached
if false
  print("never")
else
  print("else")
end
if false
  print("never")
else
  print("first else")
else
  print("never")
end
if false
  print("never")
else
  print("else first")
elseif true
  print("never")
end

@@ what counts as true
function truth(text)
  return try("if " + text + "\nreturn \"yes\"\nend\nreturn \"no\"")
end
nothing = not
nought = 0
holder = [0, "", not]
print("true", truth("true"), "false", truth("false"), "not", truth("not"), "missing", truth("neverMade"))
print("0", truth("0"), "0.0", truth("0.0"), "nought", truth("nought"), "element 0", truth("holder[1]"))
print("1", truth("1"), "-1", truth("-1"), "0.5", truth("0.5"))
print("text", truth("\"\""), "array", truth("[]"), "table", truth("{}"), "function", truth("truth"))
print("array element", truth("[0][1]"), "boxed", truth("([0])[1]"), "pointer", truth("$0"))
print("0 and", truth("0 and true"), "0 or", truth("0 or false"), "not 0", truth("not 0"), "!0", truth("!0"))
function none()
  return
end
function zero()
  return 0
end
print("result 0", truth("zero()"), "result nil", truth("none()"), "len", truth("len(\"\")"), "#", truth("#\"\""))
print("floor", truth("math[\"floor\"](0.5)"), "abs", truth("math[\"abs\"](0)"), "sum", truth("1 - 1"))

@@ faults
print(try("if"))
print(try("if\nend"))
print(try("if true then\nend"))
print(try("if false\nelseif true then\nend"))
print(try("if false\nelseif\nend"))
print(try("if 1 +\nend"))
print(try("if 1 < \"a\"\nend"))
print(try("if true\n"))
print(try("if true\nelse\n"))
print(try("if true\nwhile false\nend"))
print(try("if false\nif 1 < \"a\"\nend\nend\nreturn \"not reached, not reported\""))

@@ nested as deep as is usual
function nested(a, b, c)
  if a
    if b
      if c
        return "abc"
      else
        return "ab"
      end
    elseif c
      return "a c"
    end
    return "a"
  end
  return ""
end
print(nested(true, true, true), nested(true, true, false), nested(true, false, true), nested(true, false, false))
