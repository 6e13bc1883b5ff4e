@@ A row of the table that matches sets the pace and the workers.
print("row:", OSTREL_PROCESSOR, threads)
print("pace:", maxFramerate, OSTREL_FRAMERATE)
print("in-table:", contains(OSTREL_TMP1, OSTREL_PROCESSOR))

print("rows:", #OSTREL_TMP1)
function show(name)
    local found = []
    for index = 1, #OSTREL_TMP1
        if OSTREL_TMP1[index][1] == name
            push(found, OSTREL_TMP1[index])
        end
    end
    print("row:", found)
end
show("PowerPC G3")
show("PowerPC G5")
show("Unknown Intel")
show("Intel(R) Core(TM) i7-8700K CPU @ 3.70GHz")
show("Intel(R) Xeon(R) W-3275M CPU @ 2.50GHz")
show("Apple M1")
show("Apple A18 Pro")
show("IBM POWER8")
wrong = 0
for index = 1, #OSTREL_TMP1
    local row = OSTREL_TMP1[index]
    if #row ~= 3 or typeOf(row[1]) ~= "string" or typeOf(row[2]) ~= "number" or row[2] < 1 or row[3] <= 0
        wrong += 1
    end
end
print("malformed:", wrong)

matches = ostrelProcessorNameMatches
print("equal:", matches("Apple M1", "Apple M1"), matches("", ""))
print("endings:", matches("P r", "P"), matches("P rev 2", "P"), matches("P part 5", "P"), matches("P version 1", "P"), matches("P implementer x", "P"))
print("longer-names:", matches("Apple M1 Pro", "Apple M1"), matches("Apple M10", "Apple M1"), matches("P  rev", "P"), matches("Prev", "P"), matches("P par", "P"))
print("shorter-names:", matches("Apple", "Apple M1"), matches("", "P"))
print("no-strings:", matches(5, "5"), matches("P rev", not), matches(not, "P"))
