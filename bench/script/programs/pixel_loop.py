width = 320
height = 240
picture = [0] * (width * height)
put = picture.__setitem__
for frame in range(1, 6):
    for y in range(height):
        for x in range(width):
            put(y * width + x, (x + frame) % 256 + (y + frame) % 256 * 256 + 128 * 65536)
print("true")
