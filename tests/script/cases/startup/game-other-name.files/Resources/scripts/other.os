print("the other game", OSTREL_SCRIPT)
