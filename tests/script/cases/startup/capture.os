capture = Ostrel["capture"]
print("[" + capture("echo plain") + "]")
raw = capture("echo plain", true)
print("[" + string["sub"](raw, 1, 5) + "]", #raw > 5)
print("[" + capture("echo one&& echo two&& echo three") + "]")
print("[" + capture("exit 3") + "]", "[" + capture("exit 3", true) + "]")
