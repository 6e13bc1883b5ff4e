@@ Compound operators: on names, on elements, and what they need to exist.
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

n = 7
n += 3
print(n)
n -= 4
print(n)
n *= 5
print(n)
n /= 4
print(n)
n = 7
n \= 2
print(n)
n = 7
n %= 4
print(n)
n ^= 3
print(n)
n = 1
n += 0.5
print(n)
n = true
n += true
print(n)
text = "a"
text += 1
text += "b"
text += text
print(text)
text = 1
text += "x"
print(text)
n = 5
n += n
print(n)
n += 1, 100
print("only the first value counts", n)
function pair()
  return 10, 20
end
n += pair()
print("the first of several", n)
n -= -n
print(n)

list = [1, [2, 3], {k = 4}]
list[1] += 10
list[2][2] *= 10
list[3]["k"] -= 1
print(list)
map = {n = 1, s = "x"}
map["n"] += 1
map["s"] += "y"
map["s"] += map["s"]
print(map["n"], map["s"])
words = ["ab"]
words[1] += "c"
print(words)
function scoped()
  local n = 1
  n += 1
  return n
end
print(scoped(), n)
function parameter(n)
  n *= 2
  return n
end
print(parameter(4), n)
for i = 1, 2
  i += 10
  print(i)
end
function adds()
  n += 1
end
adds()
print(n)
n#1 += 1
print(n, n#1)
asked = 0
function key()
  asked += 1
  return 1
end
list[key()] += 1
print(list[1], asked)

print(try("missing += 1"))
print(try("missing[1] += 1"))
print(try("missing#3 += 1"))
print(try("x = not\nx += 1"))
print(try("x = [1]\nx += 1"))
print(try("x = 5\nx += not"))
print(try("x = 5\nx -= \"a\""))
print(try("x = 5\nx /= 0"))
print(try("x = 5\nx \\= 0"))
print(try("x = 5\nx %= 0"))
print(try("x = [1]\nx[2] += 1"))
print(try("x = [1, [1]]\nx[2][2] += 1"))
print(try("x = [1]\nx[3][1] += 1"))
print(try("x = {}\nx[\"k\"] += 1"))
print(try("x = {}\nx[\"k\"] += \"text\"\nreturn x[\"k\"]"))
print(try("x = {}\nx[\"k\"][1] += 1"))
print(try("x = 5\nx[1] += 1"))
print(try("x = not\nx[1] += 1"))
print(try("x = \"abc\"\nx[1] += \"d\""))
print(try("x, y = 1, 2\nx, y += 1"))
print(try("x = 1\nx +="))
print(try("x = 1\nx += 1 2"))
print(try("x = 1\nx &= 1"))
print(try("x = 1\nx =+ 1\nreturn x"))
print(try("x = 1\nx ~= 1\nreturn x"))

@@ nothing was changed where the operation failed
x = 5
print(try("x += not"), x)
