print("game:", Metal["forceUpdate"](), typeOf(file), file["close"]())
