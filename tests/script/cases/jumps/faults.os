@@ What jumpTo and nest refuse.
function head(message)
  local text = gsub(message, "re:\n[\\s\\S]*", "")
  return text
end
ok, message = pcall(jumpTo)
print("none:", ok, message)
ok, message = pcall(jumpTo, "a", "b")
print("two:", ok, message)
ok, message = pcall(jumpTo, 1)
print("number:", ok, message)
ok, message = pcall(jumpTo, not)
print("nil:", ok, message)
ok, message = pcall(jumpTo, ["a"])
print("array:", ok, message)
ok, message = pcall(jumpTo, "")
print("empty:", ok, message)
log = ""
nest("here")
  log += "h"
end
print("a refused jump is none:", log)

@@ an unknown label is the fault of the statement that asked for it
function nowhere()
  jumpTo("no such place")
  log += "-"
end
ok, message = pcall(nowhere)
print(ok, message)
print("and forgotten:", log)

@@ it may be caught, and the function called again
function maybe(label)
  jumpTo(label)
  nest("known")
    return "known"
  end
end
a, b = pcall(maybe, "unknown")
print("unknown:", a, head(b))
print("known:", maybe("known"))

@@ a label is found byte for byte
ok, message = pcall(maybe, "Known")
print("case:", ok, head(message))
ok, message = pcall(maybe, "known ")
print("blank:", ok, head(message))

@@ the forms of a block's head
function fault(text)
  local chunk, reason = load(text)
  if chunk != not
    return "none"
  end
  return head(reason)
end
print("brackets:", fault("nest(\"a\")\nend"))
print("in front:", fault("nest \"a\"()\nend"))
print("without:", fault("nest\nend"))
print("a name:", fault("nest(label)\nend"))
print("a number:", fault("nest(1)\nend"))
print("an expression:", fault("nest(\"a\" + \"b\")\nend"))
print("two labels:", fault("nest(\"a\", \"b\")\nend"))
print("no label:", fault("nest()\nend"))
print("no brackets:", fault("nest \"a\"\nend"))
print("empty:", fault("nest(\"\")\nend"))
print("empty in front:", fault("nest \"\"()\nend"))
print("no end:", fault("nest(\"a\")\nx = 1"))
print("no end in a function:", fault("function f()\nnest(\"a\")\nend"))
print("too many ends:", fault("nest(\"a\")\nend\nend"))

@@ an escape in a label is read
log = ""
jumpTo("tab\tbed")
log += "-"
nest("tab\tbed")
  log += "t"
end
print("escape:", log)
