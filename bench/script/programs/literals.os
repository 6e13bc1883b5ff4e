total = 0
for i = 1, 200000
  point = {x = i, y = 2}
  list = [i, 2, 3]
  total = (total + point["x"] + list[3]) % 1000000
end
print(total)
