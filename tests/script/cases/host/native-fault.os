@@ a native fault in a line gets the line's position
Ostrel["sleep"]("long")
