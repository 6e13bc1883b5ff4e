// The compiler: which instructions and records a text becomes, in which order, and what it records about its source.

#include "probe.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

/// The instructions of a chunk as words, such as "Line 0, If 0".
std::string instructionsOf(const BytecodeProgram& program, std::size_t chunk) {
    static const char* const names[] = {"Line",       "AssignFast", "If",     "While", "Repeat", "ForNumeric",
                                        "ForGeneric", "Function",   "Return", "Break", "Nest"};
    std::ostringstream text;
    const BytecodeChunk& range = program.chunks.at(chunk);
    for (std::uint32_t i = 0; i < range.instructionCount; ++i) {
        const Instruction& instruction = program.instructions.at(range.firstInstruction + i);
        text << (i > 0 ? ", " : "") << names[instruction.opcode] << " " << instruction.operand;
        EXPECT_EQ(instruction.spare, 0U);
    }
    return text.str();
}

BytecodeProgram compile(const std::string& text) { return OstrelScript().compileToBytecode(text); }

std::string compileFault(const std::string& text) {
    return firstLine(faultOf([&text] { compile(text); }));
}

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Statements
// ---------------------------------------------------------------------------------------------------------------------

TEST(Compiler, AnEmptyTextIsOneChunkWithoutInstructions) {
    for (const char* text : {"", "\n", "@@ comment", "   \n\t\n@@ comment\n", ";"}) {
        const BytecodeProgram program = compile(text);
        EXPECT_EQ(program.version, 60) << text;
        ASSERT_EQ(program.chunks.size(), 1U) << text;
        EXPECT_EQ(program.chunks[0].firstInstruction, 0U);
        EXPECT_EQ(program.chunks[0].instructionCount, 0U);
        EXPECT_FALSE(program.chunks[0].isNested);
        EXPECT_FALSE(program.chunks[0].hasLocalDeclarations);
        EXPECT_TRUE(program.instructions.empty());
        EXPECT_TRUE(program.inlineEligibility.empty());
    }
}

TEST(Compiler, LinesOfCommentsAndBlanksAreKept) { EXPECT_EQ(compile("@@ a\n\n@@ b").lines.size(), 3U); }

TEST(Compiler, PlainStatementsNameTheirLines) {
    const BytecodeProgram program = compile("x = 1\n\nprint(x)\nreturn x\nbreak");
    EXPECT_EQ(instructionsOf(program, 0), "AssignFast 0, Line 2, Return 3, Break 4");
}

TEST(Compiler, OnlyOnePlainTargetWithOneCompiledValueIsAFastAssignment) {
    for (const char* text :
         {"x = 1", "x = y + f(2) * t[1]", "x += 1", "local x = 1", "native x = \"a\"", "external x = 1", "x#1 = not"})
        EXPECT_EQ(instructionsOf(compile(text), 0), "AssignFast 0") << text;
    for (const char* text : {"x = [1]", "x = {}", "x = ...", "x = $FF", "x[1] = 1", "x, y = 1", "x = 1, 2", "x =",
                             "x = 1 2", "x = (1", "local x", "local x, y", "x", "f()", "x, y += 1", "x = [1] + 1"})
        EXPECT_EQ(instructionsOf(compile(text), 0), "Line 0") << text;
}

TEST(Compiler, StrayPartsOfBlocksAreSkippedWithoutAWord) {
    const BytecodeProgram program = compile("end\nelse\nelseif x\nuntil y\nx = 1\nend");
    EXPECT_EQ(instructionsOf(program, 0), "AssignFast 4");
    EXPECT_EQ(program.chunks.size(), 1U);
}

// ---------------------------------------------------------------------------------------------------------------------
// Blocks
// ---------------------------------------------------------------------------------------------------------------------

TEST(Compiler, AnIfChainIsOneGroupWithItsBranchesInOrder) {
    const BytecodeProgram program = compile("if a\nx = 1\nelseif b\nelse\nx = 3\nf()\nend\ny = 1");
    EXPECT_EQ(instructionsOf(program, 0), "If 0, AssignFast 7");
    ASSERT_EQ(program.ifGroups.size(), 1U);
    const auto& branches = program.ifGroups[0].branches;
    ASSERT_EQ(branches.size(), 3U);
    EXPECT_EQ(branches[0].line, 0U);
    EXPECT_EQ(branches[0].bodyChunk, 1U);
    EXPECT_FALSE(branches[0].isElse);
    EXPECT_EQ(branches[1].line, 2U);
    EXPECT_EQ(branches[1].bodyChunk, 2U);
    EXPECT_FALSE(branches[1].isElse);
    EXPECT_EQ(branches[2].line, 3U);
    EXPECT_EQ(branches[2].bodyChunk, 3U);
    EXPECT_TRUE(branches[2].isElse);
    EXPECT_EQ(instructionsOf(program, 1), "AssignFast 1");
    EXPECT_EQ(instructionsOf(program, 2), "");
    EXPECT_EQ(instructionsOf(program, 3), "AssignFast 4, Line 5");
}

