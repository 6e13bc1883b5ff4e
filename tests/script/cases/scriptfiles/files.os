@@ Files: what runs, what comes back, how relative names resolve while a file runs, and every fault.
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

print(runFile("../Resources/data/one.os"), runFile("empty.os"))
a, b = runFile("sub/two.os")
print(a, b)
counted = 0
print(runFile("counts.os"), runFile("counts.os"), loadFile("counts.os")())
f = loadFile("counts.os")
print(typeOf(f), f(), f(), f == loadFile("counts.os"), f == loadFile("./counts.os"))
ok, fault = pcall(f, 1)
print(ok, fault)
print(runFile("sub/beside.os"), later())
print(runFile("sub/roots.os"), runFile("up.os"))
seen = "carriage"
print(runFile("carriage.os"))
function sees(seen)
  return runFile("carriage.os")
end
print(sees("the caller's frame"))
function hides()
  local seen = "hidden"
  return runFile("carriage.os")
end
print(hides())
print(runFile("names.os"), hidden, globalFromFile, fromFile(), atTop)
print(readScript("data/notes.txt"))
print(readScript("empty.os") == "")

@@ faults
function place(text)
  return string["find"](text, "/bin/../Resources/scripts/", 1, true) != not
end
f, fault = loadFile("no/such.os")
print(f, string["sub"](fault, 1, 28), place(fault), string["sub"](fault, -10))
f, fault = loadFile("/no/such.os")
print(f, fault)
f, fault = loadFile("..")
print(f, string["sub"](fault, 1, 28))
f, fault = loadFile("")
print(f, fault)
f, fault = loadFile("broken.os")
print(f, fault)
f, fault = loadFile("open.os")
print(f, fault)
f, fault = loadFile("corrupt.os")
print(f, fault)
print(try("runFile(\"/no/such.os\")"))
print(try("runFile(\"broken.os\")"))
print(try("runFile(\"open.os\")"))
print(try("runFile(\"fails.os\")"))
print(try("runFile(\"raises.os\")"))
print(try("runFile(\"breaks.os\")"))
print(try("readScript(\"/no/such.txt\")"))
print(try("readScript(\"..\")"))
print(try("loadFile()"), try("loadFile(5)"), try("loadFile([])"))
print(try("runFile()"), try("runFile(5)"), try("runFile(not)"))
print(try("readScript()"), try("readScript(5)"), try("readScript({})"))
ok, fault = pcall(runFile, "fails.os")
print(fault)
ok, fault = pcall(runFile, "open.os")
print(fault)
ok, fault = pcall(runFile, "/no/such.os")
print(fault)
function runs()
  return runFile("/no/such.os")
end
ok, fault = pcall(runs)
print(fault)
