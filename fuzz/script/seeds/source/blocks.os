n = 0
if n == 1
elseif n == 0
  n = 5
else
  n = 6
end
while n > 0
  n -= 1
  if n == 2
    break
  end
end
repeat
  local k = n
  n += 1
until n > 4
for i = 1, 10, 3
  for j = 3, 1, -1
    n += i * j
  end
end
for k, v in pairs({a = 1, b = {2}})
  print(k, v)
end
for i, v in ipairs([1, 2, not, 4])
  print(i, v)
end
for v in [[1, 2], [3]]
  print(v)
end
nest("label")
  n = 1
end
nest
  n = 2
end
return n, "two", [3]
