@@ one-line functions and guards behave like longer ones
function plain(a, b)
  return a + b
end
function longPlain(a, b)
  local sum = a + b
  return sum
end
function several(a)
  return a, a + 1, "x"
end
function nothing()
  return
end
function guard(n)
  if n < 0
    error("negative")
  end
  return n * 2
end
function rest(...)
  return ...
end
function firstLine(text)
  local stop = string["find"](text, "\n", 1, true)
  if stop == not
    return text
  end
  return string["sub"](text, 1, stop - 1)
end
function tried(f, a, b)
  local ok, value = pcall(f, a, b)
  if ok
    return value
  end
  return firstLine(value)
end
print(plain(1, 2), plain("a", 1), plain(1.5, 2), plain(true, true))
print(tried(plain, 1), tried(longPlain, 1), tried(plain), tried(longPlain))
print(tried(plain, [], 1), tried(longPlain, [], 1), tried(plain, 1, 2))
a, b, c, d = several(5)
print(a, b, c, d, nothing(), [several(1)])
print(guard(4), tried(guard, -1), tried(guard, not), tried(guard, "a"))
ok, why = pcall(guard, -1)
print(ok, why)
a, b, c = rest(1, 2)
print(a, b, c, [rest()])
print(plain(1, 2, 3, 4), plain(plain(1, 2), plain(3, 4)))
function outer(x)
  return inner()
end
function inner()
  return x
end
x = "global"
print(outer("parameter"), inner())
function assignsNothing(y)
  return y == 1
end
print(assignsNothing(1), assignsNothing(2), y)
function selfish(n)
  return n <= 0 and 0 or n + selfish(n - 1)
end
print(selfish(100))
function replaced()
  replaced = plain
  return 7
end
print(replaced(), replaced(1, 1))
n = 0
function count()
  n += 1
  return n
end
count()
count()
print(n, count() + count() * 10)
error = plain
function quiet(n)
  if n < 0
    error("no longer raised")
  end
  return n
end
print(tried(quiet, -5))
