counts = {}
for i in range(1, 300001):
    key = "key" + str(i % 500)
    old = counts.get(key)
    if old is None:
        counts[key] = 1
    else:
        counts[key] = old + 1
total = 0
for k, v in counts.items():
    total += v
print(total, counts["key7"])
