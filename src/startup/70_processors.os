
@@ --- Boot: processors ----------------------------------------------------------------------------------------------

@@ Whether the machine's name for its processor is a row's name, or that name and one of the endings that Linux adds.
function ostrelProcessorNameMatches(detectedName, tableName)
    if detectedName == tableName
        return true
    end
    if typeOf(detectedName) ~= "string" or typeOf(tableName) ~= "string"
        return false
    end
    if string["sub"](detectedName, 1, #tableName) ~= tableName
        return false
    end
    local ending = string["sub"](detectedName, #tableName + 1)
    return (string["sub"](ending, 1, 2) == " r" or string["sub"](ending, 1, 4) == " rev" or
            string["sub"](ending, 1, 5) == " part" or string["sub"](ending, 1, 8) == " version" or
            string["sub"](ending, 1, 12) == " implementer")
end

@@ Processors by name: the workers to give them, and the frames a second that they can be asked for. Old ones come
@@ first in each family.
OSTREL_TMP1 = []

@@ PowerPC
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC G3', 1, 0.75}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC G4', 1, 1.5}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC G5', 2, 2.25}

@@ Intel, when nothing more is known
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Unknown Intel', 2, 25}

@@ Pentium 4
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 2.40GHz', 1, 3}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 2.60GHz', 1, 4}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 2.66GHz', 1, 4}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 2.80GHz', 1, 4}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 3.00GHz', 1, 4}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 3.20GHz', 1, 4}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 3.40GHz', 1, 5}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 3.60GHz', 1, 5}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Pentium(R) 4 CPU 3.80GHz', 1, 5}

@@ Core Solo and Core Duo
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Solo CPU T1200 @ 1.50GHz', 1, 6}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Solo CPU T1300 @ 1.66GHz', 1, 7}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Solo CPU T1400 @ 1.83GHz', 1, 7}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU L2400 @ 1.66GHz', 2, 8}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2050 @ 1.60GHz', 2, 8}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2300 @ 1.66GHz', 2, 8}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2400 @ 1.83GHz', 2, 9}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2500 @ 2.00GHz', 2, 10}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2600 @ 2.16GHz', 2, 11}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) Duo CPU T2700 @ 2.33GHz', 2, 12}

@@ Core 2
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     L7500  @ 1.60GHz', 2, 10}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     L7700  @ 1.80GHz', 2, 11}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T5600  @ 1.83GHz', 2, 11}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7200  @ 2.00GHz', 2, 12}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7300  @ 2.00GHz', 2, 12}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7400  @ 2.16GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7500  @ 2.20GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7600  @ 2.33GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7700  @ 2.40GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T7800  @ 2.60GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T8100  @ 2.10GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T8300  @ 2.40GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9300  @ 2.50GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9400  @ 2.53GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9500  @ 2.60GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9550  @ 2.66GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9600  @ 2.80GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9800  @ 2.93GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     T9900  @ 3.06GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P7350  @ 2.00GHz', 2, 12}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P7550  @ 2.26GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P8400  @ 2.26GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P8600  @ 2.40GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P8700  @ 2.53GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     P8800  @ 2.66GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     SL9300  @ 1.60GHz', 2, 10}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     SL9400  @ 1.86GHz', 2, 11}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     SL9600  @ 2.13GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E6300  @ 1.86GHz', 2, 11}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E6400  @ 2.13GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E6600  @ 2.40GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E7600  @ 3.06GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8135  @ 2.66GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8235  @ 2.80GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8335  @ 2.93GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8400  @ 3.00GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8435  @ 3.06GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Duo CPU     E8600  @ 3.33GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q6600  @ 2.40GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q8200  @ 2.33GHz', 4, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q9300  @ 2.50GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q9400  @ 2.66GHz', 4, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q9550  @ 2.83GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM)2 Quad CPU    Q9650  @ 3.00GHz', 4, 22}

