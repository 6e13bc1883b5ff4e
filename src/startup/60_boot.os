
@@ --- Boot: the first scripts ---------------------------------------------------------------------------------------

skipwarning = false

@@ A text compiled to a function; a text that does not compile is an error.
function ostrelLoadChunkOrError(scriptText, chunkName)
    local chunk, fault = load(scriptText, chunkName)
    if chunk == not
        error(fault or "Failed to load script chunk: " + toString(chunkName))
    end
    return chunk
end

if not OSTRELBOOT_ENABLED
    oshandle = io["open"](Ostrel["getPath"]() + "../Resources/scripts/ostrelscript-selftest.os", "r")
    if oshandle ~= not
        OstrelIndex = oshandle["read"](oshandle, "*a")
        oshandle["close"](oshandle)
        if OstrelIndex ~= ""
            Ostrel["runScript"](OstrelIndex)
        end
    end
end

framebufferScale = 0.5
renderQueue = {}
parallaxPoints = {}

@@ Gives the game the word book of `Libraries/anglish`, a script that sets `wordbook` to pairs of patterns and words.
function registerAnglish()
    local path = Ostrel["getPath"]() + "../Libraries/anglish"
    local book = io["open"](path, "r")
    if book == not
        error("Failed to open script file: " + path)
    end
    local chunk = ostrelLoadChunkOrError(book["read"](book, "*a"), path)
    book["close"](book)
    chunk()

    function Ostrel["translateAnglish"](t)
        for index = 1, #wordbook
            t = string["gsub"](t, wordbook[index][1], wordbook[index][2])
        end
        return t
    end

    function Ostrel["processAnglish"](inputString)
        return ostrelTranslateTagged(inputString, Ostrel["translateAnglish"])
    end
end

@@ Guesses whom the player would like to play, and gives the game the word book of `Libraries/gender`, a script that
@@ sets `genderbook` to pairs of words. A search word is taken as it is, whatever it would mean as a pattern.
function registerGenderEngine()
    OSTREL_FEMALE = false
    if OSTRELBOOT_ENABLED
        OSTREL_TMP0 = "Velmaris"
    elseif OSTREL_WINDOWS_ENABLED
        OSTREL_TMP0 = OSTREL_USER_NAME
    else
        OSTREL_TMP0 = Ostrel["capture"]("id -un")
        local ending = string["sub"](OSTREL_TMP0, -1)
        if ending == "a" or ending == "y" or ending == "e"
            OSTREL_FEMALE = true
        end
    end

    local path = Ostrel["getPath"]() + "../Libraries/gender"
    local book = io["open"](path, "r")
    if book == not
        error("Failed to open script file: " + path)
    end
    local chunk = ostrelLoadChunkOrError(book["read"](book, "*a"), path)
    book["close"](book)
    chunk()

    function Ostrel["processGender"](t)
        if t == not
            return "pages = {}"
        end
        for index = 1, #genderbook
            local word = genderbook[index]
            local pattern = string["gsub"](word[1], "([%^%$%(%)%%%.%[%]%*%+%-%?])", "%%%1")
            t = string["gsub"](t, pattern, word[2])
        end
        return t
    end
end

@@ The player's settings.
file = io["open"](Ostrel["getPath"]() + "../Resources/volatile/save-1.plush", "r")
if file ~= not
    local path = Ostrel["getPath"]() + "../Resources/volatile/save-1.plush"
    local chunk = ostrelLoadChunkOrError(file["read"](file, "*a"), path)
    file["close"](file)
    chunk()
end

@@ A frame that is shown brings the log out.
if Metal ~= not and Metal["forceUpdate"] ~= not
    ostrelForceUpdate = Metal["forceUpdate"]
    function Metal["forceUpdate"]()
        Ostrel["flushDebugLog"]()
        return ostrelForceUpdate()
    end
end

append = Ostrel["getPath"]() + "../Resources/package"
nobmp = append + "/ui/no.png"
blankpc = append + "/ui/blank.png"
OSTREL_FRAMEBUFFER = Plush["createImage"](OSTREL_SCREEN_X, OSTREL_SCREEN_Y, 0, 0, 0, 0)
ostrelBootHardwareThreads = 1
