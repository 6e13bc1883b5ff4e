@@ The word book replaces the two functions. Its words are patterns, each applied to what the one before left.
before = Ostrel["translateAnglish"]
beforeProcess = Ostrel["processAnglish"]
registerAnglish()
print("replaced:", before ~= Ostrel["translateAnglish"], beforeProcess ~= Ostrel["processAnglish"])
print("words:", Ostrel["translateAnglish"]("12 windows and 1 window"), "[" + Ostrel["translateAnglish"]("") + "]")
startTag = "tag"
endTag = "gat"
process = Ostrel["processAnglish"]
print("process:", process("no marks, 1 window"), process("window tagwindowgat 1 tag22gat"), process("gat tag"))
