t = [3, 1, 2]
table["sort"](t)
function order(a, b)
  return a > b
end
table["sort"](t, order)
table["insert"](t, 2, 9) ; table["insert"](t, 5)
table["remove"](t) ; table["remove"](t, 1)
print(table["concat"](t, "-"), next({a = 1}), keys({a = 1}), values(t), contains(t, 9))
push(t, 4) ; pop(t) ; erase(t, 1) ; clear(t) ; reserve(t, 10)
print(get({a = 1}, "b", 5), set([1], 1, 2), len("abc"), typeOf(t), select(2, 1, 2, 3))
print(string["format"]("%5.2f|%-4d|%x|%s|%q|%c", 1.5, 3, 255, "s", "q", 65))
print(string["sub"]("hello", -3, 4), string["byte"]("ab", 1, 2), string["char"](65, 66), string["rep"]("ab", 3, ","))
print(string["find"]("abc", "b", 1, true), string["lower"]("AB"), string["len"]("x"))
print(math["floor"](1.5), math["ceil"](1.2), math["max"](1, 2.5), math["min"](1, 2), math["abs"](-3), math["sqrt"](4), math["log"](8, 2))
math["randomSeed"](7) ; print(random(10), random(1, 5), random())
print(utf8["len"]("é"), utf8["offset"]("aé", 2), toNumber("ff", 16), toNumber("1.5"), toString(t))
array() ; collectGarbage()
