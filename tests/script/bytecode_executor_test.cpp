// The executor: programs that don't fit together, old programs whose bodies run inline, and what a run leaves behind.
//
// Compiled programs are changed by hand here, as a corrupt or old file would have them.

#include "probe.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr std::uint32_t outOfRange = 1000;

/// Compiles a text, lets `change` spoil the program, runs it; gives the text of the result or the whole fault.
std::string runChanged(const std::string& text, const std::function<void(BytecodeProgram&)>& change) {
    OstrelScript engine;
    BytecodeProgram program = engine.compileToBytecode(text);
    change(program);
    try {
        return engine.runBytecode(std::move(program)).toString();
    } catch (const std::exception& fault) {
        return fault.what();
    }
}

/// As programs of the first versions have it: no chunk is nested.
void makeOld(BytecodeProgram& program) {
    for (BytecodeChunk& chunk : program.chunks) chunk.isNested = false;
}

/// What a program says and gives, as it is or as an old one.
std::string told(const std::string& text, bool old) {
    Probe probe;
    BytecodeProgram program = probe.engine.compileToBytecode(text);
    if (old) makeOld(program);
    try {
        const std::string result = probe.engine.runBytecode(std::move(program)).toString();
        return probe.said + "-> " + result;
    } catch (const std::exception& fault) {
        return probe.said + "! " + fault.what();
    }
}

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Programs that don't fit together
// ---------------------------------------------------------------------------------------------------------------------

TEST(CorruptProgram, NoChunkAtAll) {
    EXPECT_EQ(runChanged("x = 1", [](BytecodeProgram& program) { program.chunks.clear(); }),
              "Invalid bytecode chunk index");
}

