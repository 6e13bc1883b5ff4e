a = 1 ; b = 2.5 ; c = "text\n\"q\"" ; d = 'x' ; e = true ; f = flase ; g = not ; h = $1F
t = {1, 2, x = 3, "y" = 4, [5] = 6, z : 7,}
u = [1, [2, 3], {}]
t[1] += 2
t["new"]["deep"][3] = u
a, b = b, a
print(a, b, c, d, e, f, g, h, t, u, #u, #c, -a, !e, not e, u == t, "x" + 1 + 2.5 + not)
b = a
b["k"] = 5
c[1] = "T" ; c[9] = "x"
