sort = table["sort"]
function numbers(count)
  list = []
  for i = 1, count
    push(list, (i * 7919) % count)
  end
  return list
end
function sum(list)
  total = 0
  for k, v in pairs(list)
    total = total + v
  end
  return total
end
function yes(x, y)
  return true
end
function no(x, y)
  return false
end
function chance(x, y)
  return random(2) == 1
end
function notNumbers(x, y)
  return "text"
end
a = numbers(500)
before = sum(a)
sort(a, yes)
print("always-true:", #a, sum(a) == before)
sort(a, no)
print("always-false:", #a, sum(a) == before)
for round = 1, 20
  sort(a, chance)
end
print("by-chance:", #a, sum(a) == before)
sort(a, notNumbers)
print("any-truth:", #a, sum(a) == before)
calls = 0
function failsAtTen(x, y)
  calls = calls + 1
  if calls == 10
    error("tenth call")
  end
  return x < y
end
a = numbers(300)
text = toString(a)
ok, message = pcall(sort, a, failsAtTen)
print("raises:", ok, message)
print("raising-stops:", calls)
print("raising-changes-nothing:", toString(a) == text)
function breaks(x, y)
  calls = calls + 1
  return x < not
end
calls = 0
ok, message = pcall(sort, a, breaks)
print("faults:", ok, calls, toString(a) == text)
t = {3, 1, 2, k = "kept"}
calls = 9
ok, message = pcall(sort, t, failsAtTen)
print("raises-on-table:", ok, message)
print("table-unchanged:", t[1], t[2], t[3], t["k"])
function clearing(x, y)
  clear(a)
  return x < y
end
a = [3, 1, 2]
sort(a, clearing)
print("clears-the-array:", a)
function growing(x, y)
  push(a, 99)
  return x < y
end
a = numbers(100)
sort(a, growing)
print("grows-the-array:", #a, a[1], a[100])
function erasing(x, y)
  clear(t)
  return x < y
end
t = {3, 1, 2, k = "gone"}
sort(t, erasing)
print("clears-the-table:", t[1], t[2], t[3], t["k"], #t)
function nested(x, y)
  sort(a, nestedOrder)
  return x < y
end
function nestedOrder(x, y)
  return x > y
end
a = [1, 3, 2]
sort(a, nested)
print("sorts-inside:", a)
a = [1, 2, 3]
push(a, a)
ok, message = pcall(sort, a)
print("holds-itself:", ok, #a)
sort(a, chance)
print("holds-itself-by-chance:", #a)
clear(a)
function catches(x, y)
  pcall(error, "swallowed")
  return x < y
end
a = numbers(100)
sort(a, catches)
print("swallowed-errors:", a[1], a[50], a[100])
