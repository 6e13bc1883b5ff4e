print("pairs-array:", pairs([10, not, 30]))
print("pairs-mixed:", pairs({10, 20, a = 1}))
print("pairs-order:", pairs({[2] = "b", [10] = "c", [1] = "a", x = "d"}))
print("pairs-empty:", pairs({}), pairs([]))
print("pairs-key-kinds:", pairs({[10] = 0})[1][1] + 1, pairs({"1.5" = 0})[1][1] + 1, pairs({k = 0})[1][1] + 1)
t = {a = 1}
list = pairs(t)
t["b"] = 2
t["a"] = 3
print("pairs-snapshot:", list, len(keys(t)))
ok, message = pcall(pairs)
print("pairs-none:", ok, message)
ok, message = pcall(pairs, [1], [2])
print("pairs-two:", ok, message)
ok, message = pcall(pairs, "abc")
print("pairs-string:", ok, message)
ok, message = pcall(pairs, not)
print("pairs-nil:", ok, message)
print("ipairs-array:", ipairs(["x", "y"]))
print("ipairs-array-to-nil:", ipairs([1, 2, not, 4]))
print("ipairs-table:", ipairs({"a", "b", [4] = "d", k = "k"}))
t = {1, 2, 3, k = 0}
t[2] = not
print("ipairs-table-to-nil:", ipairs(t))
print("ipairs-no-numbers:", ipairs({k = 1}), ipairs({[0] = 1}), ipairs({}), ipairs([]))
t = {k = 0}
for i = 1, 12
  t[i] = i
end
print("ipairs-numeric-order:", len(ipairs(t)), ipairs(t)[2][1], ipairs(t)[12][1])
ok, message = pcall(ipairs)
print("ipairs-none:", ok, message)
ok, message = pcall(ipairs, [1], [2])
print("ipairs-two:", ok, message)
ok, message = pcall(ipairs, 5)
print("ipairs-number:", ok, message)
t = {[9] = "nine", [10] = "ten", z = "last"}
k, v = next(t)
print("next-first:", k, v)
k, v = next(t, k)
print("next-second:", k, v)
k, v = next(t, "9")
print("next-by-text:", k, v)
k, v = next(t, "z")
print("next-end:", k, v, typeOf(next(t, "z")))
print("next-unknown:", next(t, "no such key"), next(t, 11), next(t, true))
k, v = next(t, not)
print("next-nil-is-first:", k, v)
print("next-empty:", next({}), next([]), next({}, not))
k, v = next([5, 6])
print("next-array:", k, v)
k, v = next([5, 6], 1)
print("next-array-second:", k, v)
k, v = next([5, 6], 1.0)
print("next-array-whole-float:", k, v)
k, v = next([5, 6], 0)
print("next-array-zero:", k, v)
print("next-array-outside:", next([5, 6], 2), next([5, 6], 99), next([5, 6], -1), next([5, 6], 2147483647))
print("next-array-no-index:", next([5, 6], "1"), next([5, 6], 0.5), next([5, 6], true))
k, v = next([not])
print("next-nil-element:", k, v)
sum = 0
t = {a = 1, b = 2, c = 3}
k, v = next(t)
while k != not
  sum = sum + v
  k, v = next(t, k)
end
print("next-walk:", sum)
ok, message = pcall(next)
print("next-none:", ok, message)
ok, message = pcall(next, [1], 1, 1)
print("next-three:", ok, message)
ok, message = pcall(next, "abc")
print("next-string:", ok, message)
ok, message = pcall(next, {}, [1])
print("next-bad-key:", ok, message)
