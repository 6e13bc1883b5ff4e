total = 0
for i in range(1, 200001):
    point = {"x": i, "y": 2}
    values = [i, 2, 3]
    total = (total + point["x"] + values[2]) % 1000000
print(total)
