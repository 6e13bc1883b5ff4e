@@ images without a pixel: one of 0 by 0 is whole, one with a single side is emptied in passing
folder = Ostrel["getPath"]() + "../Resources/data/"
full = Plush["createImage"](2, 2, 7, 7, 7, 255)
function try(entry, image)
    ok, message = pcall(Plush[entry], image, 1, 1, 1, 1, 1, 1)
    print(message)
end
for turn = 1, 2
    if turn == 1
        empty, width, height = Plush["loadPlushImage"](folder + "empty.pmg")
    else
        empty, width, height = Plush["loadPlushImage"](folder + "flat.pmg")
    end
    print(typeOf(empty), width, height)
    try("blitImage", empty)
    ok, message = pcall(Plush["blitImage"], full, empty, 0, 0, true, 2, 30)
    print(message)
    ok, message = pcall(Plush["blitImageRect"], empty, full, 0, 0, 1, 1, 0, 0, true, 1)
    print(message)
    ok, message = pcall(Plush["blitImageRect"], full, empty, 0, 0, 1, 1, 0, 0, true, 1)
    print(message)
    try("imageSize", empty)
    try("mirrorImage", empty)
    ok, message = pcall(Plush["saveImage"], "none.png", empty)
    print(message)
    ok, message = pcall(Plush["insertReflection"], empty, full)
    print(message)
    ok, message = pcall(Plush["insertReflection"], full, empty)
    print(message)
    print(Plush["skew"](empty, full, 0, 0, 2, 0, 0, 2, 2, 2), Plush["skew"](full, empty, 0, 0, 2, 0, 0, 2, 2, 2))
    print(Plush["dither"](empty, 5, true), Plush["bilinear"](empty, 2), Plush["bilinearSolid"](empty), Plush["trimImage"](empty, 1, 1))
    print(Plush["printImage"](empty, 3, 3))
    print("usable:", Plush["checkImage"](empty), Plush["checkImage"](empty))
    try("getPixel", empty)
    try("setPixel", empty)
    Plush["killImage"](empty)
    print("freed:", Plush["checkImage"](empty))
end
flat = Plush["loadPlushImage"](folder + "flat.pmg")
try("getPixel", flat)
try("getPixel", flat)
flat = Plush["loadPlushImage"](folder + "flat.pmg")
try("setPixel", flat)
try("setPixel", flat)
