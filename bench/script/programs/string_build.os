total = 0
for round = 1, 200
  s = ""
  for i = 1, 1000
    s = s + "item " + i + ", "
  end
  total += #s
end
print(total)
