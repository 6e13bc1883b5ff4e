function matrix(n, seed)
  local m = []
  for i = 1, n
    local row = []
    for j = 1, n
      row[j] = (i * seed + j) % 10
    end
    m[i] = row
  end
  return m
end
function multiply(a, b, n)
  local c = []
  for i = 1, n
    local row = []
    local left = a[i]
    for j = 1, n
      local sum = 0
      for k = 1, n
        sum = sum + left[k] * b[k][j]
      end
      row[j] = sum
    end
    c[i] = row
  end
  return c
end
n = 160
c = multiply(matrix(n, 3), matrix(n, 7), n)
trace = 0
for i = 1, n
  trace += c[i][i]
end
print(trace)
