
@@ --- JSON ----------------------------------------------------------------------------------------------------------

@@ A value in the language's own table syntax. Texts stand in it without quotes.
function Ostrel["jsonEncode"](o)
    if typeOf(o) ~= "table"
        return toString(o)
    end
    local text = "{ "
    for k, v in pairs(o)
        local key = toString(k)
        if typeOf(k) ~= "number"
            key = "\"" + key + "\""
        end
        text = text + "[" + key + "] = " + Ostrel["jsonEncode"](v) + ","
    end
    return text + "} "
end

@@ The decoder's cursor: the text, the place of its next byte, and its length. One text at a time can be decoded.
ostrelJsonDecodeSource = ""
ostrelJsonDecodeIndex = 1
ostrelJsonDecodeLength = 0

function ostrelJsonParseError(message)
    error("Ostrel.jsonDecode: " + message + " at position " + ostrelJsonDecodeIndex)
end

function ostrelJsonSkipWhitespace()
    while ostrelJsonDecodeIndex <= ostrelJsonDecodeLength
        local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
        if char ~= " " and char ~= "\n" and char ~= "\r" and char ~= "\t"
            return
        end
        ostrelJsonDecodeIndex += 1
    end
end

@@ The bytes of one code point in UTF-8.
function ostrelJsonUtf8FromCodepoint(codepoint)
    if codepoint < 128
        return string["char"](codepoint)
    elseif codepoint < 2048
        return string["char"](192 + codepoint \ 64, 128 + codepoint % 64)
    elseif codepoint < 65536
        return string["char"](224 + codepoint \ 4096, 128 + (codepoint \ 64) % 64, 128 + codepoint % 64)
    end
    return string["char"](240 + codepoint \ 262144, 128 + (codepoint \ 4096) % 64,
                          128 + (codepoint \ 64) % 64, 128 + codepoint % 64)
end

@@ The text whose quote stands at the cursor.
function ostrelJsonParseString()
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] ~= "\""
        ostrelJsonParseError("expected string")
    end
    ostrelJsonDecodeIndex += 1
    local pieces = []
    while ostrelJsonDecodeIndex <= ostrelJsonDecodeLength
        local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
        if char == "\""
            ostrelJsonDecodeIndex += 1
            return table["concat"](pieces, "")
        elseif char ~= "\\"
            push(pieces, char)
            ostrelJsonDecodeIndex += 1
        else
            local kind = get(ostrelJsonDecodeSource, ostrelJsonDecodeIndex + 1, "")
            local plain = {
                "\"" = "\"", "\\" = "\\", "/" = "/",
                b = string["char"](8), f = string["char"](12), n = "\n", r = "\r", t = "\t"
            }
            if kind == "u"
                local codepoint = 0
                for place = ostrelJsonDecodeIndex + 2, ostrelJsonDecodeIndex + 5
                    local digit = toNumber(ostrelJsonDecodeSource[place], 16)
                    if digit == not
                        ostrelJsonParseError("invalid unicode escape")
                    end
                    codepoint = codepoint * 16 + digit
                end
                push(pieces, ostrelJsonUtf8FromCodepoint(codepoint))
                ostrelJsonDecodeIndex += 6
            elseif plain[kind] ~= not
                push(pieces, plain[kind])
                ostrelJsonDecodeIndex += 2
            else
                ostrelJsonParseError("invalid escape sequence")
            end
        end
    end
    ostrelJsonParseError("unterminated string")
end

@@ The number that begins at the cursor.
function ostrelJsonParseNumber()
    local first = ostrelJsonDecodeIndex
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] == "-"
        ostrelJsonDecodeIndex += 1
    end
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] == "0"
        ostrelJsonDecodeIndex += 1
    elseif ostrelJsonSkipDigits() == 0
        ostrelJsonParseError("invalid number")
    end
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] == "."
        ostrelJsonDecodeIndex += 1
        if ostrelJsonSkipDigits() == 0
            ostrelJsonParseError("invalid number")
        end
    end
    local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
    if char == "e" or char == "E"
        ostrelJsonDecodeIndex += 1
        char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
        if char == "+" or char == "-"
            ostrelJsonDecodeIndex += 1
        end
        if ostrelJsonSkipDigits() == 0
            ostrelJsonParseError("invalid number")
        end
    end
    local text = ""
    for place = first, ostrelJsonDecodeIndex - 1
        text += ostrelJsonDecodeSource[place]
    end
    local number = toNumber(text)
    if number == not
        ostrelJsonParseError("invalid number")
    end
    return number