@@ Core i3
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3 CPU         530  @ 2.93GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3 CPU         540  @ 3.07GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3 CPU         550  @ 3.20GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-2100 CPU @ 3.10GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-2120 CPU @ 3.30GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-2310M CPU @ 2.10GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-2330M CPU @ 2.20GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-2350M CPU @ 2.30GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-3110M CPU @ 2.40GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-3120M CPU @ 2.50GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-3220 CPU @ 3.30GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-3225 CPU @ 3.30GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-3240 CPU @ 3.40GHz', 2, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-4000M CPU @ 2.40GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-4130 CPU @ 3.40GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-4150 CPU @ 3.50GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-4170 CPU @ 3.70GHz', 2, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-4330 CPU @ 3.50GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-5005U CPU @ 2.00GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-5010U CPU @ 2.10GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-6100 CPU @ 3.70GHz', 2, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-6100U CPU @ 2.30GHz', 2, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-6300 CPU @ 3.80GHz', 2, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-7100 CPU @ 3.90GHz', 2, 30}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-7100U CPU @ 2.40GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-7350K CPU @ 4.20GHz', 2, 31}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-8100 CPU @ 3.60GHz', 4, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-8100B CPU @ 3.60GHz', 4, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-8130U CPU @ 2.20GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-8350K CPU @ 4.00GHz', 4, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-9100 CPU @ 3.60GHz', 4, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-10100 CPU @ 3.60GHz', 4, 39}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i3-1000NG4 CPU @ 1.10GHz', 2, 18}

@@ Core i5
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5 CPU         650  @ 3.20GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5 CPU         680  @ 3.60GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5 CPU         750  @ 2.67GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5 CPU         760  @ 2.80GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2300 CPU @ 2.80GHz', 4, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2400 CPU @ 3.10GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2400S CPU @ 2.50GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2415M CPU @ 2.30GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2430M CPU @ 2.40GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2435M CPU @ 2.40GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2467M CPU @ 1.60GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2500 CPU @ 3.30GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2500K CPU @ 3.30GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2500S CPU @ 2.70GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2520M CPU @ 2.50GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-2557M CPU @ 1.70GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3210M CPU @ 2.50GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3317U CPU @ 1.70GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3320M CPU @ 2.60GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3330S CPU @ 2.70GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3335S CPU @ 2.70GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3427U CPU @ 1.80GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3450 CPU @ 3.10GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3470 CPU @ 3.20GHz', 4, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3470S CPU @ 2.90GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3570 CPU @ 3.40GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-3570K CPU @ 3.40GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4250U CPU @ 1.30GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4258U CPU @ 2.40GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4260U CPU @ 1.40GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4278U CPU @ 2.60GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4288U CPU @ 2.60GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4308U CPU @ 2.80GHz', 2, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4570 CPU @ 3.20GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4570R CPU @ 2.70GHz', 4, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4590 CPU @ 3.30GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4670 CPU @ 3.40GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4670K CPU @ 3.40GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4690 CPU @ 3.50GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-4690K CPU @ 3.50GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5200U CPU @ 2.20GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5250U CPU @ 1.60GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5257U CPU @ 2.70GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5287U CPU @ 2.90GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5350U CPU @ 1.80GHz', 2, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5575R CPU @ 2.80GHz', 4, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-5675R CPU @ 3.10GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6200U CPU @ 2.30GHz', 2, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6267U CPU @ 2.90GHz', 2, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6300U CPU @ 2.40GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6360U CPU @ 2.00GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6400 CPU @ 2.70GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6500 CPU @ 3.20GHz', 4, 31}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6600 CPU @ 3.30GHz', 4, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-6600K CPU @ 3.50GHz', 4, 33}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7200U CPU @ 2.50GHz', 2, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7267U CPU @ 3.10GHz', 2, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7287U CPU @ 3.30GHz', 2, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7360U CPU @ 2.30GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7400 CPU @ 3.00GHz', 4, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7500 CPU @ 3.40GHz', 4, 34}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7600 CPU @ 3.50GHz', 4, 35}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-7600K CPU @ 3.80GHz', 4, 36}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8210Y CPU @ 1.60GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8250U CPU @ 1.60GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8257U CPU @ 1.40GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8259U CPU @ 2.30GHz', 4, 30}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8265U CPU @ 1.60GHz', 4, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8279U CPU @ 2.40GHz', 4, 31}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8400 CPU @ 2.80GHz', 6, 37}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8500 CPU @ 3.00GHz', 6, 39}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8500B CPU @ 3.00GHz', 6, 39}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8600 CPU @ 3.10GHz', 6, 39}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-8600K CPU @ 3.60GHz', 6, 42}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-9400 CPU @ 2.90GHz', 6, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-9600K CPU @ 3.70GHz', 6, 43}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-10400 CPU @ 2.90GHz', 6, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-10500 CPU @ 3.10GHz', 6, 41}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-10600 CPU @ 3.30GHz', 6, 42}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-10600K CPU @ 4.10GHz', 6, 47}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-1030NG7 CPU @ 1.10GHz', 4, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i5-1038NG7 CPU @ 2.00GHz', 4, 30}

