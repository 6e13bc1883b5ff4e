@@ Paints all pictures of the demo and writes them as PNG files.
@@
@@ The engine runs this instead of a game: `make-assets` lays out a game directory with this file as its script, runs it
@@ and copies the pictures to Resources/package. Everything is drawn with what a game has, too: single pixels, blits and
@@ a seeded random generator, so the same pictures come out every time.
@@
@@ The scene is seen by night. Colours are given as lists of red, green and blue; a further number is the alpha.

package = Ostrel["getPath"]() + "../Resources/package/"
runFile(package + "font.os")

setPixel = Plush["setPixel"]
getPixel = Plush["getPixel"]
createImage = Plush["createImage"]
blitImage = Plush["blitImage"]
floor = math["floor"]
sin = math["sin"]

viewWidth = 320
viewHeight = 180

@@ --- Painting ------------------------------------------------------------------------------------------------------

@@ An ordered dither: turns steps of colour into a pattern.
bayer = [0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5]

function ditherAt(x, y)
    return bayer[x % 4 + y % 4 * 4 + 1] / 16 - 0.5
end

function mixed(from, to, share)
    if share < 0
        share = 0
    end
    if share > 1
        share = 1
    end
    return [from[1] + (to[1] - from[1]) * share, from[2] + (to[2] - from[2]) * share, from[3] + (to[3] - from[3]) * share]
end

@@ Sets an opaque pixel; what lies outside the picture is left out.
function dot(image, x, y, colour)
    local w, h = Plush["imageSize"](image)
    if x >= 0 and y >= 0 and x < w and y < h
        setPixel(image, x, y, colour[1], colour[2], colour[3], 255)
    end
end

function box(image, x, y, w, h, colour)
    for py = y, y + h - 1
        for px = x, x + w - 1
            dot(image, px, py, colour)
        end
    end
end

@@ A round light that fades out to its edge, to be blended over a picture.
function glow(size, colour, strength)
    local image = createImage(size, size, colour[1], colour[2], colour[3], 0)
    local middle = (size - 1) / 2
    for y = 0, size - 1
        for x = 0, size - 1
            local away = math["sqrt"]((x - middle) ^ 2 + (y - middle) ^ 2) / middle
            if away < 1
                local alpha = (1 - away) ^ 2 * strength
                setPixel(image, x, y, colour[1], colour[2], colour[3], alpha)
            end
        end
    end
    return image
end

@@ The night sky: three colours from the zenith to the horizon.
function paintSky(image, zenith, middle, horizon, bottom)
    for y = 0, bottom - 1
        for x = 0, viewWidth - 1
            local height = y / bottom + ditherAt(x, y) * 0.05
            height = floor(height * 28) / 28
            if height < 0.55
                dot(image, x, y, mixed(zenith, middle, height / 0.55))
            else
                dot(image, x, y, mixed(middle, horizon, (height - 0.55) / 0.45))
            end
        end
    end
end

function paintStars(image, count, lowest)
    for i = 1, count
        local x = random(viewWidth) - 1
        local y = random(lowest) - 1
        local light = 120 + random(110)
        dot(image, x, y, [light, light, light + 20])
        if random(9) == 1
            local dim = [light / 2 + 30, light / 2 + 30, light / 2 + 60]
            dot(image, x - 1, y, dim)
            dot(image, x + 1, y, dim)
            dot(image, x, y - 1, dim)
            dot(image, x, y + 1, dim)
        end
    end
end

function paintMoon(image, cx, cy, radius)
    blitImage(image, glow(radius * 8, [214, 205, 255], 120), cx - radius * 4, cy - radius * 4, true, 1, 0)
    for y = cy - radius, cy + radius
        for x = cx - radius, cx + radius
            local dx = x - cx
            local dy = y - cy
            if dx * dx + dy * dy <= radius * radius
                local shade = (dx + dy) / radius / 3 + ditherAt(x, y) * 0.2
                dot(image, x, y, mixed([255, 247, 222], [226, 208, 190], shade))
            end
        end
    end
    box(image, cx - 6, cy - 4, 4, 3, [236, 220, 198])
    box(image, cx + 2, cy + 3, 5, 3, [228, 210, 190])
    box(image, cx + 4, cy - 7, 3, 2, [240, 226, 205])
    box(image, cx - 4, cy + 5, 3, 2, [232, 214, 194])
