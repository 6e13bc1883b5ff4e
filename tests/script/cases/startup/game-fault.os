print("before")
error("the game gave up")
print("after")
