x = 1

x = x - "text"
