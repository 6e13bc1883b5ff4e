path = Ostrel["getPath"]()
print("path:", path)
print("ends in a separator:", string["sub"](path, len(path)))
print("ignores arguments:", Ostrel["getPath"](5) == path)
