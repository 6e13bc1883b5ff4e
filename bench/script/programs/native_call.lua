value = 0
for y = 1, 1600 do
  for x = 1, 1000 do
    value = math.max(value, x + y)
  end
end
print(value)
