@@ How break and return travel through blocks of every kind.
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

function breaks(how)
  local log = ""
  while true
    log += "w"
    if how == "if"
      if true
        break
      end
    elseif how == "nest"
      nest
        nest("inner")
          break
        end
      end
    elseif how == "for"
      for i = 1, 3
        log += i
        if i == 2
          break
        end
      end
      log += "F"
      break
    elseif how == "pairs"
      for k, v in pairs([1, 2, 3])
        log += k
        break
      end
      log += "P"
      break
    elseif how == "repeat"
      repeat
        log += "r"
        break
      until false
      log += "R"
      break
    elseif how == "while"
      while true
        log += "v"
        break
      end
      log += "V"
      break
    else
      return log + " returned"
    end
    log += "never"
  end
  return log
end
for k, how in pairs(["if", "nest", "for", "pairs", "repeat", "while", "return"])
  print(how, breaks(how))
end
function returns(how)
  for i = 1, 3
    while true
      repeat
        for k, v in pairs(["x"])
          nest
            if i == 2
              return how, i, k, v
            end
          end
        end
      until true
      break
    end
  end
end
a, b, c, d = returns("deep")
print(a, b, c, d)

@@ without locals no block has a scope of its own, and everything goes the same way
total = 0
for i = 1, 10
  if i % 2 == 0
    for j = 1, 10
      if j > i
        break
      end
      total += 1
    end
  else
    while true
      total += 100
      if total % 3 == 0
        break
      end
      repeat
        total += 1
      until total % 3 == 0
      break
    end
  end
end
print(total)

@@ a break that leaves a function or a text
function lone()
  break
end
function inBranch()
  if true
    nest
      break
    end
  end
end
function hiddenByCall()
  for i = 1, 3
    lone()
  end
end
print(try("lone()"))
print(try("inBranch()"))
print(try("hiddenByCall()"))
print(try("for i = 1, 2\nload(\"break\")()\nend"))
print(try("break"))
print(try("if true\nbreak\nend"))
print(try("for i = 1, 2\nend\nbreak"))
print(try("x = [lone()]"))
print(try("return lone"))

@@ a chunk gives what it returns, wherever that stands
print(load("return 1")(), load("if true\nreturn 2\nend\nreturn 3")(), load("x = 1")(), load("return")())
a, b = load("for i = 1, 2\nreturn i, \"two\"\nend")()
print(a, b)
