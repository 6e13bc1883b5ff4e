x = 1
if true
