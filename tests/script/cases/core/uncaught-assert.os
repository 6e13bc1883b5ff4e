print("before")
assert(1 == 2, "the game can not go on")
print("never")
