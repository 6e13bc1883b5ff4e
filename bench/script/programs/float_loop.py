x = 0.5
n = 0
for i in range(1, 2000001):
    x = x * 1.5
    if x > 100.0:
        x = x - 99.0
        n += 1
print("true" if n > 0 else "false")
