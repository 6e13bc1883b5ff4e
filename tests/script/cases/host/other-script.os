print("never reached: graphics.os names another script")
