@@ Every class of the short patterns, alone and in a set: which of the 256 bytes it matches.
allBytes = ""
for code = 0, 255
  allBytes += string["char"](code)
end
@@ The bytes that match, as ranges of their codes.
function ranges(pattern)
  local text = ""
  local first = -1
  for code = 0, 256
    local hit = false
    if code < 256
      hit = string["match"](string["char"](code), pattern) != not
    end
    if hit
      if first < 0
        first = code
      end
    elseif first >= 0
      if text != ""
        text += " "
      end
      text += first
      if first < code - 1
        text += "-" + (code - 1)
      end
      first = -1
    end
  end
  return text
end
for letter in ["a", "A", "d", "D", "l", "L", "u", "U", "s", "S", "w", "W", "x", "X", "p", "P", "%"]
  print("%" + letter + ":", ranges("%" + letter))
end
for letter in ["a", "d", "l", "u", "s", "w", "x", "p", "%"]
  print("[%" + letter + "]:", ranges("[%" + letter + "]"))
end
@@ a negated class at the start of a set negates the whole set; D, S and W are classes of their own
for letter in ["A", "D", "L", "U", "S", "W", "X", "P"]
  print("[%" + letter + "]:", ranges("[%" + letter + "]"))
end
print("several:", ranges("[%d%l_]"))
print("negated class behind others:", ranges("[0-9%A]"))
print("the negation holds for what follows:", ranges("[%A0-9]"))
print("own class behind others:", ranges("[a%D]") == ranges("%D"))
print("range:", ranges("[a-c]"), ranges("[%w-]") == ranges("[-%w]"))
print("an escaped dash is a dash, which makes a range:", ranges("[a%-c]"))
print("escaped bracket:", ranges("[%]]"), ranges("[%[]"))
print("escaped caret:", ranges("[%^a]"))
print("a caret is no negation:", ranges("[^x]"), ranges("[x^]"), ranges("[^^]"))
print("negated by an expression:", ranges("re:[^x]"))
print("a backslash in a set:", ranges("[\\]"), ranges("[\\d]"))
print("special bytes in a set:", ranges("[.*+?$(){}|]"))
print("percent at the end:", ranges("%"))
print("a percent alone in a set:", string["match"]("5%", "[%%]"))
print("dot:", ranges("."))
left = gsub(allBytes, ".", "")
print("left by the dot:", #allBytes, string["byte"](left, 1), string["byte"](left, 2), #left)
