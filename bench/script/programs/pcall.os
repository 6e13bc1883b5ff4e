function risky(n)
  if n % 3 == 0
    error("three")
  end
  return n
end
failed = 0
passed = 0
for i = 1, 300000
  ok, value = pcall(risky, i)
  if ok
    passed += 1
  else
    failed += 1
  end
end
print(passed, failed)
