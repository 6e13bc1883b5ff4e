@@ A file that changed is compiled anew, one that did not is the same function.
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

function write(name, text)
  local file = io["open"](name, "w")
  file["write"](text)
  file["close"]()
end
write("made.os", "return 1")
first = loadFile("made.os")
print(first(), first == loadFile("made.os"), runFile("made.os"))
write("made.os", "return 10")
print(runFile("made.os"), first == loadFile("made.os"), first())
write("made.os", "if true")
f, fault = loadFile("made.os")
print(f, why(fault))
write("made.os", "return \"mended\"")
print(runFile("made.os"))
os["remove"]("made.os")
f, fault = loadFile("made.os")
print(f, string["sub"](fault, 1, 28))
write("made.os", "return \"back again\"")
print(runFile("made.os"))
write("runsItself.os", "rounds += 1\nif rounds < 3\nreturn runFile(\"runsItself.os\")\nend\nreturn rounds")
rounds = 0
print(runFile("runsItself.os"))
write("replaced.os", "os[\"remove\"](\"replaced.os\")\nwriteNew()\nlocal x = runFile(\"replaced.os\")\nreturn \"old and \" + x")
function writeNew()
  write("replaced.os", "return \"new\"")
end
print(runFile("replaced.os"))
