size = 160
limit = 50
inside = 0
for py in range(size):
    cy = 2.0 * py / size - 1.0
    for px in range(size):
        cx = 2.0 * px / size - 1.5
        x = 0.0
        y = 0.0
        n = 0
        while n < limit and x * x + y * y < 4.0:
            t = x * x - y * y + cx
            y = 2.0 * x * y + cy
            x = t
            n += 1
        if n == limit:
            inside += 1
print("true" if inside > 8000 else "false")
