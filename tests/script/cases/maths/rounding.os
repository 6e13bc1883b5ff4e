floor = math["floor"]
ceil = math["ceil"]
abs = math["abs"]
huge = 2.0 ^ 100
print("floor:", floor(1.5), floor(-0.5), floor(-1.5), floor(2.0), floor(7))
print("ceil:", ceil(1.2), ceil(-0.5), ceil(-1.5), ceil(2.0), ceil(7))
print("bool:", floor(true), ceil(false), abs(true))
print("int-result:", floor(1.5) + 1)
print("beyond-int:", floor(huge), floor(0 - huge), ceil(huge))
infinite = huge * huge
print("infinite:", floor(infinite), ceil(0 - infinite))
unknown = infinite - infinite
print("not-a-number:", floor(unknown), ceil(unknown))
print("abs:", abs(-3), abs(3), abs(0))
print("abs-float:", abs(-2.5), abs(2.5), abs(-2.0))
smallest = -2147483647 - 1
print("abs-smallest:", abs(smallest))
ok, message = pcall(floor)
print("floor-none:", ok, message)
ok, message = pcall(floor, 1, 2)
print("floor-two:", ok, message)
ok, message = pcall(floor, "1")
print("floor-text:", ok, message)
ok, message = pcall(floor, not)
print("floor-nil:", ok, message)
ok, message = pcall(ceil)
print("ceil-none:", ok, message)
ok, message = pcall(ceil, 1, 2)
print("ceil-two:", ok, message)
ok, message = pcall(ceil, [1])
print("ceil-array:", ok, message)
ok, message = pcall(abs)
print("abs-none:", ok, message)
ok, message = pcall(abs, 1, 2)
print("abs-two:", ok, message)
ok, message = pcall(abs, "-1")
print("abs-text:", ok, message)
