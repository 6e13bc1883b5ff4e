print("graphics")
