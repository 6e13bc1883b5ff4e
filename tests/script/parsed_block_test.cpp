// The walker over parsed lines beside the compiled road: the same texts must say the same and end the same way.

#include "probe.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::string::npos) return lines;
        start = end + 1;
    }
}

enum class Road { Compiled, ParsedLines };

/// What a text says and gives, or its whole fault. A break that leaves the text is a result of the walker's block but
/// a fault of a script, so both are told alike.
std::string outcome(const std::string& text, Road road) {
    Probe probe;
    const auto ended = [&probe](const std::string& how) { return probe.said + "-> " + how; };
    try {
        if (road == Road::Compiled) return ended(probe.engine.runScript(text).toString());
        BlockSignal signal;
        std::size_t position = 0;
        const Variable value = probe.engine.executeBlock(linesOf(text), position, signal);
        if (signal.kind == SignalKind::Break) return ended("break used outside a loop");
        return ended(value.toString());
    } catch (const std::exception& fault) {
        const std::string text2 = fault.what();
        if (text2.find("break used outside a loop\n  at line") != std::string::npos &&
            text2.find("near token 'break'") != std::string::npos)
            return ended("break used outside a loop");
        return ended(text2);
    }
}

const std::vector<std::string> texts = {
    // assignments
    "x = 1\nsay(x)\nx, y = 2, 3\nsay(x, y)\nx, y = y, x\nsay(x, y)\nx += 5\nsay(x)\nz[2][\"k\"] = 1\nsay(z)",
    "local x = 1\nlocal y\nnative n = 2\nexternal e = 3\nsay(x, y, n, e, e#0, n#2, x#3)",
    "function pair()\nreturn 1, 2\nend\na, b, c = pair()\nsay(a, b, c)\na, b, c = pair(), 5\nsay(a, b, c)\na = "
    "pair()\nsay(a)",
    "s = \"abc\"\ns[2] = \"X\"\ns += 1\nsay(s)\nt = {n = 1}\nt[\"n\"] *= 7\nsay(t[\"n\"])",
    // conditions
    "function f(n)\nif n < 0\nreturn \"negative\"\nelseif n == 0\nreturn \"zero\"\nelse\nreturn "
    "\"positive\"\nend\nend\nsay(f(-1), f(0), f(1))",
    "if 0\nsay(\"true\")\nelse\nsay(\"false\")\nend\nif [0][1]\nsay(\"true\")\nend\nif \"\"\nsay(\"text\")\nend",
    "if false\nelseif false\nelse\nsay(\"else\")\nend\nif true\nend\nsay(\"end\")",
    "if true\nlocal x = 1\nif true\nlocal x = 2\nsay(x)\nend\nsay(x)\nend\nsay(x)",
    // loops
    "i = 0\nwhile i < 3\ni += 1\nlocal x = i\nsay(x)\nend\nsay(x, i)",
    "i = 0\nrepeat\ni += 1\nlocal x = i\nsay(x)\nuntil i == 3\nsay(x)",
    "repeat\nlocal x = true\nuntil x == not\nsay(\"ended\")",
    "for i = 1, 3\nsay(i)\ni = 10\nend\nsay(i)\nfor i = 3, 1, -1\nsay(i)\nend\nfor i = 1.9, 3.9\nsay(i)\nend",
    "for k, v in pairs({b = 2, a = 1})\nsay(k, v)\nend\nfor k, v in ipairs([5, not, 6])\nsay(k, v)\nend\nfor a, b in "
    "[[1, 2], 3]\nsay(a, b)\nend",
    "for i = 1, 5\nif i == 3\nbreak\nend\nsay(i)\nend\nwhile true\nrepeat\nbreak\nuntil "
    "false\nsay(\"once\")\nbreak\nend",
    "for i = 1, 3\nfor j = 1, 3\nif j == 2\nreturn i, j\nend\nend\nend",
    "for b in string[\"byte\"](\"ab\", 1, 2)\nsay(b)\nend",
    // functions
    "function f(a, b, ...)\nlocal c = ...\nreturn [a, b, c]\nend\nsay(f(), f(1), f(1, 2, 3, 4))",
    "function t[\"x\"][1](a)\nreturn a * 2\nend\nsay(t[\"x\"][1](4))",
    "local function f()\nreturn \"local\"\nend\nnative function g()\nreturn \"native\"\nend\nsay(f(), g(), "
    "typeOf(f#1), typeOf(g#1))",
    "function outer()\nfunction inner()\nreturn \"inner\"\nend\nreturn inner()\nend\nsay(typeOf(inner), outer(), "
    "typeOf(inner))",
    "function f(n)\nif n > 1\nerror(\"too big\")\nend\nreturn n\nend\nsay(f(1))\na, b = pcall(f, 2)\nsay(a, b)",
    "function f(n)\nif n == 0\nreturn 0\nend\nreturn n + f(n - 1)\nend\nsay(f(50))",
    "function f()\nlocal x = 1\nreturn g()\nend\nfunction g()\nreturn x\nend\nsay(f())",
    "function f(x)\nreturn g()\nend\nfunction g()\nx += 1\nreturn x\nend\nsay(f(5), x)",
    "function f()\nnative n = 1\nif true\nsay(n)\nnative n = 2\nend\nsay(n)\nend\nf()\nfunction g()\nsay(n)\nif "
    "true\nsay(n)\nend\nend\ng()\nsay(n)",
    "if true\nfunction f()\nnative d = \"deeper\"\nend\nend\nf()\nfunction g()\nsay(d)\nif true\nsay(d)\nend\nend\ng()",
    // nests
    "nest\nsay(\"plain\")\nend\nnest(\"a\")\nlocal x = 1\nsay(x)\nend\nnest \"b\"()\nsay(x)\nend",
    "function f()\nnest\nreturn \"from a nest\"\nend\nend\nsay(f())\nfor i = 1, 3\nnest\nbreak\nend\nsay(i)\nend",
    // errors
    "x = 1\ny = x + not\nsay(\"never\")",
    "function f(a)\nlocal b = a - \"text\"\nreturn b\nend\nif true\nf(1)\nend",
    "error(\"raised\")",
    "function f()\nfor i = 1, 3\nsay(i)\nif i == 2\nerror(\"soft\")\nend\nend\nend\na, b = pcall(f)\nsay(a, b)",
    "function f()\nwhile true\nerror(\"soft\")\nend\nsay(\"never\")\nend\na, b = pcall(f)\nsay(a, b)",
    "function f()\nrepeat\nuntil error(\"soft\")\nsay(\"never\")\nend\na, b = pcall(f)\nsay(a, b)",
    "function f()\nlocal x = 1\nfor k, v in pairs([1])\nlocal y = 2\nz = y + not\nend\nend\na = pcall(f)\nsay(a, x, y, "
    "k)",
    "neverMade()",
    "if 1 < \"a\"\nend",
    "if true true\nend",
    "while true false\nend",
    "repeat\nuntil",
    "repeat\nuntil true true",
    "for i = 1\nend",
    "for i = 1, 2 3\nend",
    "for i = 1, 2, 0\nend",
    "for i = \"a\", 2\nend",
    "for 5 in []\nend",
    "for v of []\nend",
    "for v in 5\nend",
    "for k, v in pairs(5)\nend",
    "for k, v in ipairs(5)\nend",
    "for v in [] do\nend",
    "function 5()\nend",
    "function f[1 2]()\nend",
    "function f a\nend",
    "function f(5)\nend",
    "function f(a b)\nend",
    "function f(..., a)\nend",
    "function f() stray\nend",
    "return 1 2",
    "return 1, 2, 3",
    "return",
    "say(1) stray",
    "x = 1 2",
    "missing += 1",
    "x = 'open",
    "nest(5)\nend",
    "break",
    "if true\nbreak\nend\nsay(\"never\")",
    "function f()\nbreak\nend\nsay(1)\nf()",
    "for i = 1, 2\nload(\"break\")()\nend",
    // strays
    "end\nsay(1)\nelse\nsay(2)\nelseif x\nsay(3)\nuntil y\nsay(4)",
    "",
    "\n\n@@ nothing\n",
    "x = 1 ; y = 2 ; say(x, y)",
    "t = [1,\n2,\n3]\nsay(t)",
    "function f() ; return 5 ; end ; say(f())",
};

} // namespace

