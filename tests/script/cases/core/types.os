function own()
  return 1
end
function pair()
  return 1, 2
end
print("nil:", typeOf(not))
print("missing:", typeOf(neverMade))
print("int:", typeOf(5))
print("float:", typeOf(5.5))
print("string:", typeOf(""))
print("true:", typeOf(true))
print("false:", typeOf(false))
print("array:", typeOf(array()))
print("array-literal:", typeOf([1]))
print("table:", typeOf({}))
print("multi:", typeOf(pair()))
print("function:", typeOf(own))
print("native:", typeOf(typeOf))
print("pointer:", typeOf($1F))
ok, message = pcall(typeOf)
print("none:", ok, message)
ok, message = pcall(typeOf, 1, 2)
print("two:", ok, message)