TEST(Compiler, LoopsNameTheLineThatHoldsTheirHeader) {
    const BytecodeProgram program =
        compile("while a\nx = 1\nend\nrepeat\nx = 2\nuntil b\nfor i = 1, 3\nend\nfor k, v in pairs(t)\nend");
    EXPECT_EQ(instructionsOf(program, 0), "While 0, Repeat 0, ForNumeric 0, ForGeneric 0");
    EXPECT_EQ(program.whileLoops.at(0).line, 0U);
    EXPECT_EQ(program.whileLoops.at(0).bodyChunk, 1U);
    EXPECT_EQ(program.repeatLoops.at(0).line, 5U); // the condition stands at the `until`
    EXPECT_EQ(program.repeatLoops.at(0).bodyChunk, 2U);
    EXPECT_EQ(program.numericForLoops.at(0).line, 6U);
    EXPECT_EQ(program.numericForLoops.at(0).bodyChunk, 3U);
    EXPECT_EQ(program.genericForLoops.at(0).line, 8U);
    EXPECT_EQ(program.genericForLoops.at(0).bodyChunk, 4U);
}

TEST(Compiler, AnEmptyRepeatHasAnEmptyBody) {
    const BytecodeProgram program = compile("repeat\nuntil true");
    EXPECT_EQ(instructionsOf(program, 0), "Repeat 0");
    EXPECT_EQ(program.chunks.at(1).instructionCount, 0U);
}

TEST(Compiler, AForIsNumericByItsFirstFourTokens) {
    const auto isNumeric = [](const char* header) {
        const BytecodeProgram program = compile(std::string(header) + "\nend");
        EXPECT_EQ(program.numericForLoops.size() + program.genericForLoops.size(), 1U) << header;
        return program.numericForLoops.size() == 1;
    };
    EXPECT_TRUE(isNumeric("for i = 1, 3"));
    EXPECT_TRUE(isNumeric("for i = 1"));
    EXPECT_TRUE(isNumeric("for i = 1 2 3"));
    EXPECT_TRUE(isNumeric("for i#1 = 1, 3"));
    EXPECT_FALSE(isNumeric("for k, v in pairs(t)"));
    EXPECT_FALSE(isNumeric("for x y z"));
    EXPECT_FALSE(isNumeric("for i ="));
    EXPECT_FALSE(isNumeric("for 5 = 1, 3"));
    EXPECT_FALSE(isNumeric("for i == 1"));
    EXPECT_FALSE(isNumeric("for"));
}

TEST(Compiler, FunctionsRecordTheirLinesAndTheirSource) {
    const BytecodeProgram program =
        OstrelScript().compileToBytecode("function f(a)\nreturn a\nend\nlocal function g()\nend\nnative function "
                                         "h()\nend\ndecay function d()\nx = 1\nend",
                                         "folder/file.os");
    EXPECT_EQ(instructionsOf(program, 0), "Function 0, Function 1, Function 2, Function 3");
    const BytecodeFunctionDecl& first = program.functions.at(0);
    EXPECT_EQ(first.line, 0U);
    EXPECT_EQ(first.bodyChunk, 1U);
    EXPECT_EQ(first.bodyStartLine, 1U);
    EXPECT_EQ(first.bodyEndLine, 2U);
    EXPECT_EQ(first.sourceDirectory, "folder");
    EXPECT_EQ(first.sourcePath, "folder/file.os");
    EXPECT_EQ(program.functions.at(3).line, 7U);
    EXPECT_EQ(program.functions.at(3).bodyChunk, 4U);
    EXPECT_EQ(program.functions.at(3).bodyStartLine, 8U);
    EXPECT_EQ(program.functions.at(3).bodyEndLine, 9U);
}

TEST(Compiler, NestsRecordTheChunkTheyStandInAndTheirDecodedLabel) {
    const BytecodeProgram program = compile("nest\nend\nif true\nnest(\"a\\tb\")\nnest 'c'()\nend\nend\nend");
    ASSERT_EQ(program.nestBlocks.size(), 3U);
    EXPECT_EQ(program.nestBlocks[0].line, 0U);
    EXPECT_EQ(program.nestBlocks[0].bodyChunk, 1U);
    EXPECT_EQ(program.nestBlocks[0].parentChunk, 0U);
    EXPECT_EQ(program.nestBlocks[0].label, "");
    EXPECT_EQ(program.nestBlocks[1].line, 4U); // records come as blocks end
    EXPECT_EQ(program.nestBlocks[1].bodyChunk, 4U);
    EXPECT_EQ(program.nestBlocks[1].parentChunk, 3U);
    EXPECT_EQ(program.nestBlocks[1].label, "c");
    EXPECT_EQ(program.nestBlocks[2].line, 3U);
    EXPECT_EQ(program.nestBlocks[2].bodyChunk, 3U);
    EXPECT_EQ(program.nestBlocks[2].parentChunk, 2U);
    EXPECT_EQ(program.nestBlocks[2].label, "a\tb");
}

