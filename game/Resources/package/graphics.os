@@ The pictures and letters of the game, loaded once before it starts.

package = Ostrel["getPath"]() + "../Resources/package/"
runFile(package + "font.os")

@@ A picture by its name; loadPNG gives the handle first.
function picture(name)
    local image = Plush["loadPNG"](package + name + ".png")
    return image
end

titlePicture = picture("title")
skyPicture = picture("sky")
hillsPicture = picture("hills")
woodsPicture = picture("woods")
groundPicture = picture("ground")
grassPicture = picture("grass")
glowPicture = picture("glow")
fireflyPicture = picture("firefly")
darkLamp = picture("lamp-dark")
litLamp = picture("lamp-lit")
darkHouse = picture("house-dark")
litHouse = picture("house-lit")
walkerRight = array()
walkerLeft = array()
for step = 1, 4
    push(walkerRight, picture("walker-right-" + step))
    push(walkerLeft, picture("walker-left-" + step))
end

@@ One image for each letter, in a bright and a dark ink.
function makeInk(red, green, blue)
    local ink = {}
    for letter, rows in pairs(glyphs)
        local image = Plush["createImage"](glyphWidth, glyphHeight, 0, 0, 0, 0)
        for dot = 1, #rows
            if rows[dot] == "#"
                Plush["setPixel"](image, (dot - 1) % glyphWidth, (dot - 1) \ glyphWidth, red, green, blue, 255)
            end
        end
        ink[toString(letter)] = image
    end
    return ink
end

brightInk = makeInk(255, 240, 206)
darkInk = makeInk(24, 18, 44)
