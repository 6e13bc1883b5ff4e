@@ State files byte for byte: what is written, what is read, and what is refused.
place = Ostrel["getPath"]() + "../Resources/volatile/"
char = string["char"]
find = string["find"]
function u32(n)
  local low = n % 65536
  local high = (n - low) \ 65536
  return char(low % 256, low \ 256, high % 256, high \ 256)
end
function text(s)
  local size = #s
  return u32(size) + s
end
function bytesOf(path)
  local file = io["open"](path, "rb")
  local all = file["read"](file, "*a")
  file["close"](file)
  return all
end
function write(path, bytes)
  local file = io["open"](path, "wb")
  file["write"](file, bytes)
  file["close"](file)
end
function has(all, part)
  local at = find(all, part, 1, true)
  return at != not
end

@@ what is written
zNil = not
zInt = 258
zNegative = -2
zFloat = 1.0
zString = "ab"
zTrue = true
zFalse = false
zArray = [1, "x"]
zTable = {b = 1, a = true, [10] = not}
function pair()
  local one = 1
  return one, 2
end
zMulti = [pair()]
function zFunction(p, q, ...)
  local sum = p
  return sum
end
zLast = "last"
path = place + "world.state"
print("result:", exportState(path))
all = bytesOf(path)
one = char(1) + u32(1)
two = char(1) + u32(2)
print("header:", string["sub"](all, 1, 4), string["sub"](all, 5, 8) == u32(2))
print("nil:", has(all, text("zNil") + char(0) + text("zInt")))
print("int:", has(all, text("zInt") + char(1, 2, 1, 0, 0) + text("zNegative")))
print("negative:", has(all, text("zNegative") + char(1, 254, 255, 255, 255) + text("zFloat")))
print("float:", has(all, text("zFloat") + char(2, 0, 0, 128, 63) + text("zString")))
print("string:", has(all, text("zString") + char(3) + text("ab") + text("zTrue")))
print("true:", has(all, text("zTrue") + char(5, 1) + text("zFalse")))
print("false:", has(all, text("zFalse") + char(5, 0) + text("zArray")))
print("array:", has(all, text("zArray") + char(6) + u32(2) + one + char(3) + text("x") + text("zTable")))
print("table:", has(all, text("zTable") + char(8) + u32(3) + text("10") + char(0) + text("a") + char(5, 1) + text("b") + one))
print("multi value:", has(all, text("zMulti") + char(6) + u32(1) + char(7) + u32(2) + one + two))
depth = u32(0) + u32(0)
script = Ostrel["getPath"]() + "../Resources/scripts"
name = text("zFunction") + char(9, 1, 1)
at = find(all, name, 1, true)
print("function:", at != not)
rest = string["sub"](all, at + #name + 4)
print("its source:", string["sub"](rest, 1, 4 + #script) == text(script))
rest = string["sub"](rest, 5 + #script)
source = script + "/visual-novel.os"
print("its file:", string["sub"](rest, 1, 4 + #source) == text(source))
rest = string["sub"](rest, 5 + #source)
print("its depth and parameters:", string["sub"](rest, 1, 8) == depth, string["sub"](rest, 9, 22) == u32(2) + text("p") + text("q"))
print("its program:", string["sub"](rest, 27, 32) == "OSBC" + char(60, 0))
function entryAt(start)
  local at = find(all, start, 1, true)
  return at
end
print("in order:", entryAt(text("zNil") + char(0)) < entryAt(text("zString") + char(3)), entryAt(name) < entryAt(text("zLast") + char(3)))
print("natives are no part of it:", has(all, text("print") + char(9)), has(all, text("string") + char(8)))

@@ what is read
function state(entries, version, random)
  return "OSST" + u32(version) + text(random) + entries
end
function reads(bytes)
  write(path, bytes)
  local ok, message = pcall(importState, path)
  if ok
    return message
  end
  return without(message)
end
@@ the message without the folder
function without(message)
  local first, last = find(message, place, 1, true)
  if first == not
    return message
  end
  local before = string["sub"](message, 1, first - 1)
  return before + string["sub"](message, last + 1)
end
print("nothing:", reads(state(u32(0), 2, "")))
print("one:", reads(state(u32(1) + text("made") + char(1) + u32(5), 2, "")), made)
print("version 1:", reads(state(u32(1) + text("made") + char(5, 200), 1, "")), made)
print("raw:", reads(state(u32(1) + text("made") + char(4) + text("abc"), 2, "")), typeOf(made))
print("the last of one name counts:", reads(state(u32(2) + text("made") + one + text("made") + two, 2, "")), made)
print("keys twice:", reads(state(u32(1) + text("made") + char(8) + u32(2) + text("k") + one + text("k") + two, 2, "")), made)
print("a name of any bytes:", reads(state(u32(1) + text("") + one, 2, "")))

@@ a function with a program made by hand: return 7
line = text("return 7") + u32(0) + u32(2) + text("return") + text("7")
code = u32(1) + char(8) + u32(0) + u32(0)
chunks = u32(1) + u32(0) + u32(1) + char(0, 0)
tables = u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0) + u32(0)
program = "OSBC" + char(60, 0) + text("") + text("") + u32(1) + line + code + chunks + tables
function callable(chunk, depthBytes, programBytes)
  return char(9, 0, 1) + u32(chunk) + text("") + text("made.os") + depthBytes + u32(1) + text("p") + text(programBytes)
end
made = not
print("function:", reads(state(u32(1) + text("made") + callable(0, depth, program), 2, "")), made(1))
made = not
print("of version 1, without a depth:", reads(state(u32(1) + text("made") + callable(0, "", program), 1, "")), made())
made = not
print("of any depth:", reads(state(u32(1) + text("made") + callable(0, u32(-1) + u32(-1), program), 2, "")), made())
print("chunk out of range:", reads(state(u32(1) + text("made") + callable(1, depth, program), 2, "")))
print("program with a bad magic:", reads(state(u32(1) + text("made") + callable(0, depth, "OSBD" + program), 2, "")))
print("program cut off:", reads(state(u32(1) + text("made") + callable(0, depth, string["sub"](program, 1, -2)), 2, "")))
print("no program:", reads(state(u32(1) + text("made") + callable(0, depth, ""), 2, "")))
print("program of another version:", reads(state(u32(1) + text("made") + callable(0, depth, "OSBC" + char(9, 0)), 2, "")))

@@ the random generator
words = string["rep"]("1 ", 623) + "1 624"
print("random state:", reads(state(u32(0), 2, words)))
print("no random state:", reads(state(u32(0), 2, "")))
a = random(1000000)
reads(state(u32(0), 2, words))
a = random(1000000)
reads(state(u32(0), 2, words))
print("the same number again:", random(1000000) == a)
print("too few words:", reads(state(u32(0), 2, "1 2 3")))
print("no numbers:", reads(state(u32(0), 2, "abc")))
print("a position outside:", reads(state(u32(0), 2, string["rep"]("1 ", 624) + "625")))
print("a negative word:", reads(state(u32(0), 2, string["rep"]("1 ", 623) + "-1 1")))

@@ what is refused
print("empty:", reads(""))
print("three bytes:", reads("OSS"))
print("bad magic:", reads("OSSU" + u32(2)))
print("bad magic alone:", reads("abcd"))
print("no version:", reads("OSST"))
print("half a version:", reads("OSST" + char(2, 0)))
print("version 0:", reads(state(u32(0), 0, "")))
print("version 3:", reads(state(u32(0), 3, "")))
print("a huge version:", reads("OSST" + char(255, 255, 255, 255)))
print("no random state:", reads("OSST" + u32(2)))
print("random state cut off:", reads("OSST" + u32(2) + u32(100) + "1 2 3"))
print("no count:", reads("OSST" + u32(2) + text("")))
print("no entry:", reads(state(u32(1), 2, "")))
print("name cut off:", reads(state(u32(1) + u32(5) + "ab", 2, "")))
print("no value:", reads(state(u32(1) + text("made"), 2, "")))
for tag in [1, 2, 3, 4, 5, 6, 7, 8, 9]
  print("value cut off:", tag, reads(state(u32(1) + text("made") + char(tag), 2, "")))
end
print("string cut off:", reads(state(u32(1) + text("made") + char(3) + u32(3) + "ab", 2, "")))
print("array cut off:", reads(state(u32(1) + text("made") + char(6) + u32(2) + one, 2, "")))
print("table cut off:", reads(state(u32(1) + text("made") + char(8) + u32(1) + text("k"), 2, "")))
huge = char(255, 255, 255, 255)
for tag in [3, 4, 6, 7, 8]
  print("a huge count:", tag, reads(state(u32(1) + text("made") + char(tag) + huge, 2, "")))
end
print("huge counts in a function:", reads(state(u32(1) + text("made") + char(9, 0, 0) + u32(0) + text("") + text("") + depth + huge, 2, "")))
print("a huge program:", reads(state(u32(1) + text("made") + char(9, 0, 0) + u32(0) + text("") + text("") + depth + u32(0) + huge, 2, "")))
print("tag 10:", reads(state(u32(1) + text("made") + char(10), 2, "")))
print("tag 255:", reads(state(u32(1) + text("made") + char(255), 2, "")))
print("tag in an array:", reads(state(u32(1) + text("made") + char(6) + u32(1) + char(77), 2, "")))
print("trailing:", reads(state(u32(0) + "x", 2, "")))

@@ what was read before a fault stays
made = "old"
made2 = "old"
print("five bytes behind:", reads(state(u32(1) + text("made") + one + "12345", 2, "")), made)
print("second entry cut off:", reads(state(u32(2) + text("made") + two + text("made2") + char(1, 0), 2, "")), made, made2)
print("an entry too few:", reads(state(u32(2) + text("made") + one, 2, "")), made)
print("a huge count of entries:", reads(state(huge + text("made") + two, 2, "")), made)
print("half an array leaves none:", reads(state(u32(1) + text("made") + char(6) + u32(3) + one + one, 2, "")), made)

@@ nesting
function nested(levels, inside)
  local bytes = string["rep"](char(6) + u32(1), levels)
  return u32(1) + text("made") + bytes + inside
end
print("256 deep:", reads(state(nested(256, one), 2, "")), typeOf(made))
print("257 deep:", reads(state(nested(257, one), 2, "")))
print("an empty one at the bottom:", reads(state(nested(256, char(6) + u32(0)), 2, "")))
print("endless:", reads(state(nested(200000, ""), 2, "")))
tables = string["rep"](char(8) + u32(1) + text("k"), 257)
print("tables:", reads(state(u32(1) + text("made") + tables + one, 2, "")))

@@ files that can't be had, and wrong arguments
ok, message = pcall(importState, place + "missing.state")
print("missing:", ok, without(message))
ok, message = pcall(exportState, place + "no such folder/world.state")
print("no folder:", ok, without(message))
ok, message = pcall(exportState, place)
print("a folder:", ok, without(message))
ok, message = pcall(exportState, 5)
print("number:", ok, message)
ok, message = pcall(exportState, not)
print("nil:", ok, message)
ok, message = pcall(exportState, "a", "b")
print("two:", ok, message)
ok, message = pcall(importState)
print("none:", ok, message)
ok, message = pcall(importState, path, path)
print("two:", ok, message)
for wrong in [5, not, true, [[1]], {a = 1}, print]
  ok, message = pcall(importState, wrong)
  print("wrong:", ok, message)
end
