@@ every table is there with all its keys; one without a feature says so, whatever it is given
tables = {Ruby = Ruby, Lua = Lua, Audio = Audio, AI = AI, Font = Font, Jade = Jade}
for place, name in ipairs(keys(tables))
    print(name + ":", typeOf(tables[name]), #keys(tables[name]))
end
ok, message = pcall(Audio["open"], "tune.wav")
print(ok, message)
ok, message = pcall(Font["renderText"])
print(ok, message)
ok, message = pcall(Lua["setVar"], "a", [1, 2], not)
print(ok, message)
ok, message = pcall(Plush["raycast"], $10)
print(ok, message)
@@ and gives way to what a game puts in its place
function Audio["open"](path)
    return "the track of " + path
end
print(Audio["open"]("tune.wav"))
