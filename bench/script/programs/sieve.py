limit = 500000
composite = [False] * (limit + 1)
count = 0
for i in range(2, limit + 1):
    if not composite[i]:
        count += 1
        for j in range(i + i, limit + 1, i):
            composite[j] = True
print(count)
