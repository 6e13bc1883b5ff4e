local y = 1
break
