seed = 42
values = []
for i = 1, 100000
  seed = (seed * 1103 + 12345) % 65536
  values[i] = seed
end
table["sort"](values)
print(values[1], values[50000], values[100000])
