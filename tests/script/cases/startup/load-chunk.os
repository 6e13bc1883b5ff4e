f = ostrelLoadChunkOrError("made = 41 + 1\nreturn made", "name.os")
print("good:", typeOf(f), f(), made)
ok, message = pcall(ostrelLoadChunkOrError, "if true\nx = 1", "name.os")
print("bad:", ok, message)
ok, message = pcall(ostrelLoadChunkOrError, "x = \"open", "name.os")
print("located:", ok, string["find"](message, "at name.os:1, near token", 1, true) ~= not)
function load(text, name)
    return not
end
ok, message = pcall(ostrelLoadChunkOrError, "x = 1", "name.os")
print("no-reason:", ok, message)