@@ Core i7
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         860  @ 2.80GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         870  @ 2.93GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         920  @ 2.67GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         930  @ 2.80GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         950  @ 3.07GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU         970  @ 3.20GHz', 6, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU       M 620  @ 2.67GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7 CPU       M 640  @ 2.80GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2600 CPU @ 3.40GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2600K CPU @ 3.40GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2600S CPU @ 2.80GHz', 4, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2620M CPU @ 2.70GHz', 2, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2635QM CPU @ 2.00GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2675QM CPU @ 2.20GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2677M CPU @ 1.80GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2700K CPU @ 3.50GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2720QM CPU @ 2.20GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2760QM CPU @ 2.40GHz', 4, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2820QM CPU @ 2.30GHz', 4, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-2860QM CPU @ 2.50GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3520M CPU @ 2.90GHz', 2, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3615QM CPU @ 2.30GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3630QM CPU @ 2.40GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3635QM CPU @ 2.40GHz', 4, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3667U CPU @ 2.00GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3720QM CPU @ 2.60GHz', 4, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3740QM CPU @ 2.70GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3770 CPU @ 3.40GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3770K CPU @ 3.50GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3770S CPU @ 3.10GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3820QM CPU @ 2.70GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-3930K CPU @ 3.20GHz', 6, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4558U CPU @ 2.80GHz', 2, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4578U CPU @ 3.00GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4650U CPU @ 1.70GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4750HQ CPU @ 2.00GHz', 4, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4770 CPU @ 3.40GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4770HQ CPU @ 2.20GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4770K CPU @ 3.50GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4771 CPU @ 3.50GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4790 CPU @ 3.60GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4790K CPU @ 4.00GHz', 4, 31}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4850HQ CPU @ 2.30GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4870HQ CPU @ 2.50GHz', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4930K CPU @ 3.40GHz', 6, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4960HQ CPU @ 2.60GHz', 4, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-4980HQ CPU @ 2.80GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-5557U CPU @ 3.10GHz', 2, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-5650U CPU @ 2.20GHz', 2, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-5775R CPU @ 3.30GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-5820K CPU @ 3.30GHz', 6, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6500U CPU @ 2.50GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6567U CPU @ 3.30GHz', 2, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6660U CPU @ 2.40GHz', 2, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6700 CPU @ 3.40GHz', 4, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6700HQ CPU @ 2.60GHz', 4, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6700K CPU @ 4.00GHz', 4, 35}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6800K CPU @ 3.40GHz', 6, 34}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6820HQ CPU @ 2.70GHz', 4, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-6920HQ CPU @ 2.90GHz', 4, 30}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7500U CPU @ 2.70GHz', 2, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7567U CPU @ 3.50GHz', 2, 28}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7660U CPU @ 2.50GHz', 2, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7700 CPU @ 3.60GHz', 4, 35}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7700HQ CPU @ 2.80GHz', 4, 31}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7700K CPU @ 4.20GHz', 4, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7820HQ CPU @ 2.90GHz', 4, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-7920HQ CPU @ 3.10GHz', 4, 33}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8550U CPU @ 1.80GHz', 4, 25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8557U CPU @ 1.70GHz', 4, 26}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8559U CPU @ 2.70GHz', 4, 33}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8565U CPU @ 1.80GHz', 4, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8569U CPU @ 2.80GHz', 4, 33}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8700 CPU @ 3.20GHz', 6, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8700B CPU @ 3.20GHz', 6, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8700K CPU @ 3.70GHz', 6, 43}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8750H CPU @ 2.20GHz', 6, 33}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-8850H CPU @ 2.60GHz', 6, 36}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz', 8, 42}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-9700K CPU @ 3.60GHz', 8, 46}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-9750H CPU @ 2.60GHz', 6, 36}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-10700 CPU @ 2.90GHz', 8, 43}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-10700K CPU @ 3.80GHz', 8, 49}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-1060NG7 CPU @ 1.20GHz', 4, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i7-1068NG7 CPU @ 2.30GHz', 4, 32}

