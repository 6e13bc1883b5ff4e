
@@ --- Saved games and scenes ----------------------------------------------------------------------------------------

@@ Stores the game's place as a script, which the game runs to go on, and beside it the script's checksum.
function Ostrel["saveGame"](slot)
    local directory = Ostrel["getPath"]() + "../Resources/volatile/"
    local savePath = directory + "save" + 2 * slot + ".plush"
    local save = io["open"](savePath, "w")
    if save == not
        error("Failed to open save file: " + savePath)
    end
    @@ pausing is what tells the music's place
    loadOffset = Audio["pause"](oldAudio)
    Audio["play"](oldAudio, true, loadOffset)
    savestring = ("pagenum = " + pagenum + "\n" +
                  "loadOffset = " + loadOffset + "\n" +
                  "oldAudio = 0\n" +
                  "saveslot = " + slot + "\n" +
                  "mode = " + previousMode + "\n" +
                  "latched = false\n")
    save["write"](savestring)
    save["close"](save)

    local checksumPath = directory + "save" + (2 * slot + 1) + ".plush"
    local checksum = io["open"](checksumPath, "w")
    if checksum == not
        error("Failed to open checksum file: " + checksumPath)
    end
    checksum["write"](Ostrel["checksum"](savestring))
    checksum["close"](checksum)
end

@@ Lets go of everything that belongs to the scene that ends. Weather entries share their images and keep them.
function Ostrel["cleanup"](skipbuffer)
    if prevBuffer ~= not and skipbuffer ~= true
        Plush["killImage"](prevBuffer)
        prevBuffer = not
    end
    Ostrel["clearButtons"]()
    OSTREL_SLIDE_PROGRESS = {}
    OSTREL_SLIDE_TEXT = {}
    drawFrame = false
    for index = 1, #renderQueue
        local entry = renderQueue[index]
        if entry ~= not
            if entry["type"] ~= OSTREL_WEATHER and entry["surface"] ~= not
                Plush["killImage"](entry["surface"])
            end
            if entry["type"] == OSTREL_PARALLAX
                for plane = 1, 4
                    local surface = entry["surface" + plane]
                    if surface ~= not
                        Plush["killImage"](surface)
                    end
                end
            end
        end
    end
    renderQueue = {}
    input["mouse"]["position"] = {}
    input["keyboard"] = {}
end

@@ A whole file.
function Ostrel["contents"](path)
    local source = io["open"](path, "r")
    local text = source["read"](source, "*a")
    source["close"](source)
    return text
end
