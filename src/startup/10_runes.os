@@ The startup library of the engine.
@@
@@ It runs before anything of a game: it adds to the native tables what is easier said in script, finds out about the
@@ machine, makes the globals of the presentation layer, and at last runs the game's own two scripts. A word on its
@@ style: names are looked up in whatever scopes are live, so a function here keeps everything of its own `local`;
@@ what it leaves as a global is meant to be seen.

@@ --- Runes ---------------------------------------------------------------------------------------------------------

@@ A text in the codes of a runic font. The pairs are applied one after the other, each to what the one before left, so
@@ their order counts: words and pairs of letters come before the letters that they consist of, and what a pair puts in
@@ must not be found by a later one unless that is wanted.
function Ostrel["translateRunes"](t)
    translator = {
        @@ the two mark tags
        {"<break>", "|"}, {"<bind>", "_"},
        @@ quote and apostrophe with a backslash in front
        {"\"", "\\\\\""}, {"'", "\\\\'"},
        @@ the long e before l
        {"EEL", "1l"}, {"EEl", "1l"}, {"EeL", "1l"}, {"Eel", "1l"}, {"eEL", "1l"}, {"eEl", "1l"}, {"eeL", "1l"},
        {"eel", "1l"}, {"EAL", "1l"}, {"EAl", "1l"}, {"EaL", "1l"}, {"Eal", "1l"}, {"eAL", "1l"}, {"eAl", "1l"},
        {"eaL", "1l"}, {"eal", "1l"}, {"IEL", "1l"}, {"IEl", "1l"}, {"IeL", "1l"}, {"Iel", "1l"}, {"iEL", "1l"},
        {"iEl", "1l"}, {"ieL", "1l"}, {"iel", "1l"},
        @@ kn and qu
        {"KN", "2"}, {"Kn", "2"}, {"kN", "2"}, {"kn", "2"}, {"QU", "3"}, {"Qu", "3"}, {"qU", "3"}, {"qu", "3"},
        @@ k before each vowel
        {"KA", "4a"}, {"Ka", "4a"}, {"kA", "4a"}, {"ka", "4a"}, {"KE", "4e"}, {"Ke", "4e"}, {"kE", "4e"},
        {"ke", "4e"}, {"KI", "4i"}, {"Ki", "4i"}, {"kI", "4i"}, {"ki", "4i"}, {"KO", "4o"}, {"Ko", "4o"},
        {"kO", "4o"}, {"ko", "4o"}, {"KU", "4u"}, {"Ku", "4u"}, {"kU", "4u"}, {"ku", "4u"}, {"KY", "4y"},
        {"Ky", "4y"}, {"kY", "4y"}, {"ky", "4y"},
        @@ thorn, and the w, which old books write as two u
        {"TH", "5"}, {"Th", "5"}, {"tH", "5"}, {"th", "5"}, {"W", "w"}, {"UU", "w"}, {"Uu", "w"}, {"uU", "w"},
        {"uu", "w"},
        @@ the word I
        {" I ", " 7 "}, {" i ", " 7 "},
        @@ vowels of two letters
        {"UE", "8"}, {"Ue", "8"}, {"uE", "8"}, {"ue", "8"}, {"EW", "8"}, {"Ew", "8"}, {"eW", "8"}, {"ew", "8"},
        @@ ng, the ring
        {"NG", "9"}, {"Ng", "9"}, {"nG", "9"}, {"ng", "9"},
        @@ vowels of two letters, the long ones
        {"OO", "0"}, {"Oo", "0"}, {"oO", "0"}, {"oo", "0"}, {"AH", "+"}, {"Ah", "+"}, {"aH", "+"}, {"ah", "+"},
        {"EA", "="}, {"Ea", "="}, {"eA", "="}, {"ea", "="},
        @@ doubled and bound consonants
        {"GG", "&"}, {"Gg", "&"}, {"gG", "&"}, {"gg", "&"}, {"ST", "#"}, {"St", "#"}, {"sT", "#"}, {"st", "#"},
        @@ the doubled i
        {"II", ";"}, {"Ii", ";"}, {"iI", ";"}, {"ii", ";"},
        @@ consonants that count as one
        {"CK", "k"}, {"Ck", "k"}, {"cK", "k"}, {"ck", "k"}, {"LL", "~"}, {"Ll", "~"}, {"lL", "~"}, {"ll", "~"},
        @@ letters with marks, which lose them
        {"À", "a"}, {"Á", "a"}, {"Â", "a"}, {"Ã", "a"}, {"Ä", "a"}, {"Å", "a"}, {"à", "a"}, {"á", "a"}, {"â", "a"},
        {"ã", "a"}, {"ä", "a"}, {"å", "a"}, {"Ā", "a"}, {"ā", "a"}, {"Ą", "a"}, {"ą", "a"}, {"Ç", "c"}, {"ç", "c"},
        {"Ć", "c"}, {"ć", "c"}, {"È", "e"}, {"É", "e"}, {"Ê", "e"}, {"Ë", "e"}, {"è", "e"}, {"é", "e"}, {"ê", "e"},
        {"ë", "e"}, {"Ē", "e"}, {"ē", "e"}, {"Ę", "e"}, {"ę", "e"}, {"Ì", "i"}, {"Í", "i"}, {"Î", "i"}, {"Ï", "i"},
        {"ì", "i"}, {"í", "i"}, {"î", "i"}, {"ï", "i"}, {"Ī", "i"}, {"ī", "i"}, {"Ñ", "n"}, {"ñ", "n"}, {"Ń", "n"},
        {"ń", "n"}, {"Ò", "o"}, {"Ó", "o"}, {"Ô", "o"}, {"Õ", "o"}, {"Ö", "o"}, {"Ø", "o"}, {"ò", "o"}, {"ó", "o"},
        {"ô", "o"}, {"õ", "o"}, {"ö", "o"}, {"ø", "o"}, {"Ō", "o"}, {"ō", "o"}, {"Ù", "u"}, {"Ú", "u"}, {"Û", "u"},
        {"Ü", "u"}, {"ù", "u"}, {"ú", "u"}, {"û", "u"}, {"ü", "u"}, {"Ū", "u"}, {"ū", "u"}, {"Ý", "y"}, {"ý", "y"},
        {"ÿ", "y"}, {"Ÿ", "y"}, {"Š", "s"}, {"š", "s"}, {"Ś", "s"}, {"ś", "s"}, {"ß", "s"}, {"Ž", "z"}, {"ž", "z"},
        {"Ź", "z"}, {"ź", "z"}, {"Ż", "z"}, {"ż", "z"}, {"Ł", "l"}, {"ł", "l"}, {"Æ", "="}, {"æ", "="}, {"Œ", "="},
        {"œ", "="}, {"Þ", "5"}, {"þ", "5"}, {"Ð", "5"}, {"ð", "5"},
        @@ the capitals
        {"A", "a"}, {"B", "b"}, {"C", "c"}, {"D", "d"}, {"E", "e"}, {"F", "f"}, {"G", "g"}, {"H", "h"}, {"I", "i"},
        {"J", "j"}, {"K", "k"}, {"L", "l"}, {"M", "m"}, {"N", "n"}, {"O", "o"}, {"P", "p"}, {"Q", "q"}, {"R", "r"},
        {"S", "s"}, {"T", "t"}, {"U", "u"}, {"V", "v"}, {"X", "x"}, {"Y", "y"}, {"Z", "z"},
        @@ letters without a rune of their own
        {"c", "k"}, {"j", "y"}, {"q", "k"}, {"v", "f"}, {"w", "6"}, {"x", "ks"}, {"z", "s"},
        @@ the blank, last of all: rows above still look for it
        {" ", "*"}
    }
    for index = 1, #translator
        t = string["gsub"](t, translator[index][1], translator[index][2])
    end
    return t
end
