@@ two values
return 1, 2
