path = Ostrel["getPath"]() + "../Resources/volatile/debug.txt"
Ostrel["appendDebugFile"](path, "one")
Ostrel["appendDebugFile"](path, 2)
print(Ostrel["contents"](path))
Ostrel["appendDebugFile"](Ostrel["getPath"]() + "../no/such/directory.txt", "lost")
print("ignored")
ok, message = pcall(Ostrel["contents"], "no-such-file.txt")
print("contents-of-nothing:", ok)
