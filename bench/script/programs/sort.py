seed = 42
values = []
for i in range(100000):
    seed = (seed * 1103 + 12345) % 65536
    values.append(seed)
values.sort()
print(values[0], values[49999], values[99999])
