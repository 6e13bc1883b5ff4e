counts = {}
for i = 1, 300000 do
  key = "key" .. i % 500
  old = counts[key]
  if old == nil then
    counts[key] = 1
  else
    counts[key] = old + 1
  end
end
total = 0
for k, v in pairs(counts) do
  total = total + v
end
print(total .. " " .. counts.key7)
