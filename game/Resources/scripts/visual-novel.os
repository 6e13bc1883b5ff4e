@@ The Lamplighter: walk the path, light the five lamps, come home.
@@
@@ The arrow keys walk, and so does a click, which sets a place to walk to. Return or a click leaves the title; Backspace
@@ or the window's close button ends the game.
@@
@@ This loop owns every frame: it reads the input, moves what moves, draws the picture, shows it and sleeps for what is
@@ left of the frame's time.

viewWidth = 320
viewHeight = 180
frameTime = 33
worldWidth = 960

@@ Where the walker's feet may stand, and how far a frame's steps carry.
leftEnd = 20
rightEnd = 902
pathTop = 148
pathFoot = 165
pace = 1.6
climb = 0.8
walkerHeight = 25

lampPlaces = [120, 284, 448, 612, 776]
lampTop = 92
lampReach = 12
housePlace = 866
houseTop = 80
doorPlace = 898

blit = Plush["blitImage"]

@@ --- Drawing -------------------------------------------------------------------------------------------------------

frame = Plush["createImage"](viewWidth, viewHeight, 0, 0, 0, 255)

function draw(image, x, y)
    blit(frame, image, x, y, true, 1, 0)
end

@@ A round light about a point, `size` times as large as its picture.
function drawLight(image, diameter, x, y, size)
    local half = diameter * size / 2
    blit(frame, image, x - half, y - half, true, size, 0)
end

@@ A line of text about the middle of the picture, with a shadow.
function drawText(text, y)
    local x = (viewWidth - textWidth(text)) / 2
    for place = 1, #text
        local letter = text[place]
        if brightInk[letter] != not
            draw(darkInk[letter], x + 1, y + 1)
            draw(brightInk[letter], x, y)
        end
        x = x + glyphStep
    end
end

@@ Pieces of `width` side by side, moved to the left by `shift`.
function drawRepeated(image, width, shift, y)
    local x = 0 - math["floor"](shift) % width
    while x < viewWidth
        draw(image, x, y)
        x = x + width
    end
end

@@ --- The fireflies -------------------------------------------------------------------------------------------------

fireflies = array()
for i = 1, 14
    push(fireflies, {x = random(worldWidth), y = 92 + random(60), phase = random(628) / 100, speed = 2 + random(5)})
end

function drawFireflies(shift)
    for i = 1, #fireflies
        local fly = fireflies[i]
        local turn = time * fly["speed"] * 0.006 + fly["phase"]
        local x = fly["x"] + 24 * math["sin"](turn) + 9 * math["sin"](turn * 2.7)
        local y = fly["y"] + 10 * math["cos"](turn * 1.7)
        local size = 0.35 + 0.65 * math["abs"](math["sin"](turn * 3 + i))
        drawLight(fireflyPicture, 9, x - shift, y, size)
    end
end

@@ --- The scene -----------------------------------------------------------------------------------------------------

function startScene()
    walkerX = 40
    walkerY = 156
    walkerFaces = "right"
    walked = 0
    goalX = not
    goalY = not
    lit = [false, false, false, false, false]
    litCount = 0
    home = false
    message = "THE LAMPS ARE OUT. LIGHT THEM, AND FIND HOME."
    messageTime = 180
end

function say(text)
    message = text
    messageTime = 150
end

function held(value, least, most)
    if value < least
        return least
    end
    if value > most
        return most
    end
    return value
end

@@ How far to go from one place towards another, at most a step.
function stepTowards(from, to, step)
    return held(to - from, 0 - step, step)
end

function moveWalker()
    local dx = 0
    local dy = 0
    if OSTREL_KEY_LEFT
        dx = 0 - pace
    end
    if OSTREL_KEY_RIGHT
        dx = pace
    end
    if OSTREL_KEY_UP
        dy = 0 - climb
    end
    if OSTREL_KEY_DOWN
        dy = climb
    end
    if dx != 0 or dy != 0
        goalX = not
    end
    if clicked
        goalX = held(OSTREL_MOUSE_X + cameraX, leftEnd, rightEnd)
        goalY = held(OSTREL_MOUSE_Y, pathTop, pathFoot)
    end
    if goalX != not
        dx = stepTowards(walkerX, goalX, pace)
        dy = stepTowards(walkerY, goalY, climb)
        if dx == 0 and dy == 0
            goalX = not
        end
    end
    walkerX = held(walkerX + dx, leftEnd, rightEnd)
    walkerY = held(walkerY + dy, pathTop, pathFoot)
    if dx < 0
        walkerFaces = "left"
    end
    if dx > 0
        walkerFaces = "right"
    end
    if dx != 0 or dy != 0
        walked = walked + 1
    else
        walked = 0
    end
