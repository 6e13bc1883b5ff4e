@@ The log gathers entries while `debugger` is exactly true, and a shown frame prints it.
OSTREL_PROCESSOR_NAME = "cpu"
OSTREL_OS_PLATFORM = "os"
OSTREL_OS_VERSION = 7
Ostrel["logPush"]("not wanted")
debugger = 1
Ostrel["logPush"]("not wanted")
debugger = "true"
Ostrel["logPush"]("not wanted")
print("off:", "[" + debuglog + "]", debugentries)
debugger = true
Ostrel["logPush"]("first")
Ostrel["logPush"](2.5)
print("gathered:", debugentries)
print("[" + debuglog + "]")
function ostrelForceUpdate()
    print("frame, log:", "[" + debuglog + "]")
    return "native result"
end
print("update:", Metal["forceUpdate"]())
print("nothing to flush:")
Ostrel["flushDebugLog"]()
Ostrel["logPush"]("again")
Ostrel["flushDebugLog"]()
print("after:", "[" + debuglog + "]", debugentries)
