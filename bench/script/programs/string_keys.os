counts = {}
for i = 1, 300000
  key = "key" + i % 500
  old = counts[key]
  if old == not
    counts[key] = 1
  else
    counts[key] = old + 1
  end
end
total = 0
for k, v in pairs(counts)
  total += v
end
print(total, counts["key7"])
