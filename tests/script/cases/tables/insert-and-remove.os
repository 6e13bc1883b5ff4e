insert = table["insert"]
remove = table["remove"]
a = [1, 2, 3]
b = a
print("insert-result:", insert(a, 4), b)
insert(a, 1, "first")
insert(a, 3, "mid")
print("insert-places:", b)
insert(a, 100, "x")
insert(a, 0, "y")
insert(a, -7, "z")
print("insert-held-to-ends:", b)
c = [1, 2]
insert(c, 2.9, "float")
insert(c, true, "bool")
print("insert-position-kinds:", c)
c = []
insert(c, 2147483647, "x")
print("insert-empty:", c)
insert(c, c)
print("insert-itself:", c)
clear(c)
t = {k = "kept"}
insert(t, "b")
insert(t, 1, "a")
insert(t, 99, "c")
print("insert-table:", t[1], t[2], t[3], t["k"], #t, t[99])
t = {k = 0, [1] = "a", [2] = "b", [4] = "d"}
insert(t, "c")
print("insert-fills-the-hole:", t[3], t[4], #t)
t = {k = 0, [1] = "a", [3] = "c"}
insert(t, 1, "z")
print("insert-moves-up-to-the-hole:", t[1], t[2], t[3], #t)
t = {k = 0}
for i = 1, 12
  insert(t, 1, i)
end
print("insert-keeps-numeric-order:", t[1], t[2], t[11], t[12], #t, len(keys(t)))
ok, message = pcall(insert)
print("insert-none:", ok, message)
ok, message = pcall(insert, [1])
print("insert-one:", ok, message)
ok, message = pcall(insert, [1], 1, 2, 3)
print("insert-four:", ok, message)
ok, message = pcall(insert, "abc", "d")
print("insert-string:", ok, message)
ok, message = pcall(insert, not, 1)
print("insert-nil:", ok, message)
ok, message = pcall(insert, [1], "x", 2)
print("insert-text-position:", ok, message)
ok, message = pcall(insert, [1], not, 2)
print("insert-nil-position:", ok, message)
a = ["a", "b", "c", "d"]
b = a
print("remove-last:", remove(a), b)
print("remove-first:", remove(a, 1), b)
print("remove-outside:", remove(a, 0), remove(a, 3), remove(a, -1), remove(a, 2147483647), b)
print("remove-nil-position:", remove(a, not), b)
print("remove-float-position:", remove(a, 1.9), b)
print("remove-empty:", remove(a), remove(a, 1), remove({}), remove({k = 1}))
t = {"a", "b", "c", k = "kept"}
print("remove-table:", remove(t, 1), t[1], t[2], t[3], #t, t["k"])
print("remove-table-last:", remove(t), t[1], #t)
print("remove-table-outside:", remove(t, 2), remove(t, 0), #t)
t = {k = 0, [1] = "a", [2] = "b", [4] = "d"}
print("remove-up-to-the-hole:", remove(t, 1), t[1], t[2], t[4], #t)
t = {k = 0}
for i = 1, 11
  t[i] = i
end
print("remove-keeps-numeric-order:", remove(t, 2), t[2], t[9], t[10], t[11], #t)
ok, message = pcall(remove)
print("remove-none:", ok, message)
ok, message = pcall(remove, [1], 1, 1)
print("remove-three:", ok, message)
ok, message = pcall(remove, "abc")
print("remove-string:", ok, message)
ok, message = pcall(remove, [1], "1")
print("remove-text-position:", ok, message)
