@@ The pipe is played by a stand-in, so that its bytes are the same on every system.
function io["popen"](cmd, mode)
    print("popen:", cmd, mode)
    if cmd == "nothing"
        return not
    end
    local pipe = {}
    function pipe["read"](file, format)
        return cmd
    end
    function pipe["close"](file)
        print("closed")
    end
    return pipe
end
print("[" + Ostrel["capture"](" \t\n a  b\r\n\n\rc \n d" + string["char"](11, 12, 32)) + "]")
print("[" + Ostrel["capture"](" \n ") + "]")
print("[" + Ostrel["capture"](" a ", true) + "]")
ok, message = pcall(Ostrel["capture"], "nothing")
print(ok, message)
