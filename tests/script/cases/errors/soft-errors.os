@@ Under a protected call an error stops everything on its way, in whatever place it rose.
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

function fail(text)
  error(text)
  passed += "fail "
  return text
end
function value()
  return 1
end
function use(...)
  passed += "called "
  return 1
end
passed = ""
places = 0
function place(text)
  places += 1
  passed = ""
  local chunk, fault = load(text + "\npassed += \"next\"")
  if chunk == not
    print(text, fault)
    return
  end
  local ok, fault = pcall(chunk)
  if ok or fault != "soft" or passed != ""
    print("went on:", text, ok, why(fault), passed)
  end
end
place("fail(\"soft\")")
place("error(\"soft\")")
place("assert(false, \"soft\")")
place("x = fail(\"soft\")")
place("x = fail(\"soft\") + use()")
place("x = use(fail(\"soft\"))")
place("x = use(1, fail(\"soft\"), use())")
place("use(fail(\"soft\"), 1)")
place("x = [use, fail(\"soft\"), use()]")
place("x = {a = fail(\"soft\"), b = use()}")
place("x = {[fail(\"soft\")] = use()}")
place("x = {fail(\"soft\"), use()}")
place("x = (fail(\"soft\"))")
place("x = fail(\"soft\")[use()]")
place("x = [1][fail(\"soft\")]")
place("x = not fail(\"soft\") or use()")
place("x = !fail(\"soft\")")
place("x = -fail(\"soft\")")
place("x = #fail(\"soft\")")
place("x = fail(\"soft\") and use()")
place("x = fail(\"soft\") or use()")
place("x = true and fail(\"soft\")")
place("x = 1 < fail(\"soft\")")
place("x = fail(\"soft\") == use()")
place("x = 1 - fail(\"soft\")")
place("x = \"a\" + fail(\"soft\") + use()")
place("x = fail(\"soft\")() + use()")
place("x = fail(\"soft\") stray")
place("x, y = fail(\"soft\"), use()")
place("x, y = 1, fail(\"soft\")")
place("list[fail(\"soft\")] = use")
place("list[1][fail(\"soft\")][use()] = 1")
place("list[1], list[fail(\"soft\")], list[use()] = 1, 2, 3")
place("x = 1\nx += fail(\"soft\")")
place("list = [1]\nlist[fail(\"soft\")] += 1")
place("list = [1]\nlist[use()] += fail(\"soft\")")
place("missing += fail(\"soft\")")
place("local x = fail(\"soft\")")
place("native x = fail(\"soft\")")
place("external x = fail(\"soft\")")
place("if fail(\"soft\")\nuse()\nelse\nuse()\nend")
place("if false\nelseif fail(\"soft\")\nuse()\nelseif use()\nelse\nuse()\nend")
place("if [fail(\"soft\")]\nuse()\nelse\nuse()\nend")
place("while fail(\"soft\")\nuse()\nend")
place("while !fail(\"soft\")\nuse()\nend")
place("repeat\nuntil fail(\"soft\")")
place("repeat\nfail(\"soft\")\nuntil use()")
place("repeat\nuntil [fail(\"soft\")][1] or use()")
place("for i = fail(\"soft\"), use()\nuse()\nend")
place("for i = 1, fail(\"soft\"), use()\nuse()\nend")
place("for i = 1, 2, fail(\"soft\")\nuse()\nend")
place("for i = [fail(\"soft\")], use()\nuse()\nend")
place("for i = 1, 3\nfail(\"soft\")\nuse()\nend")
place("for k, v in pairs(fail(\"soft\"))\nuse()\nend")
place("for k, v in ipairs([fail(\"soft\")])\nuse()\nend")
place("for v in fail(\"soft\")\nuse()\nend")
place("for v in [1, 2]\nfail(\"soft\")\nuse()\nend")
place("nest\nfail(\"soft\")\nuse()\nend")
place("return fail(\"soft\")")
place("return fail(\"soft\"), use()")
place("return use, fail(\"soft\")")
place("return [fail(\"soft\")], 1")
place("function list[fail(\"soft\")]()\nend")
place("function list[1][fail(\"soft\")][use()]()\nend")
place("load(\"fail('soft')\\nuse()\")()\nuse()")
place("function f()\nreturn fail(\"soft\")\nend\nx = f() + use()")
place("function f(x)\nif fail(\"soft\")\nerror(\"other\")\nend\nreturn use()\nend\nx = f() + use()")
place("function f(x)\nif x\nerror(\"soft\")\nend\nreturn use()\nend\nx = f(1) + use()")
place("function f(x)\nlocal y = x\nfail(\"soft\")\nuse()\nend\nfor i = 1, 2\nwhile true\nf()\nuse()\nend\nend")
place("x = string[\"rep\"](fail(\"soft\"), use())")
place("x = \"abc\"[\"sub\"](fail(\"soft\"), use())")
place("function f(a, b)\nfail(\"soft\")\nuse()\nend\ntable[\"sort\"]([3, 2, 1], f)\nuse()")
place("x = pcall(use, fail(\"soft\"))")
place("fail(\"soft\")\nfail(\"second\")")
place("fail(\"soft\") + fail(\"second\")")
print(places, "places")

@@ the first error wins, also over a fault that comes while it is pending
function failsTwice()
  local x = [fail("first"), fail("second")]
  return 1 + not
end
ok, fault = pcall(failsTwice)
print(ok, fault)

@@ nothing is left pending
for i = 1, 3
  ok, fault = pcall(fail, "round " + i)
  print(ok, fault, pcall(value) == 5)
end
ok, result = pcall(value)
print(ok, result)