@@ Core i9
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-7900X CPU @ 3.30GHz', 10, 42}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-7960X CPU @ 2.80GHz', 16, 44}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-7980XE CPU @ 2.60GHz', 18, 44}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-8950HK CPU @ 2.90GHz', 6, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-9880H CPU @ 2.30GHz', 8, 37}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-9900 CPU @ 3.10GHz', 8, 43}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-9900K CPU @ 3.60GHz', 8, 46}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-9900KS CPU @ 4.00GHz', 8, 49}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-9980HK CPU @ 2.40GHz', 8, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-10900 CPU @ 2.80GHz', 10, 45}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-10900K CPU @ 3.70GHz', 10, 52}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) i9-10910 CPU @ 3.60GHz', 10, 51}

@@ Core M
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) M-5Y10 CPU @ 0.80GHz', 2, 12}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) M-5Y31 CPU @ 0.90GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) M-5Y51 CPU @ 1.10GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) M-5Y71 CPU @ 1.20GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) m3-6Y30 CPU @ 0.90GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) m3-7Y32 CPU @ 1.10GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) m3-8100Y CPU @ 1.10GHz', 2, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) m5-6Y54 CPU @ 1.10GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Core(TM) m7-6Y75 CPU @ 1.20GHz', 2, 15}

@@ Xeon
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            5130  @ 2.00GHz', 2, 13}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            5150  @ 2.66GHz', 2, 14}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            5160  @ 3.00GHz', 2, 15}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5355  @ 2.66GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            E5462  @ 2.80GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5482  @ 3.20GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            W3520  @ 2.67GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            W3530  @ 2.80GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            W3565  @ 3.20GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            W3680  @ 3.33GHz', 6, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            W3690  @ 3.47GHz', 6, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            E5520  @ 2.27GHz', 4, 16}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            E5620  @ 2.40GHz', 4, 17}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5550  @ 2.67GHz', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5570  @ 2.93GHz', 4, 19}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5650  @ 2.67GHz', 6, 20}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5670  @ 2.93GHz', 6, 21}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5675  @ 3.07GHz', 6, 22}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU            X5690  @ 3.47GHz', 6, 23}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU E5-1620 v2 @ 3.70GHz', 4, 27}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU E5-1650 v2 @ 3.50GHz', 6, 29}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU E5-1680 v2 @ 3.00GHz', 8, 30}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) CPU E5-2697 v2 @ 2.70GHz', 12, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-2140B CPU @ 3.20GHz', 8, 38}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-2150B CPU @ 3.00GHz', 10, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-2170B CPU @ 2.50GHz', 14, 40}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-2191B CPU @ 2.30GHz', 18, 41}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-3223 CPU @ 3.50GHz', 8, 43}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-3235 CPU @ 3.30GHz', 12, 47}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-3245 CPU @ 3.20GHz', 16, 50}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-3265M CPU @ 2.70GHz', 24, 52}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Intel(R) Xeon(R) W-3275M CPU @ 2.50GHz', 28, 68}

@@ Apple
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple A12Z Bionic', 8, 50}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M1', 8, 60}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M1 Pro', 10, 64}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M1 Max', 10, 66}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M1 Ultra', 20, 72}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M2', 8, 64}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M2 Pro', 12, 68}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M2 Max', 12, 70}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M2 Ultra', 24, 76}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M3', 8, 68}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M3 Pro', 12, 72}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M3 Max', 16, 76}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M3 Ultra', 32, 82}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M4', 10, 74}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M4 Pro', 14, 78}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M4 Max', 16, 82}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M4 Ultra', 32, 86}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M5', 10, 80}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M5 Pro', 14, 84}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple M5 Max', 16, 88}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple A18 Pro', 6, 75}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'Apple processor', 8, 60}

@@ Further PowerPC and IBM POWER
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC 750', 1, 0.75}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC 7400', 1, 1}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC 7447A', 1, 1.75}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC 970FX', 2, 2.25}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'PowerPC 970MP', 4, 3}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER5', 2, 6}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER6', 2, 10}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER7', 4, 18}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER8', 4, 24}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER9', 8, 32}
OSTREL_TMP1[#OSTREL_TMP1 + 1] = {'IBM POWER10', 8, 40}
