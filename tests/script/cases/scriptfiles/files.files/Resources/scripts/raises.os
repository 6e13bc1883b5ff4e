error("raised in a file")
