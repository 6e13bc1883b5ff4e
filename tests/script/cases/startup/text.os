@@ Characters of UTF-8 texts, and what stands in for the text engines that a game has not asked for.
print("len:", Ostrel["utf8lenSafe"]("héllo"), Ostrel["utf8lenSafe"](""), Ostrel["utf8lenSafe"](not), Ostrel["utf8lenSafe"](5), Ostrel["utf8lenSafe"]({}))
sub = Ostrel["utf8subSafe"]
print("sub:", sub("héllo", 2, 3), sub("héllo", 2), sub("héllo"), sub("héllo", 3, 3))
print("sub-negative:", sub("héllo", -2), sub("héllo", -4, -3), sub("héllo", 1, -2))
print("sub-clamped:", sub("héllo", -99, 2), sub("héllo", 0, 1), sub("héllo", 4, 99))
print("sub-empty:", "[" + sub("héllo", 4, 3) + "]", "[" + sub("", 1, 1) + "]", "[" + sub(not, 1, 1) + "]", "[" + sub(7, 1, 1) + "]", "[" + sub("ab", 3) + "]")
prefix = Ostrel["utf8prefixSafe"]
print("prefix:", prefix("héllo", 1), prefix("héllo", 2), prefix("héllo", 99))
print("prefix-wide:", prefix("a€𝄞z", 2), prefix("a€𝄞z", 3), prefix("a€𝄞z", 4))
print("prefix-empty:", "[" + prefix("abc", 0) + "]", "[" + prefix("abc", -1) + "]", "[" + prefix("abc", not) + "]", "[" + prefix("", 2) + "]", "[" + prefix(5, 2) + "]")
print("prefix-of-stray-bytes:", #prefix(string["char"](128, 129, 130), 2), #prefix(string["char"](240, 65), 1))
print("anglish:", Ostrel["translateAnglish"]("as it is"), Ostrel["processAnglish"]("as it is"))
print("gender:", Ostrel["processGender"]("as it is"), Ostrel["processGender"](not))
