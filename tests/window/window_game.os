@@ A game that tells what it sees of its player: it prints every change of keys, buttons and mouse until its window is
@@ closed. Eight digit keys are commands: 1 describes a capture, 2 opens the window again, which renames and resizes it,
@@ 3 sets the title, 4 changes the clear colour, 5 kills the window and opens another, 6 describes a capture in a while,
@@ 7 opens the window again in a while and describes a capture of that, 8 opens it again and makes it small.
width = 320
height = 180
Metal["spawnWindow"](width, height, "first title")
Metal["clearBuffer"](200, 30, 90)

picture = Plush["createImage"](width, height, 20, 40, 60, 255)
for y = 0, 15
    for x = 0, 15
        Plush["setPixel"](picture, 40 + x, 20 + y, 255, 255, 255, 0)
        Plush["setPixel"](picture, 60 + x, 20 + y, 255, 255, 255, 128)
        Plush["setPixel"](picture, 80 + x, 20 + y, x * 16, y * 16, 77, 255)
        Plush["setPixel"](picture, 100 + x, 20 + y, x * 16, y * 16, 77, x * 16 + y)
    end
end
Plush["setPixel"](picture, 0, 0, 255, 0, 0, 255)
Plush["setPixel"](picture, width - 1, 0, 255, 0, 255, 255)
Plush["setPixel"](picture, 0, height - 1, 0, 255, 255, 255)
Plush["setPixel"](picture, width - 1, height - 1, 255, 255, 0, 255)

names = ["RETURN", "UP", "DOWN", "LEFT", "RIGHT", "BACK", "DELETE", "SPACE", "A", "B", "C", "D", "E", "F", "G", "H",
         "I", "J", "K", "L", "M", "N", "O", "P", "Q", "R", "S", "T", "U", "V", "W", "X", "Y", "Z", "1", "2", "3", "4",
         "5", "6", "7", "8", "9", "0"]
down = {}
for i = 1, #names
    down[names[i]] = false
end
buttons = [false, false, false]
whileInMilliseconds = 1000
captureAt = -1
resizeAt = -1
mouseX = -2
mouseY = -2

function describeCapture()
    local image = Metal["getWindow"]()
    local w, h = Plush["imageSize"](image)
    print("size " + w + " " + h)
    local columns = [0, w \ 2, w - 1]
    local rows = [0, h \ 2, h - 1]
    for j = 1, 3
        for i = 1, 3
            local r, g, b, a = Plush["getPixel"](image, columns[i], rows[j])
            print("pixel " + columns[i] + " " + rows[j] + " " + r + " " + g + " " + b + " " + a)
        end
    end
    Plush["killImage"](image)
    print("captured")
end

function obey(name)
    if name == "1"
        describeCapture()
    elseif name == "2"
        Metal["spawnWindow"](400, 300, "second title")
        print("reopened")
    elseif name == "3"
        Metal["setTitle"]("third title")
        print("title " + Metal["getTitle"]())
    elseif name == "4"
        Metal["clearBuffer"](1, 250, 128)
        Metal["renderImage"](picture)
        print("recoloured")
    elseif name == "5"
        Metal["killWindow"]()
        Metal["spawnWindow"](200, 100, "fourth title")
        Metal["renderImage"](picture)
        print("replaced")
    elseif name == "6"
        captureAt = Ostrel["getGlobalTime"]() + whileInMilliseconds
    elseif name == "7"
        resizeAt = Ostrel["getGlobalTime"]() + whileInMilliseconds
    elseif name == "8"
        Metal["spawnWindow"](48, 30, "first title")
        print("shrunk")
    end
end

function watchKeys()
    for i = 1, #names
        local name = names[i]
        local now = Ostrel["getVar"]("OSTREL_KEY_" + name)
        if now != down[name]
            down[name] = now
            print("key " + name + " " + now)
            if now
                obey(name)
            end
        end
    end
end

function watchMouse()
    if OSTREL_MOUSE_X != mouseX or OSTREL_MOUSE_Y != mouseY
        mouseX = OSTREL_MOUSE_X
        mouseY = OSTREL_MOUSE_Y
        print("mouse " + mouseX + " " + mouseY)
    end
    local now = [OSTREL_MOUSE_1, OSTREL_MOUSE_2, OSTREL_MOUSE_3]
    for i = 1, 3
        if now[i] != buttons[i]
            buttons[i] = now[i]
            print("button " + i + " " + now[i])
        end
    end
end

open = true
Metal["updateInput"]()
if OSTREL_MOUSE_X == -1
    print("no window")
    open = false
else
    Metal["renderImage"](picture)
    Metal["forceUpdate"]()
    print("ready")
end
while open
    Metal["updateInput"]()
    watchMouse()
    watchKeys()
    if captureAt >= 0 and Ostrel["getGlobalTime"]() >= captureAt
        captureAt = -1
        describeCapture()
    end
    if resizeAt >= 0 and Ostrel["getGlobalTime"]() >= resizeAt
        resizeAt = -1
        Metal["spawnWindow"](360, 250, "third title")
        describeCapture()
    end
    Metal["forceUpdate"]()
    Ostrel["sleep"](10)
    if Metal["checkClose"]()
        open = false
        print("closing")
        Ostrel["sleep"](400)
    end
end
print("end")
