n = 0
while n < 20
  n += 1
  if n == 5
    n = 7
  elseif n > 15
    break
  else
    m = n
  end
  repeat
    m -= 2
  until m < 3
  for i = 1, 4
    total = (total or 0) + i
    if total > 50
      break
    end
  end
end
return total, n, m
