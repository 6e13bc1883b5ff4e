@@ a list that holds itself is emptied afterwards: values are counted, and a circle would never be let go of
concat = table["concat"]
print("plain:", concat([1, 2, 3]))
print("separator:", concat([1, 2], "-"))
print("kinds:", concat([1, 2.5, "x", true, not, [1]], ","))
print("one:", concat(["only"], ","))
print("empty:", "[" + concat([], ",") + concat({}, ",") + "]")
print("from:", concat(["a", "b", "c", "d"], ",", 3))
print("from-to:", concat(["a", "b", "c", "d"], ",", 2, 3))
print("from-only-one:", concat(["a", "b", "c"], ",", 2, 2))
print("reversed:", "[" + concat(["a", "b"], ",", 2, 1) + "]")
print("outside:", concat(["a", "b"], ",", -5, 99))
print("far-outside:", concat(["a", "b"], ",", -2147483647, 2147483647))
print("past-end:", "[" + concat(["a"], ",", 2) + "]")
print("float-positions:", concat(["a", "b", "c"], ",", 1.9, 2.9))
print("nil-arguments:", concat(["a", "b"], not, not, not))
print("separator-kinds:", concat([1, 2], 0), concat([1, 2], 1.5))
print("table:", concat({"a", "b", k = "x"}, ","))
print("table-to-the-hole:", concat({k = 0, [1] = "a", [2] = "b", [4] = "d"}, ","))
t = {k = 0}
for i = 1, 11
  t[i] = i
end
print("table-numeric-order:", concat(t, " "))
a = ["x"]
push(a, a)
print("inside-itself:", concat(a, ","))
clear(a)
list = []
for i = 1, 1000
  push(list, i)
end
ok, message = pcall(concat, list, string["rep"]("x", 2000000))
print("too-large:", ok, message)
ok, message = pcall(concat)
print("none:", ok, message)
ok, message = pcall(concat, [1], "", 1, 2, 3)
print("five:", ok, message)
ok, message = pcall(concat, "abc")
print("string:", ok, message)
ok, message = pcall(concat, not)
print("nil:", ok, message)
ok, message = pcall(concat, [1], "", "1")
print("text-position:", ok, message)
