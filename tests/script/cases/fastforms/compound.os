@@ assignments in place keep the rules of the operators
n = 5
n += 1
n -= 2
n *= 10
n \= 3
n %= 4
print(n)
n += 0.5
print(n)
n = 7
n /= 2
print(n)
n = 2
n ^= 10
print(n)
n ^= 0.5
print(n)
b = true
b += true
print(b)
b = true
b -= 0.5
print(b)
s = "a"
s += 1
s += not
s += [1]
s += s
print(s)
m = 2147483647
m += 1
print(m)
x = 5
y = x
x = x + 1
print(x, y)
x = x + "!"
print(x)
list = [1, [2, 3], {k = 4}]
list[1] += 10
list[2][2] *= 5
list[3]["k"] -= 1
print(list)
list[2] += " joined"
print(list)
function firstLine(text)
  local stop = string["find"](text, "\n", 1, true)
  return string["sub"](text, 1, stop - 1)
end
function broken(which)
  local n = 1
  if which == 1
    n /= 0
  elseif which == 2
    n += not
  elseif which == 3
    n %= 0.0
  elseif which == 4
    n *= "a"
  elseif which == 5
    neverSet += 1
  else
    n ^= "a"
  end
end
for which = 1, 6
  ok, why = pcall(broken, which)
  print(ok, firstLine(why))
end
function local1()
  local n = 10
  n += 1
  n = n * 2
  return n
end
print(local1(), n)
total = 0
for i = 1, 5
  total += i
  i += 100
end
print(total)
