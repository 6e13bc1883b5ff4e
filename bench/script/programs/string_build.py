total = 0
for round in range(200):
    s = ""
    for i in range(1, 1001):
        s = s + "item " + str(i) + ", "
    total += len(s)
print(total)
