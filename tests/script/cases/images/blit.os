blitImage = Plush["blitImage"]
createImage = Plush["createImage"]
@@ the red bytes of an image, row by row
function reds(image)
  local text = ""
  local w = 0
  local h = 0
  w, h = Plush["imageSize"](image)
  for y = 0, h - 1
    for x = 0, w - 1
      r, g, b, a = Plush["getPixel"](image, x, y)
      text = text + r + " "
    end
    text = text + "/ "
  end
  return text
end
function numbered(w, h)
  image = createImage(w, h, 0, 0, 0, 255)
  for y = 0, h - 1
    for x = 0, w - 1
      Plush["setPixel"](image, x, y, x + 1 + y * w, 0, 0, 255)
    end
  end
  return image
end
source = numbered(2, 2)

target = createImage(4, 3, 0, 0, 0, 0)
print("result:", blitImage(target, source, 1, 1, false, 1, 0))
print("inside:", reds(target))
target = createImage(4, 3, 0, 0, 0, 0)
blitImage(target, source, -1, -1, false, 1, 0)
blitImage(target, source, 3, 2, true, 1, 0)
print("cut off:", reds(target))
target = createImage(4, 3, 0, 0, 0, 0)
blitImage(target, source, 1.9, -0.9, false, 1, 0)
print("truncated:", reds(target))

target = createImage(5, 4, 0, 0, 0, 0)
blitImage(target, source, 0, 0, false, 2, 0)
print("doubled:", reds(target))
target = createImage(3, 3, 0, 0, 0, 0)
blitImage(target, numbered(6, 6), 0, 0, false, 0.5, 0)
print("halved:", reds(target))
target = createImage(3, 3, 0, 0, 0, 0)
blitImage(target, source, 0, 0, false, 0, 0)
blitImage(target, source, 0, 0, false, -1, 0)
print("scale 0 and below:", reds(target))

target = createImage(4, 4, 0, 0, 0, 0)
blitImage(target, numbered(3, 3), 0, 0, false, 1, 180)
print("half a turn:", reds(target))
target = createImage(4, 4, 0, 0, 0, 0)
blitImage(target, source, 1, 1, false, 1, 360)
blitImage(target, source, 1, 1, false, 1, -360)
blitImage(target, source, 1, 1, false, 1, 720)
print("whole turns:", reds(target))

clear = createImage(1, 1, 50, 50, 50, 0)
target = createImage(1, 1, 7, 7, 7, 7)
blitImage(target, clear, 0, 0, true, 1, 0)
print("transparent, blended:", reds(target))
blitImage(target, clear, 0, 0, 0, 1, 0)
print("any value blends:", reds(target))
blitImage(target, clear, 0, 0, "", 1, 0)
print("an empty text too:", reds(target))
blitImage(target, clear, 0, 0, not, 1, 0)
r, g, b, a = Plush["getPixel"](target, 0, 0)
print("nil replaces:", r, g, b, a)

half = createImage(1, 1, 200, 100, 1, 128)
target = createImage(1, 1, 10, 20, 0, 100)
blitImage(target, half, 0, 0, true, 1, 0)
r, g, b, a = Plush["getPixel"](target, 0, 0)
print("half transparent:", r, g, b, a)

target = createImage(3, 1, 0, 0, 0, 0)
target = numbered(3, 1)
blitImage(target, target, 1, 0, false, 1, 0)
print("on itself:", reds(target))

target = createImage(2, 2, 0, 0, 0, 0)
huge = 300000000000000000000000000000000000000.0
infinite = toNumber("1e38") * 1000
blitImage(target, source, infinite, 0, false, 1, 0)
blitImage(target, source, 0, 0 - infinite, false, 1, 0)
blitImage(target, source, 0, 0, false, infinite, 0)
blitImage(target, source, 0, 0, false, 1, infinite)
blitImage(target, source, 0, 0, false, infinite - infinite, infinite - infinite)
print("numbers that are none draw nothing:", reds(target))
blitImage(target, source, 0, 0, false, huge, 30)
blitImage(target, source, 0, 0, false, 1, huge)
Plush["threads"](0)
blitImage(target, source, 0, 0, false, 1, 0)
Plush["threads"](-3)
blitImage(target, source, 0, 0, true, 1, 0)
print("still whole:", reds(target))
