limit = 500000
composite = []
reserve(composite, limit)
for i = 1, limit
  composite[i] = false
end
count = 0
for i = 2, limit
  if !composite[i]
    count += 1
    for j = i + i, limit, i
      composite[j] = true
    end
  end
end
print(count)
