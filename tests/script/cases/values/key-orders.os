@@ the listing of a table's keys is kept, and is never stale
t = {}
for i = 1, 12
  t[i] = i
end
print(keys(t), #t)
t[5] = "replaced"
print(values(t), #t)
erase(t, 12)
erase(t, 5)
print(keys(t), #t)
t[5] = not
print(#t, contains(t, 5))
t["x"] = 1
print(keys(t)[12], #keys(t))
clear(t)
print(keys(t), #t)
t["b"] = 1
t["a"] = 2
print(keys(t), next(t))
table["insert"](t, "first")
print(keys(t), #t)
@@ many tables come and go at the same addresses
wrong = 0
for i = 1, 3000
  local short = {}
  short["k" + i] = i
  if keys(short)[1] != "k" + i
    wrong += 1
  end
end
print(wrong)
@@ 256 live ones, half of them dropped
held = []
for i = 1, 300
  held[i] = {[i] = i, x = 0}
  keys(held[i])
end
for i = 1, 300, 2
  held[i] = not
end
for i = 2, 300, 2
  held[i]["y"] = 1
  if #keys(held[i]) != 3
    wrong += 1
  end
end
print(wrong)
