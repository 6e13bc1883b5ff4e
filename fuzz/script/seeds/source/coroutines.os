decay function count(n)
  for i = 1, n
    step = i
  end
  nest("again")
    rounds = (rounds or 0) + 1
    if rounds < 3
      jumpTo("again")
    end
  end
end
count(3)
a = 1
a = 2
nest("here")
  a += 1
  if a < 6
    jumpTo("here")
  end
end
kill()
count(2)
b = 1