end

@@ The height of a chain of hills at x; `kind` tells chains apart.
function ridge(x, kind, roughness)
    local large = sin(x * 0.021 + kind * 2.1) * 0.55 + sin(x * 0.047 + kind * 5.3) * 0.3
    return (large + sin(x * 0.13 + kind) * 0.1 + sin(x * 0.31 + kind * 7) * 0.05) * roughness
end

@@ Fills everything below a chain of hills; the colour changes towards `foot` with the distance from the ridge.
function paintHills(image, width, base, bottom, kind, roughness, top, foot)
    for x = 0, width - 1
        local ridgeAt = floor(base - ridge(x, kind, roughness))
        for y = ridgeAt, bottom - 1
            local share = (y - ridgeAt) / (bottom - ridgeAt + 1) + ditherAt(x, y) * 0.16
            dot(image, x, y, mixed(top, foot, floor(share * 9) / 9))
        end
    end
end

@@ A fir: tiers of branches that widen towards the ground.
function paintFir(image, x, ground, height, colour, lit)
    for row = 0, height - 1
        local tier = row % 6
        local half = floor(row / height * height * 0.22 + tier * 0.5) + 1
        if row < 3
            half = 0
        end
        for px = x - half, x + half
            local shown = colour
            if px > x and (px + row) % 3 != 0
                shown = lit
            end
            dot(image, px, ground - height + row, shown)
        end
    end
    box(image, x, ground, 1, 3, colour)
end

@@ --- Lettering -----------------------------------------------------------------------------------------------------

@@ Writes a line with letters of `scale` pixels a dot; colours run from `top` to `foot` over the letter's height.
function letter(image, text, x, y, scale, top, foot)
    for i = 1, #text
        local rows = glyphs[text[i]]
        if rows != not
            for row = 0, glyphHeight - 1
                for column = 0, glyphWidth - 1
                    if rows[row * glyphWidth + column + 1] == "#"
                        local colour = mixed(top, foot, row / (glyphHeight - 1))
                        box(image, x + column * scale, y + row * scale, scale, scale, colour)
                    end
                end
            end
        end
        x = x + glyphStep * scale
    end
end

function letterWithOutline(image, text, x, y, scale, top, foot, outline)
    for dy = -1, 1
        for dx = -1, 1
            letter(image, text, x + dx, y + dy, scale, outline, outline)
        end
    end
    letter(image, text, x + 1, y + 2, scale, outline, outline)
    letter(image, text, x, y, scale, top, foot)
end

@@ --- Sprites -------------------------------------------------------------------------------------------------------

spriteColours = {
    k = [22, 18, 38],
    h = [92, 58, 44],
    H = [124, 82, 56],
    s = [238, 190, 152],
    S = [206, 150, 122],
    c = [156, 48, 62],
    C = [112, 32, 56],
    d = [196, 78, 78],
    p = [52, 54, 88],
    b = [74, 48, 40],
    g = [120, 112, 118],
    G = [76, 70, 84],
    y = [255, 196, 84],
    w = [255, 246, 206],
    o = [232, 128, 48]
}

