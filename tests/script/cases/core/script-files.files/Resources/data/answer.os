ran = ran + 1
return 42
