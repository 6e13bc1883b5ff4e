function risky(n)
  if n % 3 == 0 then
    error("three")
  end
  return n
end
failed = 0
passed = 0
for i = 1, 300000 do
  ok, value = pcall(risky, i)
  if ok then
    passed = passed + 1
  else
    failed = failed + 1
  end
end
print(passed .. " " .. failed)
