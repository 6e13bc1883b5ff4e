print("graphics")
error("no graphics today")
