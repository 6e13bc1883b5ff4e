value = 0
for y = 1, 1600
  for x = 1, 1000
    value = math["max"](value, x + y)
  end
end
print(value)
