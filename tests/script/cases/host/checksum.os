checksum = Ostrel["checksum"]
print("empty:", checksum(""), typeOf(checksum("")))
print("one byte:", checksum("a"), checksum(" "), checksum("\n"))
print("two bytes:", checksum("ab"), checksum("ba"))
print("three bytes:", checksum("abc"))
print("bytes above 127 count as such:", checksum("é"))
print("the top bits come round:", checksum("zzzzzzzzzzz"))
print("long:", checksum(string["rep"]("0123456789", 20000)) == checksum(string["rep"]("0123456789", 20000)))
