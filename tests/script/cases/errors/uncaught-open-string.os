@@ A string that is never closed.
print("before")
x = "open

print("never")
