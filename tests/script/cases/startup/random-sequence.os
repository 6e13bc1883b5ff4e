@@ Each start begins with the same numbers.
print(math["random"](1000000), math["random"](1000000), random(1000000), math["random"]())
