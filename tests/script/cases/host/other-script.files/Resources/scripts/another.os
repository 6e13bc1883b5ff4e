print("the other script", OSTREL_SCRIPT)
