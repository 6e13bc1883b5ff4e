sum = 0
for i in range(1, 3000001):
    sum = (sum + i * 7) % 1000003
print(sum)
