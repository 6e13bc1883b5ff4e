seed = 42
values = []
for i = 1, 30000
  seed = (seed * 1103 + 12345) % 65536
  values[i] = seed
end
function descending(a, b)
  return a > b
end
table["sort"](values, descending)
print(values[1], values[15000], values[30000])