TEST(ParsedWalker, SaysAndEndsAsTheCompiledRoadDoes) {
    for (const std::string& text : texts)
        EXPECT_EQ(outcome(text, Road::ParsedLines), outcome(text, Road::Compiled)) << text;
}

TEST(ParsedWalker, BodiesOfItsFunctionsAreWalkedToo) {
    // Every text once more as the body of a function, declared and called on either road.
    for (const std::string& text : texts) {
        if (text.find("'open") != std::string::npos || text.find("nest(5)") != std::string::npos)
            continue; // no line parses
        const std::string wrapped =
            "function wholeText()\n" + text + "\nend\na, b = pcall(wholeText)\nsay(a, b)\nreturn wholeText()";
        if (text.rfind("end\n", 0) == 0) continue; // its stray would close the function
        EXPECT_EQ(outcome(wrapped, Road::ParsedLines), outcome(wrapped, Road::Compiled)) << text;
    }
}

TEST(ParsedWalker, FunctionsOfOneRoadCallThoseOfTheOther) {
    Probe probe;
    BlockSignal signal;
    std::size_t position = 0;
    probe.engine.executeBlock(
        linesOf("function walked(a)\nlocal mine = a\nshared = a\nreturn compiled(a + 1) + mine\nend"), position,
        signal);
    EXPECT_EQ(
        probe.run(
            "function compiled(b)\nlocal mine = b\nsay(a, b, mine, shared)\nreturn b * 10\nend\nreturn walked(1)"),
        "21");
    EXPECT_EQ(probe.said, "1 2 2 1 ");
}