TEST(CorruptProgram, ABodyThatIsNoChunk) {
    const char* const message = "Invalid bytecode chunk index";
    EXPECT_EQ(runChanged("if true\nend", [](BytecodeProgram& p) { p.ifGroups[0].branches[0].bodyChunk = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("while true\nend", [](BytecodeProgram& p) { p.whileLoops[0].bodyChunk = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("repeat\nuntil true", [](BytecodeProgram& p) { p.repeatLoops[0].bodyChunk = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("for i = 1, 2\nend", [](BytecodeProgram& p) { p.numericForLoops[0].bodyChunk = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("for v in [1]\nend", [](BytecodeProgram& p) { p.genericForLoops[0].bodyChunk = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("nest\nend", [](BytecodeProgram& p) { p.nestBlocks[0].bodyChunk = outOfRange; }), message);
    EXPECT_EQ(
        runChanged("function f()\nx = 1\nend\nf()", [](BytecodeProgram& p) { p.functions[0].bodyChunk = outOfRange; }),
        message);
}

TEST(CorruptProgram, AChunkBeyondTheInstructions) {
    const char* const message = "Bytecode chunk range is out of bounds";
    EXPECT_EQ(runChanged("x = 1", [](BytecodeProgram& p) { p.chunks[0].instructionCount = 2; }), message);
    EXPECT_EQ(runChanged("x = 1", [](BytecodeProgram& p) { p.chunks[0].firstInstruction = 1; }), message);
    EXPECT_EQ(runChanged("x = 1",
                         [](BytecodeProgram& p) {
                             p.chunks[0].firstInstruction = std::numeric_limits<std::uint32_t>::max();
                             p.chunks[0].instructionCount = 2; // the sum must not wrap
                         }),
              message);
}

TEST(CorruptProgram, ALineBeyondTheLines) {
    const char* const message = "Bytecode line index out of range";
    for (const char* text : {"f()", "x = 1", "return 1", "break"})
        EXPECT_EQ(runChanged(text, [](BytecodeProgram& p) { p.instructions[0].operand = outOfRange; }), message)
            << text;
    EXPECT_EQ(runChanged("if true\nend", [](BytecodeProgram& p) { p.ifGroups[0].branches[0].line = outOfRange; }),
              message);
    EXPECT_EQ(
        runChanged("if false\nelse\nend", [](BytecodeProgram& p) { p.ifGroups[0].branches[1].line = outOfRange; }),
        message);
    EXPECT_EQ(runChanged("while true\nend", [](BytecodeProgram& p) { p.whileLoops[0].line = outOfRange; }), message);
    EXPECT_EQ(runChanged("repeat\nuntil true", [](BytecodeProgram& p) { p.repeatLoops[0].line = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("for i = 1, 2\nend", [](BytecodeProgram& p) { p.numericForLoops[0].line = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("for v in []\nend", [](BytecodeProgram& p) { p.genericForLoops[0].line = outOfRange; }),
              message);
    EXPECT_EQ(runChanged("function f()\nend", [](BytecodeProgram& p) { p.functions[0].line = outOfRange; }), message);
    EXPECT_EQ(runChanged("nest\nend", [](BytecodeProgram& p) { p.nestBlocks[0].line = outOfRange; }), message);
}

TEST(CorruptProgram, ARecordBeyondItsTable) {
    const auto run = [](const char* text) {
        return runChanged(text, [](BytecodeProgram& p) { p.instructions.back().operand = outOfRange; });
    };
    EXPECT_EQ(run("if true\nend"), "Bytecode if-group index out of range");
    EXPECT_EQ(run("while true\nend"), "Bytecode while-loop index out of range");
    EXPECT_EQ(run("repeat\nuntil true"), "Bytecode repeat-loop index out of range");
    EXPECT_EQ(run("for i = 1, 2\nend"), "Bytecode numeric-for index out of range");
    EXPECT_EQ(run("for v in []\nend"), "Bytecode generic-for index out of range");
    EXPECT_EQ(run("function f()\nend"), "Bytecode function-declaration index out of range");
    EXPECT_EQ(run("nest\nend"), "Bytecode nest-block index out of range");
}

TEST(CorruptProgram, AnUnknownOpcodeEndsItsChunk) {
    for (const int number : {11, 12, 200, 255}) {
        const auto opcode = static_cast<std::uint8_t>(number);
        EXPECT_EQ(runChanged("x = 1\nreturn 5", [opcode](BytecodeProgram& p) { p.instructions[0].opcode = opcode; }),
                  "not");
        EXPECT_EQ(runChanged("if true\nx = 1\nreturn 5\nend\nreturn 6",
                             [opcode](BytecodeProgram& p) { p.instructions[0].opcode = opcode; }),
                  "6"); // only that chunk
    }
}

TEST(CorruptProgram, TheFaultIsCaughtWithoutBeingDressedUp) {
    Probe probe;
    BytecodeProgram program =
        probe.engine.compileToBytecode("function f()\nfor i = 1, 2\nlocal x = 1\nif true\nx = 2\nend\nend\nend\nok, "
                                       "why = pcall(f)\nsay(ok, why, x, i)");
    program.ifGroups[0].branches[0].bodyChunk = outOfRange;
    probe.engine.runBytecode(program);
    EXPECT_EQ(probe.said, "false Invalid bytecode chunk index not not ");
}

TEST(CorruptProgram, EveryOperandOnEveryLineGivesAResultOrAFault) {
    // Every instruction is tried with every opcode on every line and record of a program that has one of each.
    const std::string text =
        "x = 1\nlocal y\nx, y = 1, 2\nf = 5\nif x\nx = 2\nelseif y\nelse\nend\nwhile x\nx = 0\nbreak\nend\n"
        "repeat\nuntil true\nfor i = 1, 2\nend\nfor v in [1]\nend\nfor x y z\nend\nnest\nend\n"
        "function g(a)\nreturn a\nend\nreturn 1, 2\nreturn\nuntil\nend\n";
    OstrelScript engine;
    engine.setStepLimit(std::numeric_limits<std::uint64_t>::max());
    const BytecodeProgram program = engine.compileToBytecode(text);
    std::size_t faults = 0;
    for (std::size_t at = 0; at < program.instructions.size(); ++at) {
        for (std::uint8_t opcode = 0; opcode <= 11; ++opcode) {
            for (std::uint32_t operand = 0; operand <= program.lines.size(); ++operand) {
                BytecodeProgram changed = program;
                changed.instructions[at].opcode = opcode;
                changed.instructions[at].operand = operand;
                engine.setStepLimit(1000);
                faults += faultOf([&] { engine.runBytecode(std::move(changed)); }) != "no fault";
            }
        }
    }
    EXPECT_GT(faults, 0U);
    for (std::uint32_t line = 0; line < program.lines.size(); ++line) {
        for (int record = 0; record < 6; ++record) {
            BytecodeProgram changed = program;
            if (record == 0) changed.ifGroups[0].branches[0].line = line;
            if (record == 1) changed.whileLoops[0].line = line;
            if (record == 2) changed.repeatLoops[0].line = line;
            if (record == 3) changed.numericForLoops[0].line = line;
            if (record == 4) changed.genericForLoops[0].line = line;
            if (record == 5) changed.functions[0].line = line;
            engine.setStepLimit(1000);
            faultOf([&] { engine.runBytecode(std::move(changed)); });
        }
    }
}

TEST(CorruptProgram, AHeaderOfTheOtherKindIsAFaultOfTheHeader) {
    const auto swapLoops = [](BytecodeProgram& program) {
        std::swap(program.numericForLoops, program.genericForLoops);
        for (Instruction& instruction : program.instructions)
            instruction.opcode = instruction.opcode == 5 ? 6 : (instruction.opcode == 6 ? 5 : instruction.opcode);
    };
    EXPECT_EQ(firstLine(runChanged("for i = 1, 2\nend", swapLoops)),
              "OstrelScript error: Expected 'in' in generic for loop");
    EXPECT_EQ(firstLine(runChanged("for v in [1]\nend", swapLoops)), "OstrelScript error: Expected a numeric value");
}

TEST(CorruptProgram, ABranchOnAWhileLineNamesTheWhile) {
    EXPECT_EQ(firstLine(runChanged("if true\nend\nwhile true false\nend",
                                   [](BytecodeProgram& p) { p.ifGroups[0].branches[0].line = 2; })),
              "OstrelScript error: Unexpected token after while condition");
}

TEST(CorruptProgram, ChunksInACircleEndInAFault) {
    const char* const message = "OstrelScript error: native stack exhausted";
    EXPECT_EQ(firstLine(runChanged("if true\nx = 1\nend",
                                   [](BytecodeProgram& p) { p.ifGroups[0].branches[0].bodyChunk = 0; })),
              message);
    EXPECT_EQ(
        firstLine(runChanged("while true\nx = 1\nend", [](BytecodeProgram& p) { p.whileLoops[0].bodyChunk = 0; })),
        message);
    EXPECT_EQ(firstLine(runChanged("repeat\nnest\nend\nuntil true",
                                   [](BytecodeProgram& p) { p.nestBlocks[0].bodyChunk = 1; })),
              message);
    EXPECT_EQ(firstLine(runChanged("if true\nx = 1\nend",
                                   [](BytecodeProgram& p) {
                                       makeOld(p);
                                       p.ifGroups[0].branches[0].bodyChunk = 0;
                                   })),
              message);
    EXPECT_EQ(firstLine(runChanged("function f()\nx = 1\nend\nf()",
                                   [](BytecodeProgram& p) { p.functions[0].bodyChunk = 0; })),
              message);
}

TEST(CorruptProgram, AFunctionWhoseLinesDontExistRunsItsChunk) {
    for (const std::uint32_t line : {outOfRange, std::numeric_limits<std::uint32_t>::max()}) {
        EXPECT_EQ(runChanged("function f()\nreturn 5\nend\nreturn f()",
                             [line](BytecodeProgram& p) { p.functions[0].bodyEndLine = line; }),
                  "5");
        EXPECT_EQ(runChanged("function f()\nreturn 5\nend\nreturn f()",
                             [line](BytecodeProgram& p) { p.functions[0].bodyStartLine = line; }),
                  "5");
    }
}

TEST(CorruptProgram, AMissingLocalMarkHurtsNothing) {
    const char* const text = "function f(a)\nlocal x = a\nfor i = 1, 2\nlocal y = i\nx += y\nend\nreturn x\nend\n"
                             "local z = f(1)\nwhile z < 20\nlocal w = z\nz += w\nend\nreturn z";
    const auto unmark = [](BytecodeProgram& program) {
        for (BytecodeChunk& chunk : program.chunks) chunk.hasLocalDeclarations = false;
    };
    EXPECT_EQ(runChanged(text, [](BytecodeProgram&) {}), "32");
    EXPECT_EQ(runChanged(text, unmark), "32");
    EXPECT_EQ(runChanged(text,
                         [&unmark](BytecodeProgram& program) {
                             unmark(program);
                             makeOld(program);
                         }),
              "32");
}

// ---------------------------------------------------------------------------------------------------------------------
// Old programs: bodies that run inline
// ---------------------------------------------------------------------------------------------------------------------

TEST(InlineBodies, GiveWhatChunksGive) {
    const std::vector<std::string> texts = {
        "for i = 1, 3\nsay(i)\nend",
        "i = 0\nwhile i < 5\ni += 1\nif i == 2\nsay(\"two\")\nelseif i == 4\nbreak\nelse\nsay(i)\nend\nend\nreturn i",
        "i = 0\nrepeat\ni += 1\nfor j = 1, i\nif j == 2\nbreak\nend\nsay(i, j)\nend\nuntil i == 3\nreturn i",
        "for i = 1, 2\nfor v in [1, 2]\nsay(i, v)\nif v == 1\nbreak\nend\nend\nend",
        "for i = 1, 3\nif i == 2\nreturn i\nend\nsay(i)\nend\nreturn \"never\"",
        "for i = 1, 2\nlocal x = i\nsay(x)\nend\nreturn x",
        "while true\nx = 1\nbreak\nend\nrepeat\nx += 1\nif x > 3\nbreak\nend\nuntil false\nreturn x",
        "for i = 1, 2\nnest\nsay(i)\nend\nfunction f(a)\nreturn a * 2\nend\nsay(f(i))\nend",
        "if true\nbreak\nend",
        "break",
        "for i = 1, 2\nx = 1 + not\nend",
        "for i = 1, 2\nif true\nwhile true\nx = 1 + not\nend\nend\nend",
        "function f()\nfor i = 1, 3\nsay(i)\nif i == 2\nerror(\"soft\")\nend\nend\nend\na, b = pcall(f)\nsay(a, b)",
        "function f()\nwhile true\nfor i = 1, 2\nlocal x = i\nif i == 2\nreturn x\nend\nend\nend\nend\nreturn f()",
        "if false\nelse\nend\nfor i = 1, 0\nend\nwhile false\nend\nrepeat\nuntil true\nreturn \"empty\"",
        "if 0\nreturn \"zero\"\nend\nx = 3\nwhile x\nx -= 1\nend\nreturn x",
        "repeat\nuntil",
        "for i = 1, 3, 0\nend",
        "n = 0\nfor i = 1, 100\nif i % 3 == 0\nn += i\nelseif i % 5 == 0\nn -= i\nelse\nwhile n % 7 != 0\nn += "
        "1\nend\nend\nend\nreturn n",
    };
    for (const std::string& text : texts) EXPECT_EQ(told(text, true), told(text, false)) << text;
}

TEST(InlineBodies, AreEligibleByTheirInstructions) {
    const auto eligibility = [](const std::string& text, std::size_t chunk, bool old) {
        OstrelScript engine;
        auto program = std::make_shared<BytecodeProgram>(engine.compileToBytecode(text));
        if (old) makeOld(*program);
        engine.runBytecodeProgram(program);
        return chunk < program->inlineEligibility.size() ? program->inlineEligibility[chunk]
                                                         : InlineEligibility::Unknown;
    };
    using enum InlineEligibility;
    EXPECT_EQ(eligibility("if true\nx = 1\nend", 1, true), Yes);
    EXPECT_NE(eligibility("if true\nx = 1\nend", 1, false), Yes); // nested
    EXPECT_EQ(eligibility("if true\nlen(\"\")\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("while true\nbreak\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("if true\nend", 1, true), No); // empty
    EXPECT_EQ(eligibility("if true\nlocal x = 1\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nfor v in []\nend\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nfunction f()\nend\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nnest\nend\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nreturn\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nif true\nx = 1\nend\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("if true\nif true\nx = 1\nelse\nreturn\nend\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nwhile false\nx = 1\nend\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("if true\nwhile false\nreturn\nend\nend", 1, true), No);
    EXPECT_EQ(eligibility("if true\nrepeat\nx = 1\nuntil true\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("if true\nrepeat\nuntil true\nend", 1, true), No); // its body is empty
    EXPECT_EQ(eligibility("if true\nfor i = 1, 2\nx = i\nend\nend", 1, true), Yes);
    EXPECT_EQ(eligibility("if true\nfor i = 1, 2\nlocal x = i\nend\nend", 1, true), No);
}

TEST(InlineBodies, AreNotUsedBelowAScope) {
    // The body's chunk is fit, but the text has a local: every block gets a scope of its own.
    const std::string text = "local x = 1\nif true\nx#3 = 2\ny#3 = 5\nend\nsay(x, y)";
    EXPECT_EQ(told(text, true), "2 not -> not");
    EXPECT_EQ(told(text, false), "2 not -> not");
}

TEST(InlineBodies, HaveNamesOfTheirOwnForTheFaultsOfTheirTables) {
    const auto run = [](const std::string& text, Opcode opcode, std::uint32_t operand) {
        return runChanged(text, [opcode, operand](BytecodeProgram& program) {
            makeOld(program);
            // A remembered fitness is believed; the body's first instruction is not what was looked at.
            program.inlineEligibility.assign(program.chunks.size(), InlineEligibility::Yes);
            program.instructions[0] = {static_cast<std::uint8_t>(opcode), operand, 0};
        });
    };
    const std::string text = "if true\nx = 1\nend";
    EXPECT_EQ(run(text, Opcode::If, outOfRange), "Inline bytecode if-group index out of range");
    EXPECT_EQ(run(text, Opcode::While, outOfRange), "Inline bytecode while-loop index out of range");
    EXPECT_EQ(run(text, Opcode::Repeat, outOfRange), "Inline bytecode repeat-loop index out of range");
    EXPECT_EQ(run(text, Opcode::ForNumeric, outOfRange), "Inline bytecode numeric-for index out of range");
    EXPECT_EQ(run(text, Opcode::Line, outOfRange), "Bytecode line index out of range");
    EXPECT_EQ(run(text, Opcode::AssignFast, outOfRange), "Bytecode line index out of range");
    for (const Opcode opcode : {Opcode::ForGeneric, Opcode::Function, Opcode::Return, Opcode::Nest})
        EXPECT_EQ(run(text, opcode, 0), "Unexpected non-inline opcode");
    EXPECT_EQ(run(text, static_cast<Opcode>(11), 0), "Unexpected non-inline opcode");
    EXPECT_EQ(run(text, static_cast<Opcode>(255), 0), "Unexpected non-inline opcode");
}

TEST(InlineBodies, CheckTheirRange) {
    EXPECT_EQ(runChanged("if true\nx = 1\nend",
                         [](BytecodeProgram& program) {
                             makeOld(program);
                             program.inlineEligibility.assign(program.chunks.size(), InlineEligibility::Yes);
                             program.chunks[1].instructionCount = outOfRange;
                         }),
              "Bytecode chunk range is out of bounds");
    EXPECT_EQ(runChanged("if true\nx = 1\nend",
                         [](BytecodeProgram& program) {
                             makeOld(program);
                             program.chunks[1].instructionCount = outOfRange; // found unfit, run as a chunk
                         }),
              "Bytecode chunk range is out of bounds");
}

TEST(InlineBodies, FunctionsOfOldProgramsStandInTheNativeScopeOfTheirDeclaration) {
    // Whether the body is one `return` or more, it reads the same native scope.
    const std::string text = "native n = \"declared here\"\nfunction short()\nreturn n\nend\nfunction long()\nx = n\n"
                             "return x\nend\nreturn toString(short()) + \", \" + toString(long())";
    EXPECT_EQ(told(text, true), "-> declared here, declared here");
    EXPECT_EQ(told(text, false), "-> not, not");
}

// ---------------------------------------------------------------------------------------------------------------------
// Runs
// ---------------------------------------------------------------------------------------------------------------------

TEST(Run, GivesWhatTheTopLevelReturns) {
    OstrelScript engine;
    EXPECT_EQ(engine.runBytecode(engine.compileToBytecode("return 5")).toString(), "5");
    EXPECT_TRUE(engine.runBytecode(engine.compileToBytecode("x = 5")).isNil());
    EXPECT_TRUE(engine.runBytecode(engine.compileToBytecode("")).isNil());
    EXPECT_TRUE(engine.runBytecode(engine.compileToBytecode("return 1, 2")).isMulti());
    EXPECT_EQ(engine.runBytecode(engine.compileToBytecode("for i = 1, 5\nwhile true\nreturn i\nend\nend")).toString(),
              "1");
}

TEST(Run, ABreakThatLeavesTheScriptIsAFault) {
    OstrelScript engine;
    const std::string fault =
        faultOf([&engine] { engine.runBytecode(engine.compileToBytecode("x = 1\nif x\nbreak\nend", "dir/a.os")); });
    EXPECT_EQ(fault, "OstrelScript error: break used outside a loop\n  at dir/a.os:3, near token 'break'\n  break\n"
                     "  ^~~~~\n  hint: check spelling, operators, parentheses, and quote matching\n");
}

TEST(Run, FunctionsKeepTheirProgramAlive) {
    Probe probe;
    probe.engine.runBytecode(
        probe.engine.compileToBytecode("function f(a)\nlocal b = a\nreturn b + \"!\"\nend", "f.os"));
    EXPECT_EQ(probe.run("return f(\"alive\")"), "alive!");
    EXPECT_EQ(probe.run("function f()\nreturn 1\nend\nreturn f()"), "1");
}

TEST(Run, PushesTheSourceOfTheProgram) {
    Probe probe;
    probe.addFunction("resolve", [&probe](const std::vector<Variable>& arguments) {
        return Variable(probe.engine.resolvePath(arguments.at(0).asString()));
    });
    BytecodeProgram program = probe.engine.compileToBytecode("say(resolve(\"no-such-file\"))", "some/dir/file.os");
    probe.engine.runBytecode(program);
    EXPECT_EQ(probe.said, "some/dir/no-such-file ");
    EXPECT_EQ(probe.engine.resolvePath("no-such-file"), "no-such-file");
    program.sourceDirectory.clear(); // then the path's directory counts
    probe.engine.runBytecode(program);
    EXPECT_EQ(probe.said, "some/dir/no-such-file some/dir/no-such-file ");
    program.sourcePath.clear();
    probe.engine.runBytecode(program);
    EXPECT_EQ(probe.said, "some/dir/no-such-file some/dir/no-such-file no-such-file ");
}

TEST(Run, TheStepLimitStopsEveryKindOfLoop) {
    for (const char* text : {"while true\nend", "repeat\nuntil false", "for i = 1, 2147483647\nend",
                             "while true\nx = 1\nend", "function f()\nreturn f()\nend\nwhile true\npcall(f)\nend"}) {
        OstrelScript engine;
        engine.setStepLimit(10000);
        EXPECT_EQ(firstLine(faultOf([&] { engine.runScript(text); })), "OstrelScript error: step limit reached")
            << text;
    }
}
