print("not this one")
