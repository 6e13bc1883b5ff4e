
@@ --- Boot: pace and presentation -----------------------------------------------------------------------------------

if string["find"](toString(OSTREL_OS_PLATFORM), "Linux", 1, true) ~= not
    for index = 1, #OSTREL_TMP1
        OSTREL_TMP1[index][3] = OSTREL_TMP1[index][3] * 0.75
    end
end

threads = 6
if OSTRELBOOT_ENABLED
    threads = ostrelBootHardwareThreads
end
maxFramerate = 1000 / 24
OSTREL_FRAMERATE = 1000 / 24
OSTREL_PROCESSOR = {OSTREL_PROCESSOR_NAME, threads, 24}

@@ The last row that matches wins.
if not OSTRELBOOT_ENABLED
    for index = 1, #OSTREL_TMP1
        if ostrelProcessorNameMatches(OSTREL_PROCESSOR_NAME, OSTREL_TMP1[index][1])
            threads = OSTREL_TMP1[index][2]
            maxFramerate = 1000 / OSTREL_TMP1[index][3]
            OSTREL_FRAMERATE = 1000 / OSTREL_TMP1[index][3]
            OSTREL_PROCESSOR = OSTREL_TMP1[index]
        end
    end
end

Plush["threads"](threads)

@@ The sound of a revealed letter.
if MIXER_ENABLED and Audio ~= not
    local opened
    opened, click = pcall(Audio["open"], Ostrel["getPath"]() + "../Resources/package/audio/click.wav")
    if not opened
        click = not
    end
end

debuglog = ""
layers = 5

@@ What the player does, as games and the native side share it.
input = {
    mouse = {postion = {false, false, false}, x = -1, y = -1},
    camera = {x = 0, y = 0, z = 0, yaw = 0, rotation = 0},
    key = {
        a = false, b = false, c = false, d = false, e = false, f = false, g = false, h = false, i = false, j = false,
        k = false, l = false, m = false, n = false, o = false, p = false, q = false, r = false, s = false, t = false,
        u = false, v = false, w = false, x = false, y = false, z = false,
        one = false, two = false, three = false, four = false, five = false, six = false, seven = false, eight = false,
        nine = false, zero = false,
        backspace = false, delete = false, enter = false, space = false,
        up = false, down = false, left = false, right = false
    }
}

@@ Colours, as red, green, blue and alpha.
cstrawberry = {255, 90, 120, 255}
cbrownink = {84, 72, 54, 240}
cclear = {0, 0, 0, 0}
cwhite = {255, 255, 255, 255}
cblack = {0, 0, 0, 255}
framecolour = cstrawberry

@@ Every start has the same random sequence, unless the game seeds anew.
math["randomSeed"](543486374)
