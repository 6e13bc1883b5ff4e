function firstLine(text)
  text = toString(text)
  local stop = string["find"](text, "\n", 1, true)
  if stop == not
    return text
  end
  return string["sub"](text, 1, stop - 1)
end

@@ the value of a chunk, or the first line of what is wrong with it
function attempt(text)
  local chunk, why = load(text)
  if chunk == not
    return "rejected: " + firstLine(why)
  end
  local ok, value = pcall(chunk)
  if ok
    return value
  end
  return string["sub"](firstLine(value), 21)
end

calls = ""
function note(name, value)
  calls = calls + name
  return value
end
function traced()
  local seen = calls
  calls = ""
  return "[" + seen + "]"
end
print(note("a", true) or note("b", 1), traced())
print(note("a", false) or note("b", 1), traced())
print(note("a", not) and note("b", 1), traced())
print(note("a", 0) and note("b", 1), traced())
print(note("a", false) or note("b", false) or note("c", 3) or note("d", 4), traced())
print(note("a", 1) and note("b", not) and note("c", 3), traced())
print(note("a", false) and note("b", 1) or note("c", 3), traced())
print(note("a", true) or note("b", 1) and note("c", 3), traced())
print([note("a", true) or note("b", 1), note("c", 2)], traced())
print({x = note("a", false) and note("b", 1), y = note("c", 2)}["y"], traced())
print(true or [note("a", 1), {k = note("b", 2)}, -note("c", 3)], traced())
print(false and note("a", list)[note("b", 1)](note("c", 2)), traced())
print(note("a", 1) + note("b", 2) * note("c", 3), traced())
print(note("a", len)(note("b", "four")), traced())
print(note("a", [5])[note("b", 1)], traced())
print(note("a", 1) < note("b", 2), note("c", 1) == note("d", 2), traced())
print(1 or -"a", 1 or 5(), 1 or not + 1, 0 and 1 / 1, not and nobody()[1]())
print(attempt("return true or )"), attempt("return true or"), attempt("return false and (1"), attempt("return false and [1 2]"), attempt("return true or len(1 2)"))
