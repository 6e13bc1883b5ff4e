@@ `return` in all its forms, lines that are left over, and statements that are no more than an expression.
function why(text)
  text = toString(text)
  local cut = string["find"](text, "\n", 1, true)
  if cut == not
    return text
  end
  return string["sub"](text, 1, cut - 1)
end
function try(text)
  local chunk, fault = load(text)
  if chunk == not
    return "load: " + why(fault)
  end
  local ok, result = pcall(chunk)
  if ok
    return result
  end
  return why(result)
end

function none()
  return
end
function one()
  return 1
end
function several()
  return 1, "two", [3]
end
function spread()
  return 0, several()
end
function inner()
  return several(), 0
end
function handed()
  return several()
end
function nilFirst()
  return not, 2
end
function word()
  return not
end
function early(n)
  if n == 1
    return "first"
  end
  while n == 2
    return "second"
  end
  repeat
    if n == 3
      return "third"
    end
  until true
  for i = n, 4
    if i == 4
      return "fourth"
    end
  end
  for k, v in pairs([5])
    if v == n
      return "fifth"
    end
  end
  nest("inside")
    return "last"
  end
end
print(none(), one(), typeOf(several()), word())
a, b, c = several()
print(a, b, c)
a, b, c, d, e = spread()
print(a, b, c, d, e)
a, b, c = inner()
print(typeOf(a), b, c)
a, b, c = handed()
print(a, b, c)
a, b = nilFirst()
print(a, b)
print(early(1), early(2), early(3), early(4), early(5), early(6))
function unreached()
  return "reached"
  print("never")
end
print(unreached())
function nestedLoops()
  for i = 1, 3
    for j = 1, 3
      while true
        if i * j == 4
          return i, j
        end
        break
      end
    end
  end
end
a, b = nestedLoops()
print(a, b)
function falls()
  if true
    a = 1
  end
end
print(falls())

print(try("return 1 2"))
print(try("return 1, 2 3"))
print(try("return 1,"))
print(try("return , 1"))
print(try("return (1"))
print(try("return 1 +"))
print(try("return"))
print(try("return not"))
print(try("return 1; print(\"never\")"))
print(try("return [1, 2][2]"))

@@ a text ends where it returns, however deep that stands
print(try("for i = 1, 5\nwhile true\nreturn i\nend\nend\nreturn \"never\""))

@@ a call runs before what is left behind it is noticed
ran = 0
function counts()
  ran += 1
  return ran
end
print(try("counts() stray"), ran)
print(try("counts() + 1 stray"), ran)
print(try("x = counts() stray"), ran)
print(try("counts()()"), ran)
print(try("alpha beta"))
print(try("5"))
print(try("\"text\""))
print(try("counts"))
print(try("counts() == 5"), ran)
print(try("not"))
print(try("["))
print(try(")"))
print(try("? 1"))
print(try("break stray\n"))
print(try("end stray\nreturn \"strays are skipped\""))
print(try("else\nelseif 1 <\nuntil )\nend\nreturn \"whatever they hold\""))
print(try("if false\nstray stray\nend\nreturn \"not reached, not looked at\""))