TEST(ParsedWalker, TellsHowTheBlockEnded) {
    OstrelScript engine;
    const auto signalOf = [&engine](const std::string& text) {
        BlockSignal signal;
        std::size_t position = 0;
        engine.executeBlock(linesOf(text), position, signal);
        return signal.kind;
    };
    EXPECT_EQ(signalOf("x = 1"), SignalKind::None);
    EXPECT_EQ(signalOf("return"), SignalKind::Return);
    EXPECT_EQ(signalOf("for i = 1, 2\nreturn 5\nend"), SignalKind::Return);
    EXPECT_EQ(signalOf("break"), SignalKind::Break);
    EXPECT_EQ(signalOf("while true\nbreak\nend"), SignalKind::None);
}

TEST(ParsedWalker, BeginsAtItsPosition) {
    Probe probe;
    BlockSignal signal;
    std::size_t position = 2;
    const Variable value = probe.engine.executeBlock({"say(1)", "say(2)", "say(3)", "return 4"}, position, signal);
    EXPECT_EQ(probe.said, "3 ");
    EXPECT_EQ(value.toString(), "4");
}

TEST(ParsedWalker, MissesEndsWhenItGetsThere) {
    const auto fault = [](const std::string& text) {
        Probe probe;
        BlockSignal signal;
        std::size_t position = 0;
        const std::string message = faultOf([&] { probe.engine.executeBlock(linesOf(text), position, signal); });
        return probe.said + firstLine(message);
    };
    EXPECT_EQ(fault("say(1)\nif true"), "1 OstrelScript error: Missing 'end' for if block");
    EXPECT_EQ(fault("say(1)\nif true\nelse"), "1 OstrelScript error: Missing 'end' for if block");
    EXPECT_EQ(fault("say(1)\nwhile true"), "1 OstrelScript error: Missing 'end' for while block");
    EXPECT_EQ(fault("say(1)\nfor i = 1, 2"), "1 OstrelScript error: Missing 'end' for for block");
    EXPECT_EQ(fault("say(1)\nfor v in []"), "1 OstrelScript error: Missing 'end' for for block");
    EXPECT_EQ(fault("say(1)\nfunction f()"), "1 OstrelScript error: Missing 'end' for function block");
    EXPECT_EQ(fault("say(1)\nlocal function f()"), "1 OstrelScript error: Missing 'end' for function block");
    EXPECT_EQ(fault("say(1)\nnest"), "1 OstrelScript error: Missing 'end' for nest block");
    EXPECT_EQ(fault("say(1)\nrepeat"), "1 OstrelScript error: repeat block did not terminate at matching until");
    EXPECT_EQ(fault("say(1)\nrepeat\nend"), "1 OstrelScript error: repeat block did not terminate at matching until");
    EXPECT_EQ(fault("return\nif true"), "no fault"); // not reached
}

TEST(ParsedWalker, LeavesNothingBehind) {
    Probe probe;
    for (const char* text : {"local x = 1\nfor i = 1, 2\nlocal y = 1\nz = 1 + not\nend", "local x = 1\nerror(\"e\")",
                             "local x = 1\nreturn x", "x#3 = 1\nbreak"}) {
        BlockSignal signal;
        std::size_t position = 0;
        faultOf([&] { probe.engine.executeBlock(linesOf(text), position, signal); });
        EXPECT_EQ(probe.hear("say(x, y, i, x#3)"), "not not not not ") << text;
        const std::string report = faultOf([&] { probe.engine.runScript("q = 1 + not"); });
        EXPECT_NE(report.find("\n  at line 1, near token 'not'\n"), std::string::npos) << report;
    }
}

TEST(ParsedWalker, StopsARunawayRecursionAndEndlessLoops) {
    OstrelScript engine;
    BlockSignal signal;
    std::size_t position = 0;
    EXPECT_EQ(firstLine(faultOf([&] {
                  engine.executeBlock(linesOf("function f()\nlocal x = f()\nreturn x\nend\nf()"), position, signal);
              })),
              "OstrelScript error: native stack exhausted");
    for (const char* text : {"while true\nend", "repeat\nuntil false", "for i = 1, 2147483647\nend"}) {
        engine.setStepLimit(10000);
        position = 0;
        EXPECT_EQ(firstLine(faultOf([&] { engine.executeBlock(linesOf(text), position, signal); })),
                  "OstrelScript error: step limit reached");
    }
}
