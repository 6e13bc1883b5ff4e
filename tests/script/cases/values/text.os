@@ how every type of value prints
function pair()
  return 1, 2
end
print(not, 0, -7, 2147483647, 1.5, -0.25, 100000000.0)
print("", "a b", 'it\'s', true, false, tre, flse)
print($0, $FF, $abcdef0123)
print([], {}, [1], {k = 1}, [1, [2, {k = [3]}]], ["a, b", not])
print(pair(), [pair()], print, [len])
print(1 / 3, 2 / 3, 16777217.0, 0.0000004, 0.0000006)
big = 340282346638528859811704183484516925440 * 10
print(big, -big, [big])
self = [1]
self[2] = self
print(self)
map = {}
map["me"] = map
print(map, [map, map])
self[2] = not
map["me"] = not
print(self, map)
deep = []
for i = 1, 30
  deep = [deep]
end
print(deep)
print(toString(1.5) + toString(not) + toString([1]) + toString({}))
