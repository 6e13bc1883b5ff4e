value = 0
for y in range(1, 1601):
    for x in range(1, 1001):
        value = max(value, x + y)
print(value)
