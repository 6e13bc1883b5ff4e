x = 1
nothing(x)
