function guard(x)
  if x < 0
    error("negative")
  end
  return x
end
print(pcall(guard, -1), pcall(guard, 1), pcall(5), pcall(error), pcall(error, {1}))
print(pcall(load("return 1 +")))
print(load("x = \"open"))
print(pcall(assert, false, "why"), pcall(assert, not))
ok, message = pcall(function_that_is_not_there, 1)
print(1 / 0)