// ---------------------------------------------------------------------------------------------------------------------
// Chunks
// ---------------------------------------------------------------------------------------------------------------------

TEST(Compiler, ChunksAreNumberedAsTheyBeginAndLaidDownAsTheyEnd) {
    const BytecodeProgram program = compile("a = 1\nwhile x\nb = 1\nif y\nc = 1\nend\nd = 1\nend\ne = 1\nf()");
    ASSERT_EQ(program.chunks.size(), 3U);
    EXPECT_EQ(instructionsOf(program, 0), "AssignFast 0, While 0, AssignFast 8, Line 9");
    EXPECT_EQ(instructionsOf(program, 1), "AssignFast 2, If 0, AssignFast 6");
    EXPECT_EQ(instructionsOf(program, 2), "AssignFast 4");
    EXPECT_EQ(program.chunks[2].firstInstruction, 0U);
    EXPECT_EQ(program.chunks[1].firstInstruction, 1U);
    EXPECT_EQ(program.chunks[0].firstInstruction, 4U);
    EXPECT_EQ(program.instructions.size(), 8U);
}

TEST(Compiler, EveryChunkButTheFirstIsNested) {
    const BytecodeProgram program = compile("function f()\nif a\nend\nend\nnest\nend\nfor i = 1, 2\nend");
    ASSERT_EQ(program.chunks.size(), 5U);
    EXPECT_FALSE(program.chunks[0].isNested);
    for (std::size_t i = 1; i < program.chunks.size(); ++i) EXPECT_TRUE(program.chunks[i].isNested) << i;
}

TEST(Compiler, LocalsAreNotedForTheChunkThatHoldsThem) {
    const auto hasLocals = [](const char* text, std::size_t chunk) {
        return compile(text).chunks.at(chunk).hasLocalDeclarations;
    };
    EXPECT_TRUE(hasLocals("local x = 1", 0));
    EXPECT_TRUE(hasLocals("local x", 0));
    EXPECT_TRUE(hasLocals("x = 1\nlocal x, y = 1, 2", 0));
    EXPECT_TRUE(hasLocals("local", 0)); // the keyword alone declares nothing and is noted all the same
    EXPECT_TRUE(hasLocals("local x()", 0));
    EXPECT_TRUE(hasLocals("local function f()\nend", 0));
    EXPECT_FALSE(hasLocals("local function f()\nend", 1));
    EXPECT_FALSE(hasLocals("native x = 1\nexternal y = 2\nx = 3", 0));
    EXPECT_FALSE(hasLocals("function f()\nlocal x = 1\nend", 0));
    EXPECT_TRUE(hasLocals("function f()\nlocal x = 1\nend", 1));
    EXPECT_FALSE(hasLocals("if a\nlocal x = 1\nelse\nx = 2\nend", 0));
    EXPECT_TRUE(hasLocals("if a\nlocal x = 1\nelse\nx = 2\nend", 1));
    EXPECT_FALSE(hasLocals("if a\nlocal x = 1\nelse\nx = 2\nend", 2));
}

// ---------------------------------------------------------------------------------------------------------------------
// Sources
// ---------------------------------------------------------------------------------------------------------------------

TEST(Compiler, ASourcePathBecomesSlashesAndItsDirectory) {
    OstrelScript engine;
    const BytecodeProgram program = engine.compileToBytecode("function f()\nend", "a\\b.os");
    EXPECT_EQ(program.sourcePath, "a/b.os");
    EXPECT_EQ(program.sourceDirectory, "a");
    EXPECT_EQ(program.functions.at(0).sourcePath, "a/b.os");
    EXPECT_EQ(program.functions.at(0).sourceDirectory, "a");
}

TEST(Compiler, APathWithoutADirectoryHasNone) {
    OstrelScript engine;
    const BytecodeProgram program = engine.compileToBytecode("function f()\nend", "b.os");
    EXPECT_EQ(program.sourcePath, "b.os");
    EXPECT_EQ(program.sourceDirectory, "");
    EXPECT_EQ(program.functions.at(0).sourceDirectory, "");
}

