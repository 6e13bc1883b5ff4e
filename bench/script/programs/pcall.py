def risky(n):
    if n % 3 == 0:
        raise ValueError("three")
    return n
failed = 0
passed = 0
for i in range(1, 300001):
    try:
        value = risky(i)
        passed += 1
    except ValueError:
        failed += 1
print(passed, failed)
