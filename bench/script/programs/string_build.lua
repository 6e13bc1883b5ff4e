total = 0
for round = 1, 200 do
  s = ""
  for i = 1, 1000 do
    s = s .. "item " .. i .. ", "
  end
  total = total + #s
end
print(total)
