print("never reached")
