@@ The player's name comes from the shell where the system does not tell it.
OSTREL_WINDOWS_ENABLED = false
function Ostrel["capture"](cmd)
    print("asked:", cmd)
    return userName
end
function try(name)
    userName = name
    OSTREL_FEMALE = "unset"
    registerGenderEngine()
    print("name:", OSTREL_TMP0, OSTREL_FEMALE)
end
try("maria")
try("emily")
try("jane")
try("JANE")
try("tom")
try("")
OSTREL_WINDOWS_ENABLED = true
OSTREL_USER_NAME = "anna"
registerGenderEngine()
print("told:", OSTREL_TMP0, OSTREL_FEMALE)
OSTRELBOOT_ENABLED = true
registerGenderEngine()
print("own system:", OSTREL_TMP0, OSTREL_FEMALE)
process = Ostrel["processGender"]
print("process:", process(not), process("the king and the kings"), "[" + process("") + "]")
print("marks-lose-their-meaning:", process("a.b axb a%%%1b a%1b"))
