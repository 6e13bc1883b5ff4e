function show(value)
  return typeName(value) + " " + value
end
function typeName(value)
  if typeOf(value) != "number"
    return typeOf(value)
  end
  if toString(value)["find"](".", 1, true) == not and toString(value)["find"]("n", 1, true) == not
    return "int"
  end
  return "float"
end
big = 340282346638528859811704183484516925440 * 10
least = 0 - 2147483647 - 1
print(show(2 + 3), show(2 + 3.0), show(true + 1), show(false + 0.5), show(2147483647 + 1))
print(show(2 - 3), show(2 - 3.5), show(least - 1), show(true - true), show(-least))
print(show(65536 * 65536), show(3 * 0.5), show(true * 5), show(least * -1))
print(show(4 / 2), show(7 / 2), show(-7 / 2), show(true / 2), show(1 / 3), show(1 / big))
print(show(7 \ 2), show(-7 \ 2), show(7 \ -2), show(7.9 \ 2.9), show(true \ 1), show(least \ -1), show(big \ 1), show(-big \ 2))
print(show(7 % 3), show(-7 % 3), show(7 % -3), show(least % -1), show(7.5 % 2), show(-7.5 % 2), show(7 % 2.5), show(5 % big))
print(show(2 ^ 10), show(2 ^ 0), show(0 ^ 0), show(2 ^ 30), show(2 ^ 31), show((-2) ^ 31), show((-3) ^ 3))
print(show(46340 ^ 2), show(46341 ^ 2), show(2 ^ -1), show(1 ^ -1), show(2.0 ^ 3), show(2 ^ 0.5), show(true ^ 2), show(10 ^ 300))
print(show(3 <- 2), show(2 <- 3), show(0 <- 5), show(1 <- 5), show(3 <- 0), show(2 <- 0), show(2.0 <- 2), show(2 <- 0.5), show(true <- 5))
print(show(4 <- -1000), show(5 <- -1000), show(6 <- -1000), show(2147483647 <- -1000), show(2147483647 <- 0.5))
print(show(2 -> 3), show(3 -> 2), show(5 -> 0), show(5 -> 1), show(0 -> 2), show(0 -> 3), show(1 -> 2147483647), show(0.0000001 -> 2147483647))
print(show(2147483648), show(-2147483648), show(2147483647), show(16777217.0), show(0.1 + 0.2), show(-0.0))
print(1 == 1.0, true == 1, false == 0.0, 16777217 == 16777216.0, "1" == 1, not == false, not == nobody, [] == [], "a" != "b")
print(1 < 1.5, true > false, 2 >= true, "Z" < "a", "ab" < "abc", "" < "a", "10" < "9", big > 2147483647, -big < least)
print(-5, - -5, -true, -false, -1.5, +5, +"a", -least)
print("a" + 1, 1 + "a", "a" + 1.5, "a" + not, not + "a", "a" + true, "a" + [1], {} + "a", "a" + $ff, "" + "")
