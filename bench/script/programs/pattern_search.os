text = string["rep"]("the quick brown fox 12345 jumps over 678 lazy dogs; ", 8000)
words = 0
sum = 0
for word in string["gmatch"](text, "%a+")
  words += 1
end
for digits in string["gmatch"](text, "%d+")
  sum += #digits
end
found = 0
start = 1
while true
  place = string["find"](text, "o%a", start)
  if place == not
    break
  end
  found += 1
  start = place + 1
end
print(words + sum + found)
