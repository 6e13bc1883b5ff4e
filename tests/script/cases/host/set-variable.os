setVar = Ostrel["setVar"]
getVar = Ostrel["getVar"]
print("result:", setVar("a", 5))
print("stored:", a, getVar("a"))
print("unknown:", getVar("nothingOfThisName"))
print("any name:", setVar("two words", "x"), getVar("two words"))

@@ without a datatype the value is stored as it is
setVar("a")
print("missing value:", a)
setVar("a", not)
print("nil:", a)
setVar("a", "5", "0")
print("datatype that is no number:", a, typeOf(a))
setVar("a", "5", not)
print("nil datatype:", a, typeOf(a))
t = {x = 1}
setVar("a", t)
a["x"] = 2
print("shared table:", t["x"])

@@ 0: integer
setVar("a", 5.9, OSTREL_INT)
print("int:", a)
setVar("a", -5.9, 0)
print("int of a negative float:", a)
setVar("a", true, 0)
print("int of a boolean:", a, typeOf(a))
setVar("a", 3000000000.0, 0)
print("int of a large float:", a)
setVar("a", 7.5, 0.9)
print("datatype truncated:", a)
setVar("a", 7.5, false)
print("boolean datatype:", a)

@@ 1: float
setVar("a", 5, OSTREL_FLOAT)
print("float:", a)
setVar("a", true, 1)
print("float of a boolean:", a)

@@ 2: boolean
setVar("a", false, OSTREL_BOOL)
print("bool of a boolean:", a)
setVar("a", 0, 2)
print("bool of zero:", a)
setVar("a", 0.0, 2)
print("bool of zero float:", a)
setVar("a", 3, 2)
print("bool of a number:", a)
setVar("a", "", 2)
print("bool of a text:", a)
setVar("a", {}, 2)
print("bool of a table:", a)
setVar("a", not, 2)
print("bool of nil:", a)

@@ 3: string
setVar("a", "text", OSTREL_STRING)
print("string:", a)

@@ 4 and 5, and what is no datatype, store the value as it is
setVar("a", 5.5, OSTREL_FUNCTION)
print("function:", a)
setVar("a", "x", OSTREL_POINTER)
print("pointer:", a)
setVar("a", 5.5, 6)
print("six:", a)
setVar("a", 5.5, -1)
print("minus one:", a)
