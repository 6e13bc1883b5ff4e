print(Ostrel["hexDump"]("abc"))
print(Ostrel["hexDump"]("0123456789" + string["char"](0, 31, 127, 255) + " ~"))
print(Ostrel["hexDump"]("twelve bytes"))
print("[" + Ostrel["hexDump"]("") + "]")
