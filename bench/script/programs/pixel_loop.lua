local width = 320
local height = 240
local picture = {}
for frame = 1, 5 do
  for y = 0, height - 1 do
    for x = 0, width - 1 do
      rawset(picture, y * width + x, (x + frame) % 256 + (y + frame) % 256 * 256 + 128 * 65536)
    end
  end
end
print(frame == nil)
