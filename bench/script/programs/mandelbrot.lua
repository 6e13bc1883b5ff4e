size = 160
limit = 50
inside = 0
for py = 0, size - 1 do
  cy = 2.0 * py / size - 1.0
  for px = 0, size - 1 do
    cx = 2.0 * px / size - 1.5
    x = 0.0
    y = 0.0
    n = 0
    while n < limit and x * x + y * y < 4.0 do
      t = x * x - y * y + cx
      y = 2.0 * x * y + cy
      x = t
      n = n + 1
    end
    if n == limit then
      inside = inside + 1
    end
  end
end
print(inside > 8000)
