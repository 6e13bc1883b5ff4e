
@@ --- The shell and raw bytes ---------------------------------------------------------------------------------------

@@ What a shell command prints; trimmed and on one line, unless `raw` is set.
function Ostrel["capture"](cmd, raw)
    local pipe = assert(io["popen"](cmd, "r"))
    local text = assert(pipe["read"](pipe, "*a"))
    pipe["close"](pipe)
    if raw
        return text
    end

    @@ White space are the blank and the codes 9 to 13.
    local first = 1
    local code = string["byte"](text, first)
    while code ~= not and (code == 32 or (code >= 9 and code <= 13))
        first += 1
        code = string["byte"](text, first)
    end
    local last = #text
    while last > first
        code = string["byte"](text, last)
        if code ~= 32 and (code < 9 or code > 13)
            break
        end
        last -= 1
    end

    local pieces = []
    local inBreak = false
    for place = first, last
        code = text[place]
        if code ~= "\n" and code ~= "\r"
            push(pieces, code)
            inBreak = false
        elseif not inBreak
            push(pieces, " ")
            inBreak = true
        end
    end
    return table["concat"](pieces, "")
end

@@ Rows of 8 bytes: the offset, the bytes in hexadecimal, and what of them is printable. A row begins with its line
@@ break, and the last one is filled up; if that is full already, with a whole row's blanks.
function Ostrel["hexDump"](str)
    local dump = ""
    local hexadecimal = ""
    local printable = ""
    for place = 1, #str
        if place % 8 == 1
            dump = dump + hexadecimal + printable + "\n"
            hexadecimal = string["format"]("%04x: ", place - 1)
            printable = ""
        end
        local code = string["byte"](str, place)
        hexadecimal += string["format"]("%02x ", code)
        if code >= 32 and code <= 126
            printable += str[place]
        else
            printable += "."
        end
    end
    return dump + hexadecimal + string["rep"]("   ", 8 - (#str) % 8) + printable
end
