function fib(n)
  if n < 2
    return n
  end
  return fib(n - 1) + fib(n - 2)
end
local function swap(a, b)
  return b, a
end
native function count()
  native calls = (calls or 0) + 1
  return calls
end
function many(first, ...)
  local rest = ...
  return select(2, ...), first, ...
end
t = {}
function t["method"](x)
  external seen = x
  return x#1
end
function deep(n)
  return deep(n + 1)
end
print(fib(8), swap(1, 2), count(), count(), many(1, 2, 3), t["method"](4), seen#0)
print(pcall(deep, 1))
decay function later(n)
  print(n)
end
