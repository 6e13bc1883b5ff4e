sort = table["sort"]
function sorted(list)
  sort(list)
  return list
end
function descending(x, y)
  return x > y
end
print("ints:", sorted([3, 1, 2, -5, 10]))
print("floats:", sorted([2.5, -1.0, 0.25]))
print("mixed-numbers:", sorted([2, 1.5, -1, true]))
print("strings:", sorted(["pear", "Apple", "fig", "10", "9", ""]))
print("prefixes:", sorted(["abc", "ab", "a", "b"]))
print("equal-elements:", sorted([2, 1, 2, 1, 2]))
print("few:", sorted([]), sorted([{}]))
a = [3, 1, 2]
b = a
print("in-place:", sort(a), b)
sort(a, descending)
print("comparison:", b)
sort(a, not)
print("nil-comparison:", b)
t = {3, 1, 2, k = "kept"}
sort(t)
print("table:", t[1], t[2], t[3], t["k"], len(keys(t)))
t = {k = 0, [1] = "c", [2] = "a", [4] = "B", [5] = "A"}
sort(t)
print("table-to-the-hole:", t[1], t[2], t[3], t[4], t[5])
t = {k = 0}
for i = 1, 12
  t[i] = 13 - i
end
sort(t)
print("table-numeric-order:", t[1], t[2], t[10], t[12])
ok, message = pcall(sort, [1, "a"])
print("incomparable:", ok, string["sub"](message, 1, 15))
ok, message = pcall(sort, [not, not])
print("nils:", ok, message)
ok, message = pcall(sort, [[1], [2]])
print("arrays:", ok, message)
ok, message = pcall(sort, [2, 1], 5)
print("no-function:", ok, message)
sort([1], 5)
print("comparison-unused:", "ok")
ok, message = pcall(sort)
print("none:", ok, message)
ok, message = pcall(sort, [1], descending, 1)
print("three:", ok, message)
ok, message = pcall(sort, "cab")
print("string:", ok, message)
ok, message = pcall(sort, not)
print("nil:", ok, message)
@@ long lists of every shape, against a plain check
function isSorted(list)
  for i = 2, #list
    if list[i - 1] > list[i]
      return false
    end
  end
  return true
end
function ascending(x, y)
  return x < y
end
math["randomSeed"](1)
good = 0
for round = 1, 12
  list = []
  for i = 1, 400
    if round == 1
      push(list, i)
    elseif round == 2
      push(list, 400 - i)
    elseif round == 3
      push(list, 7)
    elseif round == 4
      push(list, i % 2)
    elseif round == 5
      push(list, random())
    elseif round == 6
      push(list, "k" + random(50))
    elseif round == 7
      push(list, math["abs"](200 - i))
    else
      push(list, random(-100, 100))
    end
  end
  if round > 9
    sort(list, ascending)
  else
    sort(list)
  end
  if isSorted(list) and #list == 400
    good = good + 1
  end
end
print("long:", good)
