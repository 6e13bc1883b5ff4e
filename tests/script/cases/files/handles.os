@@ the functions keep the file open, and each file keeps to itself
f = io["open"]("data/two.txt")
reader = f["read"]
f = not
print("function-keeps-the-file:", reader(), reader("*l"), reader())
f = io["open"]("data/two.txt")
g = io["open"]("data/two.txt")
print("own-file-wins:", f["read"](g), f["read"](g), g["read"](f))
print("own-file-is-closed:", f["close"](g), f["close"](), g["close"](g))
h = io["open"]("data/two.txt")
h["read"] = not
print("table-is-the-script's:", h["read"], h["close"]())
lost = 0
for i = 1, 5000
  dropped = io["open"]("data/two.txt")
  if dropped == not
    lost = lost + 1
  end
end
print("dropped-files-close:", lost)
