@@ A recursion without an end.
function again(n)
  return again(n + 1) + 1
end
again(0)
