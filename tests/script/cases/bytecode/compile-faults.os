@@ What the compiler says of blocks that are not whole, and what it skips.
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

print(try("if true"))
print(try("if true\nelse"))
print(try("if true\nelseif true\nelse"))
print(try("if true\nif true\nend"))
print(try("if true\nwhile true\nelse\nend"))
print(try("while true"))
print(try("while true\nuntil true"))
print(try("for i = 1, 2"))
print(try("for v in []"))
print(try("for whatever"))
print(try("repeat"))
print(try("repeat\nend"))
print(try("repeat\nwhile true\nuntil true"))
print(try("function f()"))
print(try("decay function f()"))
print(try("native function f()"))
print(try("local function f()"))
print(try("nest"))
print(try("nest(\"label\")"))
print(try("nest \"label\"()"))
print(try("nest(label)\nend"))
print(try("nest(\"a\", \"b\")\nend"))
print(try("nest \"a\"\nend"))
print(try("nest()\nend"))
print(try("nest(\"\")\nend"))
print(try("nest \"\"()\nend"))
print(try("x = \"open"))
print(try("if true\nx = 1\nend\nwhile false"))

@@ the first fault in the text is not always the one that stops it: the lines come before the blocks
print(try("while true\nx = 'open"))
print(try("while true\nnest(5)"))

@@ strays
print(try("end\nreturn \"end\""))
print(try("else\nreturn \"else\""))
print(try("elseif\nreturn \"elseif\""))
print(try("until\nreturn \"until\""))
print(try("end end end\nreturn \"whatever follows\""))
print(try("if true\nend\nend\nend\nreturn \"too many\""))
print(try("function f()\nuntil true\nelse\nreturn 5\nend\nreturn f()"))
print(try("while true\nelse\nbreak\nend\nreturn \"else in a loop\""))
print(try("function f()\nreturn 1\nend end\nreturn f()"))

@@ nests
log = ""
print(try("nest\nlog += \"plain \"\nend\nnest(\"a\")\nlog += \"labelled \"\nend\nnest 'b'()\nlog += \"other form\"\nend\nreturn log"))
print(try("for i = 1, 3\nnest\nif i == 2\nbreak\nend\nend\nlog = i\nend\nreturn log"))
print(try("nest\nreturn \"from a nest\"\nend"))
print(try("nest\nbreak\nend"))

@@ empty and blank
print(try(""), try("\n\n"), try("@@ comment"), try("   "), try(";;"))
