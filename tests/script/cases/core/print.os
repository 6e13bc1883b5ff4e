print()
print("one")
print("a", 1, 2.5, true, false, not, [1, "x"], print)
print("", "")
print("two\nlines")
result = print("result")
print("returns:", result)
kind = typeOf(print("inner"))
print("type:", kind)
function pair()
  return 1, 2
end
print("multi:", pair())