@@ A picture from rows of letters; every letter is a colour above and a dot is clear.
function sprite(rows, mirrored)
    local width = #rows[1]
    local image = createImage(width, #rows, 0, 0, 0, 0)
    for y = 1, #rows
        for x = 1, width
            local colour = spriteColours[rows[y][x]]
            if colour != not
                local column = x - 1
                if mirrored
                    column = width - x
                end
                setPixel(image, column, y - 1, colour[1], colour[2], colour[3], 255)
            end
        end
    end
    return image
end

walkerBody = [
    "....kkkkk.......",
    "...khHHhhk......",
    "..khHhhhhhk.....",
    "..khhhhhsskk....",
    "..khhsssskssk...",
    "..khhsssskssk...",
    "...khssssssk....",
    "....kSsssSk.....",
    "...kkCcccCkk....",
    "..kcccdddccck...",
    ".kCccdcccdccck..",
    ".kCcccccccckcsk.",
    ".kCcccccccckcsgk",
    ".kCccccccccckkgk",
    ".kCCcccccccckGGG",
    "..kCcccccccckGyG",
    "..kCCccccccckywy",
    "..kCCCcccccckywy",
    "..kCCCCcccCckGyG"
]
walkerLegs = [
    ["...kkppkkppkk...", "....kppkkppk....", "....kppkkppk....", "....kbbkkbbk....", "....kbbbkbbbk..."],
    ["...kkppkppkk....", "....kppkppkk....", "...kppk.kppk....", "...kbbk..kbbk...", "...kbbbk.kbbbk.."],
    ["...kkpppppkk....", "....kkppppk.....", ".....kppppk.....", ".....kbbkbbk....", ".....kbbbbbbk..."],
    ["...kkpppkpkk....", "...kpppkkpppk...", "..kppk...kppk...", "..kbbk....kbk...", "..kbbbk...kbbk.."]
]

function makeWalker()
    for step = 1, 4
        local rows = array()
        @@ The body rises by a pixel while the legs pass each other.
        local clear = "................"
        if step == 1 or step == 3
            push(rows, clear)
        end
        for i = 1, #walkerBody
            push(rows, walkerBody[i])
        end
        for i = 1, #walkerLegs[step]
            push(rows, walkerLegs[step][i])
        end
        if step == 2 or step == 4
            push(rows, clear)
        end
        save("walker-right-" + step, sprite(rows, false))
        save("walker-left-" + step, sprite(rows, true))
    end
end

lampHead = [
    ".......kk.......",
    "......kGGk......",
    ".....kGggGk.....",
    "....kGGGGGGk....",
    "...kkkkkkkkkk...",
    "....k122221k....",
    "....k123321k....",
    "....k233332k....",
    "....k233332k....",
    "....k123321k....",
    "....k122221k....",
    "....kkkkkkkk....",
    ".....kGGGGk.....",
    "......kGGk......"
]

function makeLamp(name, rim, light, core)
    spriteColours["1"] = rim
    spriteColours["2"] = light
    spriteColours["3"] = core
    local rows = array()
    for i = 1, #lampHead
        push(rows, lampHead[i])
    end
    for i = 1, 34
        push(rows, "......kGgk......")
    end
    push(rows, ".....kGGggk.....")
    push(rows, "....kGGGgggk....")
    push(rows, "....kkkkkkkk....")
    save(name, sprite(rows, false))
end

@@ --- The pictures --------------------------------------------------------------------------------------------------

function save(name, image)
    Plush["saveImage"](package + name + ".png", image)
    local w, h = Plush["imageSize"](image)
    print(name + ".png: " + w + " by " + h)
end

@@ The hour before night over a lake, with a lamp on the near shore.
function paintTitle()
    local image = createImage(viewWidth, viewHeight, 0, 0, 0, 255)
    local shore = 112
    paintSky(image, [26, 22, 66], [112, 58, 122], [246, 152, 104], shore)
    paintStars(image, 90, 56)
    paintMoon(image, 246, 76, 12)
    paintHills(image, viewWidth, 92, shore, 1, 22, [122, 78, 134], [190, 116, 124])
    paintHills(image, viewWidth, 102, shore, 3, 16, [78, 54, 108], [130, 82, 116])
    paintHills(image, viewWidth, 110, shore, 6, 9, [46, 38, 82], [62, 48, 92])
    for x = 0, viewWidth - 1
        local height = 5 + floor(3 * sin(x * 0.7) + 3 * sin(x * 1.9 + 1))
        for y = shore - height, shore - 1
            dot(image, x, y, [34, 30, 64])
        end
    end

    @@ The water repeats what stands above it, darker, shaken and streaked with light.
    for y = shore, 174
        for x = 0, viewWidth - 1
            local depth = y - shore
            local shake = floor(sin(y * 1.3 + x * 0.05) * (1 + depth * 0.06))
            local from = shore - 1 - floor(depth * 1.7)
            local fromX = x + shake
            if fromX < 0
                fromX = 0
            end
            if fromX >= viewWidth
                fromX = viewWidth - 1
            end
            local r, g, b, a = getPixel(image, fromX, from)
            local colour = mixed([r, g, b], [30, 26, 74], 0.38 + depth * 0.004)
            if sin(y * 2.1) + sin(x * 0.09 + y * 0.6) * 0.8 > 1.35
                colour = mixed(colour, [255, 214, 190], 0.3)
            end
            dot(image, x, y, colour)
        end
    end
    for y = shore + 3, 174
        local spread = 3 + floor((y - shore) * 0.2) + floor(3 * sin(y * 2.4))
        for x = 246 - spread, 246 + spread
            if sin(x * 0.8 + y * 3.1) > 0.1
                local r, g, b, a = getPixel(image, x, y)
                dot(image, x, y, mixed([r, g, b], [255, 244, 214], 0.55))
            end
        end
    end

    @@ The near shore.
    for x = 0, viewWidth - 1
        local top = 156 - floor(10 * sin(x * 0.013 + 0.9) + 3 * sin(x * 0.09) + 1.2 * sin(x * 0.9))
        for y = top, viewHeight - 1
            dot(image, x, y, mixed([38, 34, 64], [12, 12, 30], (y - top) / 26 + ditherAt(x, y) * 0.2))
        end
        if x % 3 == 0
            local blade = random(4)
            for y = top - blade, top
                dot(image, x, y, [38, 34, 64])
            end
        end
    end
    local firs = [[10, 158, 66], [28, 161, 46], [296, 168, 70], [313, 170, 52], [279, 170, 40], [44, 160, 30]]
    for i = 1, #firs
        paintFir(image, firs[i][1], firs[i][2], firs[i][3], [16, 16, 38], [30, 28, 58])
    end
    local lamp = Plush["loadPNG"](package + "lamp-lit.png")
    blitImage(image, glow(120, [255, 186, 92], 170), 78 - 60, 106 - 60, true, 1, 0)
    blitImage(image, lamp, 70, 96, true, 1, 0)

    letterWithOutline(image, "THE", 142, 10, 2, [255, 236, 196], [255, 190, 120], [38, 24, 62])
    local title = "LAMPLIGHTER"
    local x = floor((viewWidth - textWidth(title) * 4) / 2)
    letterWithOutline(image, title, x, 30, 4, [255, 250, 224], [250, 150, 92], [38, 24, 62])
    save("title", image)
end

function paintScene()
    local sky = createImage(viewWidth, viewHeight, 10, 10, 26, 255)
    paintSky(sky, [10, 12, 38], [34, 32, 86], [92, 72, 128], 150)
    paintStars(sky, 160, 100)
    paintMoon(sky, 70, 36, 12)
    save("sky", sky)

    local hills = createImage(480, 80, 0, 0, 0, 0)
    paintHills(hills, 480, 34, 80, 2, 26, [52, 48, 104], [76, 64, 122])
    paintHills(hills, 480, 54, 80, 4, 18, [36, 34, 80], [54, 48, 100])
    save("hills", hills)

    local woods = createImage(640, 84, 0, 0, 0, 0)
    for i = 1, 120
        local back = i <= 60
        local colour = [18, 20, 48]
        local lit = [26, 30, 62]
        if back
            colour = [26, 28, 64]
            lit = [34, 38, 78]
        end
        paintFir(woods, random(640) - 1, 80, 26 + random(34), colour, lit)
    end
    box(woods, 0, 78, 640, 6, [18, 20, 48])
    save("woods", woods)

    @@ Grass, a sandy path, grass: one piece that is laid side by side.
    local ground = createImage(160, 52, 0, 0, 0, 255)
    for y = 0, 51
        for x = 0, 159
            local wave = 1.5 * sin(x * 6.2831853 / 160) + sin(x * 6.2831853 / 32 + 1)
            local colour = mixed([38, 58, 66], [22, 36, 52], y / 52 + ditherAt(x, y) * 0.5)
            if y > 14 + wave and y < 38 + wave
                colour = mixed([126, 104, 104], [92, 76, 92], (y - 14) / 24 + ditherAt(x, y) * 0.5)
            end
            if y < 2
                colour = [58, 84, 80]
            end
            dot(ground, x, y, colour)
        end
    end
    for i = 1, 26
        local x = random(158)
        local y = 18 + random(16)
        dot(ground, x, y, [150, 128, 122])
        dot(ground, x + 1, y, [74, 60, 80])
    end
    for i = 1, 70
        local x = random(160) - 1
        local y = random(12)
        if random(2) == 1
            y = y + 38
        end
        dot(ground, x, y, [58, 84, 80])
        dot(ground, x, y - 1, [72, 100, 88])
    end
    save("ground", ground)

    local grass = createImage(160, 18, 0, 0, 0, 0)
    for x = 0, 159
        local height = 3 + random(7) + floor(2 * sin(x * 6.2831853 / 40))
        local colour = mixed([14, 24, 38], [24, 40, 50], random(10) / 10)
        for y = 18 - height, 17
            dot(grass, x, y, colour)
        end
    end
    save("grass", grass)
end

@@ A house at the end of the path; its windows are lit or dark.
function paintHouse(name, window)
    local image = createImage(72, 64, 0, 0, 0, 0)
    for row = 0, 27
        local half = 10 + row
        for x = 36 - half, 35 + half
            local colour = [96, 44, 60]
            if row % 4 == 3 or (x + floor(row / 4) * 3) % 6 == 0
                colour = [72, 32, 54]
            end
            dot(image, x, row + 2, colour)
        end
    end
    box(image, 54, 0, 7, 18, [80, 70, 84])
    box(image, 53, 0, 9, 2, [58, 50, 68])
    box(image, 5, 30, 62, 34, [104, 88, 104])
    for y = 30, 63
        for x = 5, 66
            if y % 5 == 0 or (x + floor(y / 5) * 4) % 9 == 0
                dot(image, x, y, [86, 72, 92])
            end
        end
    end
    box(image, 5, 30, 62, 2, [60, 48, 70])
    box(image, 30, 42, 13, 22, [40, 28, 42])
    box(image, 31, 43, 11, 21, [92, 58, 50])
    box(image, 39, 53, 2, 2, [220, 180, 96])
    local places = [[11, 38], [50, 38]]
    for i = 1, 2
        local x = places[i][1]
        local y = places[i][2]
        box(image, x, y, 12, 13, [40, 30, 46])
        box(image, x + 1, y + 1, 10, 11, window)
        box(image, x + 6, y + 1, 1, 11, [40, 30, 46])
        box(image, x + 1, y + 6, 10, 1, [40, 30, 46])
    end
    save(name, image)
end

math["randomSeed"](1870)
makeLamp("lamp-dark", [58, 56, 84], [70, 68, 98], [82, 80, 112])
makeLamp("lamp-lit", [240, 150, 64], [255, 208, 104], [255, 250, 214])
makeWalker()
save("glow", glow(96, [255, 190, 100], 150))
save("firefly", glow(9, [206, 255, 150], 255))
paintHouse("house-dark", [44, 42, 76])
paintHouse("house-lit", [255, 206, 112])
paintScene()
paintTitle()
