print("before")
x = 1 + {}
print("never")
