x = 0.5
n = 0
for i = 1, 2000000
  x = x * 1.5
  if x > 100.0
    x = x - 99.0
    n += 1
  end
end
print(n > 0)
