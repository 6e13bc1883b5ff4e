decode = Ostrel["jsonDecode"]
t = decode(" { \"a\" : 1 , \"b\" : [ true , false , null , \"x\" ] ,\n\t\"c\" : { } , \"d\" : null }\r\n")
print("object:", t["a"], t["b"], #keys(t["c"]), t["d"])
print("null-in-array:", #decode("[null]"), #decode("[1,null,2]"), decode("[1,null,2]"))
print("empty-array:", #decode("[]"), typeOf(decode("[ ]")))
print("integers:", decode("[0,-0,7,-12,2147483647]"))
print("wide:", typeOf(decode("[2147483648]")[1]), decode("[2147483648]")[1])
print("fractions:", decode("[0.5,-1.25,1e3,1E+2,25e-1]"))
print("escapes:", decode("[\"\\\"\\\\\\/\"]")[1])
print("control-escapes:", string["byte"](decode("[\"\\b\"]")[1]), string["byte"](decode("[\"\\f\"]")[1]), string["byte"](decode("[\"\\n\"]")[1]), string["byte"](decode("[\"\\r\"]")[1]), string["byte"](decode("[\"\\t\"]")[1]))
print("unicode:", decode("{\"a\":\"\\u00e9\"}")["a"], #decode("{\"a\":\"\\u00e9\"}")["a"], decode("[\"\\u0041\\u20AC\"]")[1], #decode("[\"\\u20AC\"]")[1])
pair = decode("[\"\\ud834\\udd1e\"]")[1]
print("no-surrogate-pairs:", #pair)
print("raw-bytes:", decode("[\"é\"]")[1])
print("deep:", decode("[[[[{\"k\":[1]}]]]]")[1][1][1][1]["k"][1])
print("repeated-key:", decode("{\"a\":1,\"a\":2}")["a"])
print("empty-key:", decode("{\"\":3}")[""])
text = "["
for i = 1, 2000
    text += "{\"id\":" + i + ",\"name\":\"entry\"},"
end
list = decode(text + "0]")
print("long:", #list, list[2000]["id"], list[2000]["name"], list[2001])
print("codepoints:", #ostrelJsonUtf8FromCodepoint(127), #ostrelJsonUtf8FromCodepoint(128), #ostrelJsonUtf8FromCodepoint(2047), #ostrelJsonUtf8FromCodepoint(2048), #ostrelJsonUtf8FromCodepoint(65535), #ostrelJsonUtf8FromCodepoint(65536), ostrelJsonUtf8FromCodepoint(119070))