end

@@ Moves the cursor behind a run of digits and says how many they were.
function ostrelJsonSkipDigits()
    local first = ostrelJsonDecodeIndex
    local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
    while char ~= not and char >= "0" and char <= "9"
        ostrelJsonDecodeIndex += 1
        char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
    end
    return ostrelJsonDecodeIndex - first
end

@@ The array whose bracket stands at the cursor. An element of null is no element: the next one takes its place.
function ostrelJsonParseArray()
    local elements = []
    ostrelJsonDecodeIndex += 1
    ostrelJsonSkipWhitespace()
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] == "]"
        ostrelJsonDecodeIndex += 1
        return elements
    end
    while true
        local value = ostrelJsonParseValue()
        if value ~= not
            push(elements, value)
        end
        ostrelJsonSkipWhitespace()
        local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
        if char ~= "," and char ~= "]"
            ostrelJsonParseError("expected , or ] in array")
        end
        ostrelJsonDecodeIndex += 1
        if char == "]"
            return elements
        end
    end
end

@@ The object whose brace stands at the cursor.
function ostrelJsonParseObject()
    local object = {}
    ostrelJsonDecodeIndex += 1
    ostrelJsonSkipWhitespace()
    if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] == "}"
        ostrelJsonDecodeIndex += 1
        return object
    end
    while true
        ostrelJsonSkipWhitespace()
        local key = ostrelJsonParseString()
        ostrelJsonSkipWhitespace()
        if ostrelJsonDecodeSource[ostrelJsonDecodeIndex] ~= ":"
            ostrelJsonParseError("expected : after object key")
        end
        ostrelJsonDecodeIndex += 1
        object[key] = ostrelJsonParseValue()
        ostrelJsonSkipWhitespace()
        local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
        if char ~= "," and char ~= "}"
            ostrelJsonParseError("expected , or } in object")
        end
        ostrelJsonDecodeIndex += 1
        if char == "}"
            return object
        end
    end
end

@@ The value of any kind that follows at the cursor.
function ostrelJsonParseValue()
    ostrelJsonSkipWhitespace()
    local char = ostrelJsonDecodeSource[ostrelJsonDecodeIndex]
    if char == "{"
        return ostrelJsonParseObject()
    elseif char == "["
        return ostrelJsonParseArray()
    elseif char == "\""
        return ostrelJsonParseString()
    elseif char == "-" or (char ~= not and char >= "0" and char <= "9")
        return ostrelJsonParseNumber()
    end
    local word = ""
    local place = ostrelJsonDecodeIndex
    while char ~= not and char >= "a" and char <= "z" and #word < 6
        word += char
        place += 1
        char = ostrelJsonDecodeSource[place]
    end
    if word ~= "true" and word ~= "false" and word ~= "null"
        ostrelJsonParseError("unexpected token")
    end
    ostrelJsonDecodeIndex = place
    if word ~= "null"
        return word == "true"
    end
end

@@ The table or array that a JSON text describes.
function Ostrel["jsonDecode"](jsonString)
    if typeOf(jsonString) ~= "string"
        error("Ostrel.jsonDecode expects a JSON string")
    end
    ostrelJsonDecodeSource = jsonString
    ostrelJsonDecodeIndex = 1
    ostrelJsonDecodeLength = #jsonString
    local value = ostrelJsonParseValue()
    ostrelJsonSkipWhitespace()
    if ostrelJsonDecodeIndex <= ostrelJsonDecodeLength
        ostrelJsonParseError("unexpected trailing data")
    end
    if typeOf(value) ~= "table"
        ostrelJsonParseError("root value must be object or array")
    end
    return value
end
