// Error reports from inside: the frame with and without a source, the caret, and which exceptions are dressed up.

#include "probe.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* hint = "  hint: check spelling, operators, parentheses, and quote matching\n";

std::string reportOf(OstrelScript& engine, const std::string& text) {
    return faultOf([&] { engine.runScript(text); });
}

} // namespace

TEST(Report, WithoutASourceNamesTheLineAlone) {
    OstrelScript engine;
    EXPECT_EQ(reportOf(engine, "\n\nx = value - \"text\""),
              "OstrelScript error: Unsupported operation '-' between types\n  at line 3, near token '\"text\"'\n"
              "  x = value - \"text\"\n              ^~~~~~\n" +
                  std::string(hint));
}

TEST(Report, NamesTheRunningSourceAndTheLine) {
    OstrelScript engine;
    const std::string report =
        faultOf([&] { engine.runBytecode(engine.compileToBytecode("\n\nx = y - 1\n", "game.os")); });
    EXPECT_EQ(report.substr(0, report.find("\n  x")),
              "OstrelScript error: Unsupported operation '-' between types\n  at game.os:3, near token '1'");
}

TEST(Report, PutsTheCaretUnderTheFirstPlaceOfTheToken) {
    OstrelScript engine;
    const auto caretLine = [&engine](const std::string& text) {
        const std::string report = reportOf(engine, text);
        const std::size_t end = report.find("\n  hint");
        const std::size_t start = report.rfind('\n', end - 1) + 1;
        return report.substr(start, end - start);
    };
    EXPECT_EQ(caretLine("x = 1 / 0"), "          ^"); // one byte: no tildes
    EXPECT_EQ(caretLine("x0 = 1 / 0"), "   ^");       // the first place in the line
    EXPECT_EQ(caretLine("x = 1 + nothing"), "          ^~~~~~~");
    EXPECT_EQ(caretLine("x = (1"), "        ^");         // not in the line: behind its end
    EXPECT_EQ(caretLine("x = 1 +"), "         ^");       // EOF
    EXPECT_EQ(caretLine("x = EOFs +"), "            ^"); // also where the line holds these letters
}

TEST(Report, ShowsTheLogicalLine) {
    OstrelScript engine;
    const std::string report = reportOf(engine, "x = 1 ; y = [1,\n   2 - not,\n   3] ; z = 2");
    EXPECT_NE(report.find("\n  at line 1, near token 'not'\n  y = [1, 2 - not, 3]\n"), std::string::npos) << report;
}

TEST(Report, OfParsingShowsTheLineThatIsParsed) {
    OstrelScript engine;
    const std::string report = reportOf(engine, "x = 1\ny = 'open");
    EXPECT_EQ(report, "OstrelScript error: Unterminated string literal\n  at line 2, near token ''open'\n  y = 'open\n"
                      "      ^~~~~\n" +
                          std::string(hint));
}

TEST(Report, OfCompilingNamesTheScriptWhereNothingElseIsKnown) {
    OstrelScript engine;
    EXPECT_EQ(reportOf(engine, "x = 1\nif x"),
              "OstrelScript error: Missing 'end' for if block\n  at script:1\n  \n  ^\n" + std::string(hint));
}

TEST(Report, OfCompilingNamesTheLineThatAskedForIt) {
    Probe probe;
    probe.addFunction("runText", [&probe](const std::vector<Variable>& arguments) {
        return probe.engine.runScript(arguments.at(0).asString());
    });
    const BytecodeProgram program = probe.engine.compileToBytecode("\nrunText(\"if x\")", "dir/outer.os");
    const std::string report = faultOf([&] { probe.engine.runBytecode(program); });
    EXPECT_EQ(report, "OstrelScript error: Missing 'end' for if block\n  at dir/outer.os:2, near token ')'\n"
                      "  runText(\"if x\")\n                ^\n" +
                          std::string(hint));
}

TEST(Report, IsMadeOnce) {
    Probe probe;
    probe.addFunction("again", [](const std::vector<Variable>& arguments) -> Variable {
        throw std::runtime_error(arguments.at(0).asString());
    });
    const std::string whole =
        reportOf(probe.engine, "function f()\nx = 1 + not\nend\nif true\nfor i = 1, 2\nf()\nend\nend");
    EXPECT_EQ(whole.rfind("OstrelScript error:"), 0U);
    EXPECT_NE(whole.find("at line 2"), std::string::npos);
    EXPECT_EQ(faultOf([&] { probe.engine.runScript("again(\"OstrelScript error: whatever\")"); }),
              "OstrelScript error: whatever");
    EXPECT_EQ(faultOf([&] { probe.engine.runScript("again(\"OstrelScript error:\")"); }), "OstrelScript error:");
    EXPECT_EQ(firstLine(faultOf([&] { probe.engine.runScript("again(\"OstrelScript error\")"); })),
              "OstrelScript error: OstrelScript error");
}

TEST(Report, OfARaisedErrorIsItsBareText) {
    OstrelScript engine;
    EXPECT_THROW(engine.runScript("error(\"x\")"), RaisedScriptError);
    EXPECT_THROW(engine.runScript("function f()\nfor i = 1, 2\nerror(\"x\")\nend\nend\nf()"), RaisedScriptError);
    EXPECT_THROW(engine.runScript("assert(false)"), RaisedScriptError);
    EXPECT_EQ(reportOf(engine, "error(\"x\")"), "x");
    EXPECT_EQ(reportOf(engine, "error()"), "error");
    EXPECT_EQ(reportOf(engine, "error(5)"), "5");
    EXPECT_EQ(reportOf(engine, "error([1, \"a\"])"), "[1, a]");
    EXPECT_EQ(reportOf(engine, "assert(not, \"why\")"), "why");
}

TEST(Report, DressesUpWhateverAHostFunctionThrows) {
    Probe probe;
    probe.addFunction("logic", [](const std::vector<Variable>&) -> Variable { throw std::logic_error("logic"); });
    probe.addFunction("empty", [](const std::vector<Variable>&) -> Variable { throw std::runtime_error(""); });
    EXPECT_EQ(probe.run("logic()"), "OstrelScript error: logic");
    EXPECT_EQ(probe.run("empty()"), "OstrelScript error: ");
}

TEST(Report, KeepsNoTraceOfTheCallsBefore) {
    Probe probe;
    probe.run("function fine(a)\nlocal b = a\nreturn b\nend");
    const std::string report = reportOf(probe.engine, "x = 1\n\ny = fine(1) - fine(\"a\")");
    EXPECT_NE(report.find("\n  at line 3, near token ')'\n  y = fine(1) - fine(\"a\")\n"), std::string::npos) << report;
    const std::string behind = reportOf(probe.engine, "load(\"q = 1\", \"other.os\")()\nx = 1 - not");
    EXPECT_NE(behind.find("\n  at line 2, near token 'not'\n"), std::string::npos) << behind;
}

TEST(Report, OfTheHostsOwnCallsHasNoPosition) {
    Probe probe;
    probe.run("function f(a)\nreturn a - 1\nend");
    EXPECT_EQ(faultOf([&] { probe.engine.invokeCallable(probe.engine.pullVariable("len"), {5}); }),
              "len(x) expects an array, table, or string");
    const std::string report = faultOf([&] { probe.engine.invokeCallable(probe.engine.pullVariable("f"), {"a"}); });
    EXPECT_NE(report.find("\n  at line 2, near token '1'\n  return a - 1\n"), std::string::npos) << report;
}
