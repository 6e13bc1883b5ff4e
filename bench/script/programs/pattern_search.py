import re
text = "the quick brown fox 12345 jumps over 678 lazy dogs; " * 8000
words = 0
total = 0
for word in re.finditer("[A-Za-z]+", text):
    words += 1
for digits in re.finditer("[0-9]+", text):
    total += len(digits.group())
found = 0
start = 0
pattern = re.compile("o[A-Za-z]")
while True:
    place = pattern.search(text, start)
    if place is None:
        break
    found += 1
    start = place.start() + 1
print(words + total + found)
