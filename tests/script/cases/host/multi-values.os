@@ a multi value in the last position of a native table's entry is taken apart, but for the value of setVar
function two(a, b)
  return a, b
end
function five()
  return 10, 20, 30, 40, 7
end
image = Plush["createImage"](3, 3, 1, 2, 3, 4)
Plush["setPixel"](image, 0, 0, 9, 8, 7, 6)
Plush["setPixel"](image, 1, 1, Plush["getPixel"](image, 0, 0))
r, g, b, a = Plush["getPixel"](image, two(1, 1))
print("pixels:", r, g, b, a)
Ostrel["pushButton"](five())
print("button:", Ostrel["checkButton"](two(15, 35)))
print("sum of a text and a number behind it:", Ostrel["checksum"](two("a", 5)))
ok, message = pcall(Plush["getPixel"], two(image, 1), 1)
print("in the first position:", ok, message)
ok, message = pcall(Plush["createImage"], 1, 2, two(3, 4))
print("too few:", ok, message)
Ostrel["setVar"]("kept", two(1, 2))
print("kept:", kept)
first, second = kept
print("inside:", first, second)
Ostrel["setVar"](two("name", 5))
print("name and value:", name)
Ostrel["setVar"]("whole", 2.5, two(0, 1))
print("datatype:", whole)
ok, message = pcall(add, two(1, 2))
print("a function without a table:", ok, message)
