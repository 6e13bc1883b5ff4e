@@ numbers and strings are copied, containers are shared
a = "abc"
b = a
b[1] = "X"
print(a, b)
list = [1, 2]
other = list
other[1] = 9
push(other, 3)
print(list, #list)
map = {k = 1}
copy = map
copy["new"] = 2
print(map["new"])
@@ an array that becomes a table does so in one place
other["name"] = 4
print(list, keys(other))
list[1] = 100
print(other[1], list[1])
holder = [list, list]
holder[1]["k"] = 0
print(keys(holder[1]), holder[2])
outer = [[1]]
twin = outer
outer["x"] = 0
outer[1][1] = "shared"
print(twin)
function change(container, number, text)
  container[1] = "changed"
  number += 1
  text += "!"
end
n = 5
s = "s"
change(list, n, s)
print(list, n, s)
@@ growing fills the gap with nil, through every name
grown = []
alias = grown
grown[4] = 1
print(alias, #alias)
missing[3] = 1
named["k"] = 1
zero[0] = 1
half[1.5] = 1
whole[2.0] = 1
print(missing, named, zero, half, whole)
nested[2]["k"][1] = "deep"
print(nested)
self = [1]
self[1] = self
self = self[1][1]
print(self == self[1], #self)
self[1] = not
@@ a deep chain is dropped without harm
chain = []
for i = 1, 200000
  chain = [chain]
end
ok, why = pcall(len, chain)
print(ok, why)
chain = not
print("dropped")
