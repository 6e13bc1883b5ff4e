@@ The same body run in three ways: compiled, statement by statement in a coroutine, and as lines, which is what a
@@ function consists of that a coroutine declares. What it says, and its fault, must be the same.
function rounds(n)
  for round = 1, n
    local rest = round
  end
end
function outcome(f, waits)
  said = ""
  local ok, fault = pcall(drive, f, waits)
  if not ok
    local message = gsub(toString(fault), "re:^OstrelScript error: ", "")
    local head = gsub(message, "re:\n[\\s\\S]*", "")
    said += "-> " + head
  end
  return said
end
function drive(f, waits)
  f()
  rounds(waits)
end
function say(...)
  local a, b = ...
  said += toString(a) + " "
  if b != not
    said += toString(b) + " "
  end
end
function same(name, body)
  local chunk = load("function compiled()\n" + body + "\nend")
  chunk()
  chunk = load("decay function stepped()\n" + body + "\nend")
  chunk()
  chunk = load("decay function declares()\nfunction walked()\n" + body + "\nend\nend")
  chunk()
  declares()
  rounds(2)
  local first = outcome(compiled, 0)
  local second = outcome(stepped, 60)
  kill()
  local third = outcome(walked, 0)
  print(name + ":", first)
  if second != first
    print("  but in a coroutine:", second)
  end
  if third != first
    print("  but as lines:", third)
  end
end

same("if", "if 1\nsay(1)\nend\nif 0\nsay(2)\nelseif \"\"\nsay(3)\nelse\nsay(4)\nend\nif not 1\nsay(5)\nelse\nsay(6)\nend")
same("while", "local n = 0\nwhile n < 3\nn += 1\nlocal m = n\nsay(m)\nend\nsay(n, toString(m))")
same("repeat", "local n = 0\nrepeat\nn += 1\nlocal inner = n\nuntil n == 3\nsay(n, toString(inner))")
same("until sees no local of the body", "local tries = 0\nrepeat\ntries += 1\nlocal done = true\nuntil tries == 2 or done\nsay(tries)")
same("numeric for", "for i = 1, 3\nsay(i)\ni = 7\nend\nsay(i)\nfor i = 3, 1, -2\nsay(i)\nend\nfor i = 2, 1\nsay(i)\nend\nfor i = 1.9, 2.9\nsay(i)\nend")
same("end of the numbers", "for i = 2147483646, 2147483647\nsay(i)\nend")
same("pairs", "for k, v in pairs({b = 1, a = 2})\nsay(k, v)\nend\nfor k in pairs([5])\nsay(k)\nend\nfor k, v, w in pairs([5])\nsay(w)\nend")
same("ipairs", "for i, v in ipairs([5, 6, not, 7])\nsay(i, v)\nend\nfor i, v in ipairs({\"1\" = 8, \"3\" = 9})\nsay(i, v)\nend")
same("entries", "for v in [1, [2, 3]]\nsay(v)\nend\nfor a, b in [[1, 2], 3]\nsay(a, b)\nend\nfor v in []\nsay(v)\nend")
same("what the loop shows is its start", "local a = [1, 2]\nfor i, v in ipairs(a)\npush(a, v)\nsay(v)\nend\nsay(#a)")
same("bytes", "for b in string[\"byte\"](\"abc\", 1, -1)\nsay(b)\nend\nfor b in string[\"byte\"](\"\")\nsay(b)\nend")
same("matches", "for w in string[\"gmatch\"](\"a b\", \"%a\")\nsay(w)\nend\nfor k, v in string[\"gmatch\"](\"a1b2\", \"(%a)(%d)\")\nsay(k, v)\nend")
same("break", "while true\nsay(1)\nfor i = 1, 9\nif i == 2\nbreak\nend\nsay(i)\nend\nbreak\nsay(2)\nend\nrepeat\nbreak\nuntil not 1\nsay(3)")
same("nest", "nest(\"label\")\nlocal x = 1\nsay(x)\nend\nsay(x)\nnest \"other\"()\nsay(2)\nend\nnest\nsay(3)\nend")
same("break leaves a nest", "while true\nnest(\"inside\")\nbreak\nend\nsay(\"never\")\nend\nsay(\"out\")")
same("return", "say(1)\nwhile true\nfor i = 1, 2\nreturn i\nend\nend\nsay(\"never\")")
same("locals", "local a = 1\nif true\nlocal a = 2\nsay(a)\nend\nsay(a)\nlocal b, c = 3\nsay(b, c)\nlocal d\nsay(d)")
same("assignments", "local a, b = 1, 2\na, b = b, a\nsay(a, b)\na += 4\na -= 1\na *= 3\na \\= 2\na %= 5\na ^= 2\nsay(a)\nlocal t\nt[1][\"k\"] = 5\nsay(t)\nlocal s = \"abc\"\ns[2] = \"X\"\nsay(s)")
same("functions", "function inner(p, ...)\nlocal q = ...\nreturn p, q\nend\nlocal a, b = inner(1, 2)\nsay(a, b)\nlocal function ofBlock()\nlocal r = 4\nreturn r\nend\nsay(ofBlock())\nnative function ofDepth()\nlocal r = 5\nreturn r\nend\nsay(ofDepth())")
same("function in a table", "local t = {}\nfunction t[\"f\"](x)\nlocal y = x * 2\nreturn y\nend\nsay(t[\"f\"](4))")
same("a shadowed loop variable", "for i = 1, 2\nlocal i = \"local\"\nsay(i)\nend")
same("stray ends", "say(1)\nuntil\nsay(2)\nelse\nsay(3)\nelseif\nsay(4)")

same("break outside", "say(1)\nbreak")
same("break outside, in a block", "if true\nnest\nbreak\nend\nend")
same("step of nought", "for i = 1, 2, 0\nend")
same("one clause", "for i = 1\nend")
same("four clauses", "for i = 1, 2, 3, 4\nend")
same("left over in a clause", "for i = 1, 2 3\nend")
same("text for a number", "for i = \"x\", 2\nend")
same("no loop name", "for 5 in [1]\nend")
same("a word is a name", "for in in [1]\nsay(in)\nend")
same("a number as loop name", "for 5 = 1, 2\nend")
same("no in", "for v of [1]\nend")
same("no array", "for v in 5\nend")
same("pairs of a number", "for k, v in pairs(5)\nend")
same("ipairs of nothing", "for k, v in ipairs(nothing)\nend")
same("left over behind an iterator", "for v in [1] 2\nend")
same("left over behind if", "if true false\nend")
same("left over behind while", "while true false\nend")
same("left over behind until", "repeat\nuntil true false")
same("until what", "repeat\nuntil")
same("left over behind a statement", "say(1) 2")
same("no such variable", "unheard += 1")
same("no function", "nothing()")
same("no number", "local x = [] - 1")
same("declaration without parameters", "function broken\nend")
same("error", "say(1)\nerror(\"on purpose\")\nsay(\"never\")")
same("error caught", "local ok, message = pcall(error, \"inside\")\nsay(ok, message)\nok, message = pcall(nothing)\nsay(ok, message)")
same("assert", "assert(not 1, \"claimed\")")
