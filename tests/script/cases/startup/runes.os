@@ Texts in the codes of the runic font, and the stretches of a text that are to be shown in it.
runes = Ostrel["translateRunes"]
function show(text)
    print(text + " =>", runes(text))
end
show("")
show("The Queen knew what I kept")
show("STEEL, steal and field")
show("Kyoto; kangaroo, KIND kettle")
show("A uue AHEAD egg, skiing back")
show("say \"don't\" <break>twice<bind>")
show("crème brûlée, Łódź, Þór, œuvre, straße")
show("Jazz quiz: vex, zoo 1.5%")
print("rows:", #translator, translator[1], translator[#translator])
startTag = "<r>"
endTag = "</r>"
process = Ostrel["processRunes"]
print("one:", process("see <r>The Ring</r> here"))
print("several:", process("<r>ab</r><r>cd</r> - <r></r>."))
print("none:", process("plain"), process("<r>open"), process("shut</r>"), process("</r>turned<r>"))
