@@ picture files of other formats, told apart by what is in them
folder = Ostrel["getPath"]() + "../Resources/data/"
function show(name)
  image, height, width = Plush["loadPNG"](folder + name)
  r, g, b, a = Plush["getPixel"](image, width - 1, height - 1)
  print(name, width, height, "last:", r, g, b, a)
end
show("pixel.bmp")
show("grey.tga")
show("layers.xcf")
show("runs.png")
ok, message = pcall(Plush["loadPNG"], "../Resources/data/cut.xcf")
print("cut short:", ok, message)
