@@ Audio is played by a stand-in, which notes what is asked of it.
Audio = {}
function Audio["pause"](track)
    print("pause", track)
    return 1500
end
function Audio["play"](track, loops, offset)
    print("play", track, loops, offset)
end
pagenum = 12
oldAudio = "tune"
previousMode = 54
saveslot = 1
Ostrel["saveGame"](3)
directory = Ostrel["getPath"]() + "../Resources/volatile/"
text = Ostrel["contents"](directory + "save6.plush")
print("[" + text + "]")
print("globals:", loadOffset, savestring == text)
print("checksum:", Ostrel["contents"](directory + "save7.plush") == toString(Ostrel["checksum"](text)))
chunk = load(text)
pagenum = 0
chunk()
print("loaded:", pagenum, loadOffset, oldAudio, saveslot, mode, latched)

ok, message = pcall(Ostrel["saveGame"], 1)
print("primary:", ok, message == "Failed to open save file: " + directory + "save2.plush")
ok, message = pcall(Ostrel["saveGame"], 2)
print("second:", ok, message == "Failed to open checksum file: " + directory + "save5.plush")
