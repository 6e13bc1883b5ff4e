
@@ --- Text ----------------------------------------------------------------------------------------------------------

@@ The text as it is, until registerAnglish puts its word book in.
function Ostrel["translateAnglish"](t)
    return t
end

@@ Characters of a text; bytes, where it cannot be counted in characters.
function Ostrel["utf8lenSafe"](s)
    if typeOf(s) ~= "string"
        return 0
    end
    local counted, count = pcall(utf8["len"], s)
    if counted and typeOf(count) == "number"
        return count
    end
    return #s
end

@@ The characters from i to j; negative places count from the end.
function Ostrel["utf8subSafe"](s, i, j)
    if typeOf(s) ~= "string"
        return ""
    end
    local length = Ostrel["utf8lenSafe"](s)
    if length <= 0
        return ""
    end
    if i == not
        i = 1
    end
    if j == not
        j = length
    end
    if i < 0
        i = length + i + 1
    end
    if j < 0
        j = length + j + 1
    end
    if i < 1
        i = 1
    end
    if j > length
        j = length
    end
    if i > j
        return ""
    end
    local first = utf8["offset"](s, i)
    if first == not
        return string["sub"](s, i, j)
    end
    local behind = utf8["offset"](s, j + 1)
    if behind == not
        return string["sub"](s, first)
    end
    return string["sub"](s, first, behind - 1)
end

@@ The first `count` characters, by the lengths that their lead bytes announce.
function Ostrel["utf8prefixSafe"](s, count)
    if typeOf(s) ~= "string" or count == not
        return ""
    end
    if count <= 0 or #s == 0
        return ""
    end
    local place = 1
    local taken = 0
    while taken < count and place <= #s
        local lead = string["byte"](s, place)
        if lead >= 240
            place += 4
        elseif lead >= 224
            place += 3
        elseif lead >= 192
            place += 2
        else
            place += 1
        end
        taken += 1
    end
    return string["sub"](s, 1, place - 1)
end

@@ How far each sliding text of the render queue is revealed, and which text that was.
OSTREL_SLIDE_PROGRESS = {}
OSTREL_SLIDE_TEXT = {}

@@ A queue entry's key in the two tables above. A moved entry gets another key and starts again.
function Ostrel["slideStateKey"](entry, queueIndex)
    return (toString(queueIndex) + ":" + toString(entry["identifier"]) + ":" +
            toString(entry["x"]) + ":" + toString(entry["y"]))
end

@@ Reveals one more character of the entry's text; the part that shows goes to its `text2`.
@@ Gives that part, the text's length and the characters that show.
function Ostrel["stepSlideText"](entry, queueIndex)
    local hasText = typeOf(entry["text"]) == "string" and entry["text"] ~= ""
    local hasSecondText = typeOf(entry["text2"]) == "string" and entry["text2"] ~= ""
    if not hasText and hasSecondText
        entry["text"] = entry["text2"]
        entry["text2"] = ""
    end
    local stateKey = Ostrel["slideStateKey"](entry, queueIndex)
    local text = entry["text"]
    if typeOf(text) ~= "string"
        text = ""
    end
    if OSTREL_SLIDE_TEXT[stateKey] ~= text or OSTREL_SLIDE_PROGRESS[stateKey] == not
        OSTREL_SLIDE_TEXT[stateKey] = text
        OSTREL_SLIDE_PROGRESS[stateKey] = 0
    end
    local length = Ostrel["utf8lenSafe"](text)
    local progress = OSTREL_SLIDE_PROGRESS[stateKey]
    if progress < length
        progress += 1
        OSTREL_SLIDE_PROGRESS[stateKey] = progress
    end
    local partial = Ostrel["utf8prefixSafe"](text, progress)
    if partial == "" and progress > 0
        partial = string["sub"](text, 1, progress)
    end
    entry["text2"] = partial
    return partial, length, progress
end

@@ The text with every stretch between the game's `startTag` and `endTag` translated, and without the tags.
function ostrelTranslateTagged(inputString, translate)
    while true
        local openStart, openEnd = string["find"](inputString, startTag)
        if openStart == not
            return inputString
        end
        local closeStart, closeEnd = string["find"](inputString, endTag, openEnd + 1)
        if closeStart == not
            return inputString
        end
        local before = string["sub"](inputString, 1, openStart - 1)
        local content = string["sub"](inputString, openEnd + 1, closeStart - 1)
        local behind = string["sub"](inputString, closeEnd + 1)
        inputString = before + translate(content) + behind
    end
end

function Ostrel["processRunes"](inputString)
    return ostrelTranslateTagged(inputString, Ostrel["translateRunes"])
end

@@ The text as it is, until registerAnglish is called.
function Ostrel["processAnglish"](inputString)
    return inputString
end

@@ The text as it is, or an empty list of pages, until registerGenderEngine is called.
function Ostrel["processGender"](t)
    if t == not
        return "pages = {}"
    end
    return t
end
