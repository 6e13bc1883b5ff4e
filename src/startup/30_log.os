
@@ --- The debug log -------------------------------------------------------------------------------------------------

@@ Adds an entry to the log, if the game has set `debugger`.
function Ostrel["logPush"](message)
    if typeOf(debugger) ~= "boolean" or not debugger
        return
    end
    if debuglog == not or debuglog == ""
        debuglog = "LOG: " + OSTREL_PROCESSOR_NAME + ":" + OSTREL_OS_PLATFORM + ":" + OSTREL_OS_VERSION + "\n"
        debugentries = 0
    end
    debugentries += 1
    debuglog = debuglog + debugentries + ": " + toString(message) + "\n"
end

@@ Prints what the log has gathered and begins anew.
function Ostrel["flushDebugLog"]()
    if debuglog ~= not and debuglog ~= ""
        print(debuglog)
        debuglog = ""
        debugentries = 0
    end
end

@@ Adds a line to a file, if that can be opened.
function Ostrel["appendDebugFile"](path, message)
    local log = io["open"](path, "a")
    if log ~= not
        log["write"](log, toString(message) + "\n")
        log["close"](log)
    end
end
