@@ A text that slides in shows one more character on each step.
entry = {text = "aé€", x = 3, y = 4, identifier = "line"}
print("key:", Ostrel["slideStateKey"](entry, 2), Ostrel["slideStateKey"]({x = 1.5}, 7))
for step = 1, 4
    partial, length, progress = Ostrel["stepSlideText"](entry, 2)
    print("step:", partial, length, progress, entry["text2"] == partial)
end
print("state:", OSTREL_SLIDE_PROGRESS["2:line:3:4"], OSTREL_SLIDE_TEXT["2:line:3:4"])
entry["text"] = "other"
print("new-text:", Ostrel["stepSlideText"](entry, 2) ~= not, entry["text2"])
entry["x"] = 9
entry["text"] = "other"
partial, length, progress = Ostrel["stepSlideText"](entry, 2)
print("moved:", partial, length, progress)
entry = {text = "", text2 = "two", x = 0, y = 0}
partial, length, progress = Ostrel["stepSlideText"](entry, 1)
print("second-text:", entry["text"], entry["text2"], partial, length, progress)
entry = {text = 5, text2 = "two", x = 0, y = 0}
partial, length, progress = Ostrel["stepSlideText"](entry, 3)
print("no-string:", entry["text"], partial, length, progress)
entry = {x = 0, y = 0}
partial, length, progress = Ostrel["stepSlideText"](entry, 4)
print("nothing:", "[" + partial + "]", length, progress)
