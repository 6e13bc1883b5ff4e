local a = 1
function show()
  return a, i, p
end
function outer(p)
  local a = 2
  for i = 1, 2
    local b, c
    native d = i
    external e, f = i, p
    print(show(), d, e#0, a#3, p#1)
  end
end
outer("p")
print(a, e, f, d, name#2, name#9)
