@@ Declaring functions: the four forms, targets with index parts, parameters and every fault of the line.
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

function plain(a, b)
  return toString(a) + toString(b)
end
print(plain(1, 2), plain("x"), typeOf(plain))
function noParameters()
  return "none"
end
print(noParameters(), noParameters(1, 2))
function empty()
end
print(empty())
function spaced ( a , b )
  return a + b
end
print(spaced(1, 2))

@@ a plain name goes where an assignment would put it
shape = "before"
function shape()
  return "function"
end
print(typeOf(shape))
function declaresGlobal()
  function madeInside()
    return "made inside"
  end
end
print(typeOf(madeInside))
declaresGlobal()
print(madeInside())
function overParameter(target)
  function target()
    return "in the parameter"
  end
  return target()
end
print(overParameter(1), typeOf(target))

function withLocal()
  local function hidden()
    return "local"
  end
  return hidden()
end
print(withLocal(), typeOf(hidden))
function withNative()
  native function shared()
    return "native"
  end
  return shared()
end
function readsNative()
  return shared()
end
print(withNative(), readsNative(), typeOf(shared))
@@ a local function hides a global one inside its block only
function twice()
  return "global"
end
function shadows()
  local log = twice()
  if true
    local function twice()
      return "local"
    end
    log += " " + twice()
  end
  return log + " " + twice()
end
print(shadows())

@@ indexed targets make what is missing, as an assignment does
function tools["greet"](name)
  return "hello " + name
end
print(tools["greet"]("you"), typeOf(tools))
function list[2]()
  return "second"
end
print(list[1], list[2](), len(list))
function deep["a"][1]["b"]()
  return "deep"
end
print(deep["a"][1]["b"](), len(deep["a"]))
key = "computed"
function tools[key + "!"]()
  return "by key"
end
print(tools["computed!"]())
function tools["greet"](name)
  return "bye " + name
end
print(tools["greet"]("you"))
asked = 0
function index()
  asked += 1
  return "once"
end
function tools[index()]()
  return "asked"
end
print(tools["once"](), asked)
function lists()
  local mine = {}
  function mine["f"]()
    return "in a local table"
  end
  return mine["f"]()
end
print(lists(), typeOf(mine))

@@ variadic functions
function rest(first, ...)
  local a, b = ...
  return toString(first) + toString(a) + toString(b)
end
print(rest(1, 2, 3), rest(1), rest())
function all(...)
  local a = ...
  return a
end
print(all("x", "y"), all())

@@ a function is made anew each time its declaration runs
function maker()
  function made()
    return 1
  end
  return made
end
first = maker()
print(first == made, first == maker())

@@ names that mean something elsewhere
function end2()
  return "fine"
end
function in(then)
  return then
end
print(end2(), in("then"))

print(try("function\nend"))
print(try("function 5()\nend"))
print(try("function \"f\"()\nend"))
print(try("function (a)\nend"))
print(try("function f\nend"))
print(try("function f a\nend"))
print(try("function f[1\n]\nend"))
print(try("function f[1 2]()\nend"))
print(try("function f[]()\nend"))
print(try("function f[1]\nend"))
print(try("function f(5)\nend"))
print(try("function f(\"a\")\nend"))
print(try("function f(,)\nend"))
print(try("function f(a,)\nend"))
print(try("function f(a b)\nend"))
print(try("function f(a = 1)\nend"))
print(try("function f(a, ..., b)\nend"))
print(try("function f(... a)\nend"))
print(try("function f(..., ...)\nend"))
print(try("function f() stray\nend"))
print(try("function f()()\nend"))
print(try("function f(a) return a end\nend"))
print(try("local function\nend"))
print(try("native function 5()\nend"))
print(try("decay function f\nend"))
print(try("function f()"))
print(try("local function f()"))
print(try("native function f()"))
print(try("decay function f()"))
print(try("function f()\nif true\nend"))
print(try("function len[1]()\nend"))
print(try("function neverMade[not]()\nend"), typeOf(neverMade))
print(try("if false\nfunction 5()\nend\nend\nreturn \"a header is read when it is reached\""))
