def matrix(n, seed):
    return [[(i * seed + j) % 10 for j in range(1, n + 1)] for i in range(1, n + 1)]
def multiply(a, b, n):
    c = []
    for i in range(n):
        row = []
        left = a[i]
        for j in range(n):
            sum = 0
            for k in range(n):
                sum = sum + left[k] * b[k][j]
            row.append(sum)
        c.append(row)
    return c
n = 160
c = multiply(matrix(n, 3), matrix(n, 7), n)
trace = 0
for i in range(n):
    trace += c[i][i]
print(trace)