end

function lightLamps()
    for i = 1, #lampPlaces
        if not lit[i] and math["abs"](walkerX - lampPlaces[i]) < lampReach
            lit[i] = true
            litCount = litCount + 1
            if litCount < 5
                say("LAMP " + litCount + " OF 5")
            else
                say("ALL FIVE ARE LIT. NOW GO HOME.")
            end
        end
    end
    if litCount == 5 and not home and math["abs"](walkerX - doorPlace) < lampReach
        home = true
        say("HOME. GOOD NIGHT, LAMPLIGHTER!")
    end
end

function drawScene()
    cameraX = math["floor"](held(walkerX - viewWidth / 2, 0, worldWidth - viewWidth))
    blit(frame, skyPicture, 0, 0, false, 1, 0)
    draw(hillsPicture, 0 - cameraX \ 4, 58)
    draw(woodsPicture, 0 - cameraX \ 2, 50)
    drawRepeated(groundPicture, 160, cameraX, 128)

    local house = darkHouse
    if home
        house = litHouse
    end
    draw(house, housePlace - cameraX, houseTop)
    local flicker = math["sin"](time * 0.31) * 0.03 + math["sin"](time * 0.83) * 0.02
    if home
        drawLight(glowPicture, 96, housePlace + 36 - cameraX, houseTop + 44, 1.3 + flicker)
    end
    for i = 1, #lampPlaces
        local x = lampPlaces[i] - cameraX
        if lit[i]
            drawLight(glowPicture, 96, x, lampTop + 8, 1.2 + flicker)
            draw(litLamp, x - 8, lampTop)
        else
            draw(darkLamp, x - 8, lampTop)
        end
    end

    @@ The walker steps every six frames; standing still is the first picture.
    local step = (walked \ 6) % 4 + 1
    local x = math["floor"](walkerX) - cameraX
    local y = math["floor"](walkerY)
    if walkerFaces == "left"
        drawLight(glowPicture, 96, x - 6, y - 8, 0.5 + flicker)
        draw(walkerLeft[step], x - 8, y - walkerHeight)
    else
        drawLight(glowPicture, 96, x + 6, y - 8, 0.5 + flicker)
        draw(walkerRight[step], x - 8, y - walkerHeight)
    end
    drawFireflies(cameraX)
    drawRepeated(grassPicture, 160, cameraX * 1.25, 166)
    if messageTime > 0
        drawText(message, 14)
        messageTime = messageTime - 1
    end
end

@@ --- The title -----------------------------------------------------------------------------------------------------

function drawTitle()
    blit(frame, titlePicture, 0, 0, false, 1, 0)
    drawLight(glowPicture, 96, 78, 107, 0.8 + 0.04 * math["sin"](time * 0.4))
    drawFireflies(0)
    if time % 40 < 26
        drawText("PRESS RETURN OR CLICK", 152)
    end
end

@@ --- The game ------------------------------------------------------------------------------------------------------

@@ Reads the input; a press counts once, however long it lasts.
function readInput()
    Metal["updateInput"]()
    clicked = OSTREL_MOUSE_1 and not wasDown
    wasDown = OSTREL_MOUSE_1
    confirmed = OSTREL_KEY_RETURN and not wasConfirming
    wasConfirming = OSTREL_KEY_RETURN
end

function play()
    onTitle = true
    time = 0
    cameraX = 0
    wasDown = false
    wasConfirming = false
    Ostrel["getClock"]()
    while not Metal["checkClose"]() and not OSTREL_KEY_BACK
        readInput()
        if onTitle
            if clicked or confirmed
                onTitle = false
                clicked = false
                startScene()
            end
        else
            moveWalker()
            lightLamps()
            if home and confirmed
                onTitle = true
            end
        end
        if onTitle
            drawTitle()
        else
            drawScene()
        end
        Metal["renderImage"](frame)
        Metal["forceUpdate"]()
        time = time + 1
        Ostrel["sleep"](frameTime - Ostrel["getClock"]())
        Ostrel["getClock"]()
    end
end

Metal["spawnWindow"](viewWidth * 3, viewHeight * 3, "The Lamplighter")
shown = Metal["getWindow"]()
if shown == not
    print("No window could be opened here, so The Lamplighter stays in the dark.")
else
    Plush["killImage"](shown)
    play()
    Metal["killWindow"]()
    print("Good night.")
end
