import re
text = "the quick brown fox 12345 jumps over 678 lazy dogs; " * 8000
a = re.sub("[0-9]+", "<number>", text)
b = re.sub("([A-Za-z]+) ([A-Za-z]+)", r"\2 \1", text)
c = re.sub("[aeiou]", "", text)
print(len(a) + len(b) + len(c))
