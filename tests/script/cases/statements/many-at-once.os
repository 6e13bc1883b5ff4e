@@ Sizes: a thousand targets, long chains, many blocks, long lines.
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

targets = ""
values = ""
for i = 1, 1000
  if i > 1
    targets += ", "
    values += ", "
  end
  targets += "list[" + i + "]"
  values += i * 2
end
list = []
load(targets + " = " + values)()
print(len(list), list[1], list[500], list[1000])
load(targets + " = 5")()
print(len(list), list[1], list[2], list[1000])
function many(...)
  return ...
end
load("list = [" + values + "]")()
print(len(list), list[999])
print(try("return many(" + values + ")"))

chain = "if n == 0\nanswer = 0\n"
for i = 1, 500
  chain += "elseif n == " + i + "\nanswer = " + i + " * 2\n"
end
chain += "else\nanswer = \"none\"\nend"
choose = load(chain)
n = 1
choose()
print(answer)
n = 500
choose()
print(answer)
n = 501
choose()
print(answer)

function nestedText(count, opening, closing)
  local text = ""
  for i = 1, count
    text += opening + "\n"
  end
  text += "depth += 1\n"
  for i = 1, count
    text += closing + "\n"
  end
  return text
end
depth = 0
print(try(nestedText(200, "if true", "end") + "return depth"))
print(try(nestedText(200, "for i = 1, 1", "end") + "return depth"))
print(try(nestedText(200, "repeat", "until true") + "return depth"))
print(try(nestedText(200, "nest", "end") + "return depth"))
print(try(nestedText(100, "if true\nlocal x = depth", "end") + "return depth"))

sum = "0"
for i = 1, 2000
  sum += " + " + i
end
print(try("return " + sum))
