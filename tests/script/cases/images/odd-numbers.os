@@ numbers that are none, infinite or enormous do no harm
big = 1000000.0
for i = 1, 4
    big = big * 1000000.0
end
infinite = big * big
nan = infinite - infinite
print(infinite > big, nan == nan)
image = Plush["createImage"](3, 3, 10, 20, 30, 255)
target = Plush["createImage"](4, 4, 0, 0, 0, 0)
odd = {nan, infinite, 0 - infinite, big, 0 - big, 0.0000001}
for i = 1, 6
    local n = odd[i]
    Plush["blitImage"](target, image, n, 0, true, 1, 0)
    Plush["blitImage"](target, image, 0, n, true, 1, 0)
    Plush["blitImage"](target, image, 0, 0, true, n, 0)
    Plush["blitImage"](target, image, 0, 0, true, n, 30)
    Plush["blitImage"](target, image, 0, 0, true, 1, n)
    Plush["blitImageRect"](target, image, n, n, 2, 2, 0, 0, true, 1)
    Plush["blitImageRect"](target, image, 0, 0, n, n, 0, 0, true, 1)
    Plush["blitImageRect"](target, image, 0, 0, 2, 2, n, n, true, 2)
    Plush["blitImageRect"](target, image, 0, 0, 2, 2, 0, 0, true, n)
    Plush["skew"](image, target, n, n, 3, 0, 0, 3, 3, 3)
    Plush["skew"](image, target, 0, 0, 3, n, n, 3, 3, n)
    Plush["dither"](target, n, false)
    Plush["trimImage"](target, n, n)
    Plush["threads"](n)
    Plush["bilinearSolid"](target)
    pcall(Plush["bilinear"], image, n)
    pcall(Plush["printImage"], image, n, 1)
    Plush["threads"](2)
end
width, height = Plush["imageSize"](target)
print(width, height)
width, height = Plush["imageSize"](image)
print(width, height)
