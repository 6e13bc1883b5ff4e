
@@ --- The game ------------------------------------------------------------------------------------------------------

runFile(Ostrel["getPath"]() + "../Resources/package/graphics.os")

local finished, fault = pcall(runFile, Ostrel["getPath"]() + "../Resources/scripts/" + OSTREL_SCRIPT)
if not finished
    error(fault)
end
