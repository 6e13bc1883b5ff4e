@@ What the library leaves for a game to build on.
root = Ostrel["getPath"]()
print("slides:", typeOf(OSTREL_SLIDE_PROGRESS), #keys(OSTREL_SLIDE_PROGRESS), typeOf(OSTREL_SLIDE_TEXT), #keys(OSTREL_SLIDE_TEXT))
print("decoder:", "[" + ostrelJsonDecodeSource + "]", ostrelJsonDecodeIndex, ostrelJsonDecodeLength)
print("skipwarning:", skipwarning)
print("framebufferScale:", framebufferScale)
print("queue:", typeOf(renderQueue), #renderQueue, typeOf(parallaxPoints), #parallaxPoints)
print("append:", append == root + "../Resources/package")
print("nobmp:", nobmp == append + "/ui/no.png", blankpc == append + "/ui/blank.png")
width, height = Plush["imageSize"](OSTREL_FRAMEBUFFER)
red, green, blue, alpha = Plush["getPixel"](OSTREL_FRAMEBUFFER, 0, 0)
print("framebuffer:", width, height, red, green, blue, alpha)
print("boot-threads:", ostrelBootHardwareThreads)
print("pace:", maxFramerate == OSTREL_FRAMERATE, maxFramerate == 1000 / OSTREL_PROCESSOR[3], threads == OSTREL_PROCESSOR[2])
print("log:", "[" + debuglog + "]", debugentries)
print("layers:", layers)
print("mouse:", input["mouse"]["postion"], input["mouse"]["x"], input["mouse"]["y"], #keys(input["mouse"]))
camera = input["camera"]
print("camera:", camera["x"], camera["y"], camera["z"], camera["yaw"], camera["rotation"], #keys(camera))
print("keys:", keys(input["key"]))
pressed = 0
for name, down in pairs(input["key"])
    if down ~= false
        pressed += 1
    end
end
print("pressed:", pressed)
print("colours:", cstrawberry, cbrownink, cclear, cwhite, cblack)
print("frame-is-strawberry:", framecolour == cstrawberry)
print("first-scripts:", OstrelIndex, oshandle, file)
print("click:", click)
