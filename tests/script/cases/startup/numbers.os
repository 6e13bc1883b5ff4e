round = Ostrel["round"]
print("round:", round(2.4), round(2.6), round(-2.6), round(7), round(3.14159, 2), round(0.26, 1), round(9.9, 0))
print("round-type:", round(2.5) == 2, round(3.5), round(4, 2))
clamp = Ostrel["clamp"]
print("clamp:", clamp(5, 1, 10), clamp(-5, 1, 10), clamp(15, 1, 10), clamp(1, 1, 10), clamp(10, 1, 10))
print("clamp-crossed:", clamp(5, 10, 3), clamp(0, 10, 3), clamp(3, 10, 3))
between = Ostrel["between"]
print("between:", between(5, 1, 10), between(1, 1, 10), between(10, 1, 10), between(0, 1, 10), between(11, 1, 10))
print("between-turned:", between(5, 10, 1), between(1, 10, 1), between(10, 10, 1), between(0, 10, 1), between(11, 10, 1))
print("middle:", Ostrel["middle"](10, 4), Ostrel["middle"](5, 2), Ostrel["middle"](2, 10))
list = {{identifier = "a"}, {identifier = 7}, {name = "x"}, {identifier = "a"}, not, {identifier = "z"}}
findID = Ostrel["findID"]
print("find:", findID(list, "a"), findID(list, 7), findID(list, "z"), findID(list, "7"), findID(list, "none"), findID([], "a"))
