// Coroutines and jumps in the walkers that no script reaches at will: over parsed lines, and over chunks run inline.

#include "probe.h"

#include <gtest/gtest.h>

namespace {

const char* const counting = "decay function counts()\nfor i = 1, 9\nsay(i)\nend\nend\n";

/// Runs a text through the walker over parsed lines; gives how its block ended.
SignalKind walk(Probe& probe, const std::string& text) {
    BlockSignal signal;
    std::size_t position = 0;
    probe.engine.executeBlock({text}, position, signal);
    return signal.kind;
}

/// What a text says when its blocks are run inline, as those of a file without nesting marks are.
std::string hearInline(Probe& probe, const std::string& text) {
    BytecodeProgram program = probe.engine.compileToBytecode(text);
    for (BytecodeChunk& chunk : program.chunks) chunk.isNested = false;
    probe.said.clear();
    try {
        probe.engine.runBytecode(std::move(program));
    } catch (const std::exception& fault) {
        probe.said += firstLine(fault.what());
    }
    return probe.said;
}

} // namespace

TEST(CoroutineOverLines, EveryStatementIsFollowedByATurn) {
    Probe probe;
    walk(probe, std::string(counting) + "counts()\nsay(\"a\")\nsay(\"b\")");
    EXPECT_EQ(probe.said, "1 a 2 b 3 ");
}

TEST(CoroutineOverLines, BlankLinesAndStraysAreNoStatements) {
    const std::string text = std::string(counting) + "counts()\n\n@@ nothing\nend\nuntil\nsay(\"a\")\n\n\n";
    Probe probe;
    walk(probe, text);
    EXPECT_EQ(probe.said, "1 a 2 ");
    Probe compiled;
    EXPECT_EQ(compiled.hear(text), "1 a 2 ");
}

TEST(CoroutineOverLines, ABlockIsAStatementToo) {
    Probe probe;
    walk(probe, std::string(counting) + "counts()\nif true\nsay(\"a\")\nend\nsay(\"b\")");
    EXPECT_EQ(probe.said, "1 a 2 3 b 4 ");
}

TEST(CoroutineOverLines, ItsErrorSurfacesAtTheNextStatement) {
    Probe probe;
    const std::string fault =
        faultOf([&probe] { walk(probe, "decay function fails()\nerror(\"side\")\nend\nfails()\nsay(\"never\")"); });
    EXPECT_EQ(firstLine(fault), "OstrelScript error: side");
    EXPECT_EQ(probe.said, "");
}

TEST(CoroutineOverLines, WithoutAPathTheReportNamesTheScript) {
    Probe probe;
    const std::string fault =
        faultOf([&probe] { walk(probe, "decay function fails()\nx = nothing()\nend\nfails()\nsay(1)"); });
    EXPECT_NE(fault.find("\n  at script:2, near token ')'\n"), std::string::npos) << fault;
}

TEST(CoroutineOverLines, ItOutlivesTheTextThatStartedIt) {
    Probe probe;
    walk(probe, std::string(counting) + "counts()");
    probe.run("say(\"a\")\nsay(\"b\")");
    EXPECT_EQ(probe.said, "1 a 2 b 3 ");
}

TEST(CoroutineInline, EveryInstructionIsFollowedByATurn) {
    Probe probe;
    probe.run(counting);
    EXPECT_EQ(hearInline(probe, "counts()\nfor j = 1, 2\nif j == 2\nsay(\"a\")\nend\nend\nsay(\"b\")"),
              "1 2 a 3 4 5 b 6 ");
}

TEST(CoroutineInline, ItsErrorSurfacesInTheBlock) {
    Probe probe;
    probe.run("decay function fails()\nerror(\"side\")\nend");
    EXPECT_EQ(hearInline(probe, "if true\nfails()\nsay(\"never\")\nend"), "OstrelScript error: side");
}

TEST(JumpOverLines, EndsEveryBlockAndIsHandedOn) {
    Probe probe;
    EXPECT_EQ(walk(probe, "while true\nfor i = 1, 3\nsay(i)\njumpTo(\"x\")\nend\nsay(\"-\")\nend\nsay(\"-\")"),
              SignalKind::Jump);
    EXPECT_EQ(probe.said, "1 ");
}

TEST(JumpOverLines, IsFollowedByTheCompiledCodeThatRunsNext) {
    Probe probe;
    walk(probe, "jumpTo(\"x\")");
    probe.run("say(\"-\")\nnest(\"x\")\nsay(\"x\")\nend");
    EXPECT_EQ(probe.said, "x ");
}

TEST(JumpInline, LeavesTheBlocksForOneAroundThem) {
    Probe probe;
    const char* const body = "for i = 1, 3\nif i == 2\njumpTo(\"out\")\nend\nsay(i)\nend\nsay(\"-\")\n"
                             "nest(\"out\")\nsay(\"o\")\nend";
    EXPECT_EQ(hearInline(probe, body), "1 o ");
}

TEST(JumpInline, IntoAFunctionComesBackToTheBlock) {
    Probe probe;
    probe.run("function tail()\nsay(\"-\")\nnest(\"tail\")\nsay(\"t\")\nend\nend");
    EXPECT_EQ(hearInline(probe, "for i = 1, 2\njumpTo(\"tail\")\nsay(i)\nend"), "t 1 t 2 ");
}

TEST(JumpInline, AnUnknownLabelIsTheStatementsFault) {
    Probe probe;
    EXPECT_EQ(hearInline(probe, "if true\njumpTo(\"nowhere\")\nsay(\"-\")\nend"),
              "OstrelScript error: jumpTo target not found: nowhere");
}

TEST(Jump, IntoAFunctionOfAProgramThatIsGoneFindsNothing) {
    Probe probe;
    probe.run("function f()\nnest(\"gone\")\nend\nend");
    probe.engine.pushVariable("f", Variable());
    EXPECT_EQ(probe.run("jumpTo(\"gone\")"), "OstrelScript error: jumpTo target not found: gone");
}

TEST(Snapshot, AFunctionOfParsedLinesHasNoProgramAndIsLeftOut) {
    Probe probe;
    walk(probe, "function lines()\nlocal x = 1\nreturn x\nend");
    const std::vector<unsigned char> state = probe.engine.exportState();
    probe.engine.pushVariable("lines", "kept");
    probe.engine.importState(state, "label");
    EXPECT_EQ(probe.engine.pullVariable("lines").toString(), "kept");
}

TEST(Snapshot, TheFunctionsFlagByteIsGivenBack) {
    Probe probe;
    probe.run("local function f(a)\nlocal x = a\nreturn x\nend\nglobal#1 = f");
    const Variable before = probe.engine.pullVariable("global");
    ASSERT_TRUE(before.isFunction());
    const std::vector<unsigned char> state = probe.engine.exportState();
    probe.engine.importState(state, "label");
    const Variable after = probe.engine.pullVariable("global");
    EXPECT_NE(after.asFunction(), before.asFunction());
    EXPECT_EQ(after.asFunction()->isGlobalDeclared, 0);
    EXPECT_EQ(probe.engine.exportState(), state);
}
