width = 320
height = 240
picture = Plush["createImage"](width, height, 0, 0, 0, 255)
for frame = 1, 5
  for y = 0, height - 1
    for x = 0, width - 1
      Plush["setPixel"](picture, x, y, (x + frame) % 256, (y + frame) % 256, 128, 255)
    end
  end
end
print(frame == not)
