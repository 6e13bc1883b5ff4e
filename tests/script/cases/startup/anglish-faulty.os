ok, message = pcall(registerAnglish)
print(ok, string["find"](message, "Libraries/anglish:1", 1, true) ~= not)
