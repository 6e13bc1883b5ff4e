local text = string.rep("the quick brown fox 12345 jumps over 678 lazy dogs; ", 8000)
local words = 0
local sum = 0
for word in string.gmatch(text, "%a+") do
  words = words + 1
end
for digits in string.gmatch(text, "%d+") do
  sum = sum + #digits
end
local found = 0
local start = 1
while true do
  local place = string.find(text, "o%a", start)
  if place == nil then
    break
  end
  found = found + 1
  start = place + 1
end
print(words + sum + found)
