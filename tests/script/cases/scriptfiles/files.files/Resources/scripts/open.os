x = "open
