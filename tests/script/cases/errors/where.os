@@ Which line and file a report names when the error rises out of calls, texts and files.
function fails(x)
  return x - "text"
end
function calls(x)
  local y = fails(x)
  return y
end
ok, fault = pcall(calls, 1)
print(fault)
ok, fault = pcall(calls, 2)
print(fault)

@@ behind a call the line of the caller counts again
function fine()
  local a = 1
  return a
end
function after()
  local y = fine() + not
end
ok, fault = pcall(after)
print(fault)
function inHeader()
  for i = fine(), fine() - "text"
  end
end
ok, fault = pcall(inHeader)
print(fault)
function inElement()
  list[fine()][fine()] = 1
end
list = [5]
ok, fault = pcall(inElement)
print(fault)

@@ a function keeps the file in which it was declared
load("function fromText(x)\n\n  return x - \"text\"\nend", "some/where.os")()
ok, fault = pcall(fromText, 1)
print(fault)
load("local f = load(\"return 1 - not\", \"inner.os\")\n\nf()", "outer.os")
ok, fault = pcall(load("local f = load(\"return 1 - not\", \"inner.os\")\n\nf()", "outer.os"))
print(fault)
ok, fault = pcall(load("\n\nfromText(1) + 1", "outer.os"))
print(fault)
ok, fault = pcall(load("\n\nfine() - \"text\"", "outer.os"))
print(fault)

@@ a report is not wrapped in a second one, a bare message is wrapped once
function wraps()
  local ok, fault = pcall(fails, 1)
  error(fault)
end
ok, fault = pcall(wraps)
print(fault)
function nested()
  for i = 1, 2
    while true
      if true
        fails(1)
      end
    end
  end
end
ok, fault = pcall(nested)
print(fault)

@@ a library function's message gets the line that called it, and none where no line did
ok, fault = pcall(len, 5)
print(fault)
function callsLen()
  return len(5)
end
ok, fault = pcall(callsLen)
print(fault)
function callsBack(a, b)
  return a - "text"
end
ok, fault = pcall(table["sort"], [1, 2], callsBack)
print(fault)

@@ faults of a text given to be run
ok, fault = pcall(Ostrel["runScript"], "y = 1\nz = 1 - not")
print(fault)
function runs()
  Ostrel["runScript"]("if true")
end
ok, fault = pcall(runs)
print(fault)
function runsBreak()
  Ostrel["runScript"]("y = 1\nbreak")
end
ok, fault = pcall(runsBreak)
print(fault)
