@@ A fault that nothing catches ends the game with its report.
print("before")
function fails(a)
  local b = a - "text"
  return b
end
for i = 1, 2
  print(fails(i))
end
