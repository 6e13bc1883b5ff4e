
@@ --- Numbers and lists ---------------------------------------------------------------------------------------------

function Ostrel["round"](num, numDecimalPlaces)
    return toNumber(string["format"]("%." + (numDecimalPlaces or 0) + "f", num))
end

@@ The upper bound is tested first, and so wins where the two cross.
function Ostrel["clamp"](num, min, max)
    if num > max
        return max
    end
    if num < min
        return min
    end
    return num
end

@@ The place of the first entry with this identifier, or -1.
function Ostrel["findID"](tbl, id)
    for index = 1, #tbl
        local entry = tbl[index]
        if typeOf(entry) == "table" and entry["identifier"] == id
            return index
        end
    end
    return -1
end

@@ Whether the number lies between the other two, whichever of them is greater, or on one of them.
function Ostrel["between"](num, min, max)
    return (num >= min and num <= max) or (num >= max and num <= min)
end

@@ Where something of the width `num2` begins that stands in the middle of `num`.
function Ostrel["middle"](num, num2)
    return num / 2 - num2 / 2
end
