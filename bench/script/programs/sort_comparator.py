import functools
seed = 42
values = []
for i in range(30000):
    seed = (seed * 1103 + 12345) % 65536
    values.append(seed)
def descending(a, b):
    return -1 if a > b else (1 if b > a else 0)
values.sort(key=functools.cmp_to_key(descending))
print(values[0], values[14999], values[29999])