TEST(Compiler, WithoutAPathTheRunningSourceCounts) {
    OstrelScript engine;
    EXPECT_EQ(engine.compileToBytecode("x = 1").sourcePath, "");
    EXPECT_EQ(engine.compileToBytecode("x = 1", "").sourcePath, "");
    Probe probe;
    BytecodeProgram inner;
    probe.addFunction("compile", [&probe, &inner](const std::vector<Variable>& arguments) {
        inner = probe.engine.compileToBytecode(arguments.at(0).asString());
        return Variable();
    });
    BytecodeProgram outer = probe.engine.compileToBytecode("compile(\"function f()\\nend\")", "dir/outer.os");
    probe.engine.runBytecode(outer);
    EXPECT_EQ(inner.sourcePath, "dir/outer.os");
    EXPECT_EQ(inner.sourceDirectory, "dir");
    EXPECT_EQ(inner.functions.at(0).sourcePath, "dir/outer.os");
}

TEST(Compiler, AFaultLeavesNoSourceBehind) {
    OstrelScript engine;
    const std::string report = faultOf([&engine] { engine.compileToBytecode("x = \"open", "dir\\name.os"); });
    EXPECT_NE(report.find("\n  at dir/name.os:1, near token '\"open'\n"), std::string::npos) << report;
    EXPECT_EQ(engine.compileToBytecode("x = 1").sourcePath, "");
    const std::string second = faultOf([&engine] { engine.compileToBytecode("x = \"open"); });
    EXPECT_NE(second.find("\n  at line 1, near token '\"open'\n"), std::string::npos) << second;
}

TEST(Compiler, RetargetingKeepsBackslashesAndReachesEveryFunction) {
    BytecodeProgram program = OstrelScript().compileToBytecode("function f()\nfunction g()\nend\nend", "old/place.os");
    ASSERT_EQ(program.functions.size(), 2U);
    const auto expect = [&program](const std::string& path, const std::string& directory) {
        retargetBytecodeSource(program, path);
        EXPECT_EQ(program.sourcePath, path);
        EXPECT_EQ(program.sourceDirectory, directory);
        for (const BytecodeFunctionDecl& function : program.functions) {
            EXPECT_EQ(function.sourcePath, path);
            EXPECT_EQ(function.sourceDirectory, directory);
        }
    };
    expect("new/place/name.os", "new/place");
    expect("C:\\games\\name.os", "C:\\games");
    expect("a/b\\c.os", "a/b");
    expect("a\\b/c.os", "a\\b");
    expect("name.os", "");
    expect("/name.os", "");
    expect("", "");
}

// ---------------------------------------------------------------------------------------------------------------------
// Faults
// ---------------------------------------------------------------------------------------------------------------------

TEST(Compiler, MissingEndsAreReportedByTheKindOfBlock) {
    EXPECT_EQ(compileFault("if a"), "Missing 'end' for if block");
    EXPECT_EQ(compileFault("if a\nelseif b\nx = 1"), "Missing 'end' for if block");
    EXPECT_EQ(compileFault("if a\nelse"), "Missing 'end' for if block");
    EXPECT_EQ(compileFault("while a"), "Missing 'end' for while block");
    EXPECT_EQ(compileFault("repeat"), "Missing 'until' for repeat block");
    EXPECT_EQ(compileFault("for i = 1, 2"), "Missing 'end' for for block");
    EXPECT_EQ(compileFault("for v in x"), "Missing 'end' for for block");
    EXPECT_EQ(compileFault("function f()"), "Missing 'end' for function block");
    EXPECT_EQ(compileFault("decay function f()"), "Missing 'end' for function block");
    EXPECT_EQ(compileFault("native function f()"), "Missing 'end' for function block");
    EXPECT_EQ(compileFault("local function f()"), "Missing 'end' for function block");
    EXPECT_EQ(compileFault("nest"), "Missing 'end' for nest block");
    EXPECT_EQ(compileFault("nest(\"a\")"), "Missing 'end' for nest block");
}

TEST(Compiler, TheFaultsOfBlocksCarryNoPosition) {
    EXPECT_EQ(faultOf([] { compile("x = 1\nwhile a"); }), "Missing 'end' for while block");
}

TEST(Compiler, OneBlockWithinAnotherTakesTheEnd) {
    EXPECT_EQ(compileFault("while a\nif b\nend"), "Missing 'end' for while block");
    EXPECT_EQ(compileFault("function f()\nrepeat\nend\nuntil x\nend"), "Missing 'until' for repeat block");
}

TEST(Compiler, AHundredThousandBlocksCompileOrAreRefused) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += i % 2 == 0 ? "if a\n" : "while a\n";
    for (int i = 0; i < 100000; ++i) text += "end\n";
    const std::string fault = compileFault(text);
    EXPECT_TRUE(fault == "no fault" || fault == "native stack exhausted") << fault;
}
