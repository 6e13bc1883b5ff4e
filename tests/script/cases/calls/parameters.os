@@ Arguments and parameters.
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

function three(a, b, c)
  return toString(a) + " " + toString(b) + " " + toString(c)
end
print(three(1, 2, 3), three(1), three(), three(1, 2, 3, 4))
print(three(not, 2), three([1], {k = 2}, "x"))
function pair()
  return 1, 2
end
function types(a, b)
  return typeOf(a) + " " + typeOf(b)
end
print(types(pair()), types(pair(), 3), types(three))

@@ values are copied, containers are shared
function changes(text, number, list, map)
  text += "!"
  text[1] = "X"
  number += 1
  list[1] = "changed"
  map["k"] = "changed"
  list = "replaced"
end
text = "text"
number = 1
list = [1]
map = {k = 1}
changes(text, number, list, map)
print(text, number, list, map["k"])

@@ arguments are evaluated once, from left to right, before the call
order = ""
function note(name)
  order += name
  return name
end
print(three(note("a"), note("b"), note("c")), order)
order = ""
print(try("noFunction(note(\"x\"), note(\"y\"))"), order)

@@ anything that holds a function can be called
tools = {f = three, list = [three]}
print(tools["f"](1, 2, 3), tools["list"][1]("x"), [three][1](9))
function gives()
  return three
end
print(gives()(5), (three)(6), (gives())(7))
alias = three
print(alias(8), alias == three)
print("abc"["upper"](), ("a" + "b")["len"]())
function takes(f, ...)
  return f(...)
end
print(takes(three, 1, 2))
print(try("return takes(len, \"four\")"))

@@ parameters are the function's own
p = "global"
function own(p)
  p = "changed"
  return p
end
print(own("given"), p)
function recursive(n, log)
  n -= 1
  if n > 0
    log = recursive(n, log + n)
  end
  return log + n
end
print(recursive(4, ""))

@@ many of them
names = ""
values = ""
sum = ""
for i = 1, 60
  if i > 1
    names += ", "
    values += ", "
    sum += " + "
  end
  names += "p" + i
  values += i
  sum += "p" + i
end
load("function wide(" + names + ")\nreturn " + sum + "\nend")()
print(load("return wide(" + values + ")")())

@@ a loaded text takes none
f = load("return 5")
print(f())
ok, fault = pcall(f, 1)
print(ok, fault)
print(try("load(\"return 1\")(not)"))
print(try("load(\"x = 1\")(try())"))

@@ faults between the brackets
print(try("three(1 2)"))
print(try("three(1,)"))
print(try("three(,1)"))
print(try("three(1"))
print(try("three(1]"))
print(try("three)"))
