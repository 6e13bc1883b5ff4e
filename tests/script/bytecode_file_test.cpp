// Bytecode files: the exact bytes, every accepted version, every refusal, and files cut or lying anywhere.
//
// Images of old versions are laid down by hand with the small builder below; nothing in the engine writes them any
// more, so nothing else could make them.

#include "script/ostrel_script.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

/// Lays down numbers and texts as the format has them.
struct ImageBuilder {
    Bytes bytes;

    ImageBuilder& raw(std::string_view text) {
        bytes.insert(bytes.end(), text.begin(), text.end());
        return *this;
    }
    ImageBuilder& u8(unsigned number) {
        bytes.push_back(static_cast<unsigned char>(number));
        return *this;
    }
    ImageBuilder& u16(unsigned number) { return u8(number & 0xFF).u8(number >> 8); }
    ImageBuilder& u32(std::uint32_t number) { return u16(number & 0xFFFF).u16(number >> 16); }
    ImageBuilder& text(std::string_view content) {
        return u32(static_cast<std::uint32_t>(content.size())).raw(content);
    }
    ImageBuilder& header(unsigned version) {
        raw("OSBC").u16(version).text("dir");
        if (version >= 5) text("dir/old.os");
        return *this;
    }
    ImageBuilder& line(unsigned version, std::string_view source, std::uint32_t number,
                       const std::vector<std::string>& tokens) {
        text(source);
        if (version >= 6) u32(number);
        u32(static_cast<std::uint32_t>(tokens.size()));
        for (const std::string& token : tokens) text(token);
        return *this;
    }
    ImageBuilder& chunk(unsigned version, std::uint32_t first, std::uint32_t count, bool nested) {
        u32(first).u32(count).u8(0);
        if (version >= 8) u8(nested ? 1 : 0);
        return *this;
    }
    /// The counts of that many sections without records.
    ImageBuilder& emptySections(int count) {
        for (int i = 0; i < count; ++i) u32(0);
        return *this;
    }
};

/// A program of every kind of block that the version knows. Run, it returns 12.
Bytes imageOfVersion(unsigned version) {
    const bool hasNest = version >= 8;
    ImageBuilder image;
    image.header(version);

    image.u32(14);
    image.line(version, "function twice(n)", 10, {"function", "twice", "(", "n", ")"});
    image.line(version, "return n * 2", 11, {"return", "n", "*", "2"});
    image.line(version, "end", 12, {"end"});
    image.line(version, "total = 0", 13, {"total", "=", "0"});
    image.line(version, "for i = 1, 3", 14, {"for", "i", "=", "1", ",", "3"});
    image.line(version, "total = total + i", 15, {"total", "=", "total", "+", "i"});
    image.line(version, "end", 16, {"end"});
    image.line(version, "if total == 6", 17, {"if", "total", "==", "6"});
    image.line(version, "total = twice(total)", 18, {"total", "=", "twice", "(", "total", ")"});
    image.line(version, "end", 19, {"end"});
    image.line(version, "nest(\"la\\\"bel\")", 20, {"nest", "(", "\"la\\\"bel\"", ")"});
    image.line(version, "end", 21, {"end"});
    image.line(version, "", 22, {});
    image.line(version, "return total", 23, {"return", "total"});

    // chunks: 0 top level, 1 function, 2 for, 3 if, 4 nest; instructions of the children come first
    image.u32(hasNest ? 9 : 8);
    image.u8(8).u32(1).u32(0);  // return n * 2
    image.u8(1).u32(5).u32(0);  // total = total + i
    image.u8(1).u32(8).u32(0);  // total = twice(total)
    image.u8(7).u32(0).u32(0);  // function
    image.u8(1).u32(3).u32(0);  // total = 0
    image.u8(5).u32(0).u32(0);  // for
    image.u8(2).u32(0).u32(77); // if, with a spare that nobody reads
    if (hasNest) image.u8(10).u32(0).u32(0);
    image.u8(8).u32(13).u32(0); // return total

    image.u32(hasNest ? 5 : 4);
    image.chunk(version, 3, hasNest ? 6 : 5, false);
    image.chunk(version, 0, 1, true);
    image.chunk(version, 1, 1, true);
    image.chunk(version, 2, 1, true);
    if (hasNest) image.chunk(version, 0, 0, true);

    image.u32(1).u32(1).u32(7).u32(3).u8(0); // if groups
    image.u32(0).u32(0);                     // while, repeat
    image.u32(1).u32(4).u32(2);              // numeric for
    image.u32(0);                            // generic for
    if (hasNest) {
        image.u32(1).u32(10).u32(4);
        if (version > 8) image.u32(0).text("la\"bel");
    }
    image.u32(1).u32(0).u32(1).u32(1).u32(2).text("dir");
    if (version >= 5) image.text("dir/old.os");
    return image.bytes;
}

/// Loads the image and gives the message of its refusal; empty if it loads.
std::string refusal(const Bytes& bytes) {
    OstrelScript engine;
    try {
        engine.deserialiseBytecode(bytes, "label.osb");
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

std::string messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

const std::string truncated = "Invalid bytecode file (truncated): label.osb";

/// A directory of one test's own, gone afterwards.
class BytecodeFiles : public testing::Test {
protected:
    BytecodeFiles() : root(std::filesystem::temp_directory_path() / "velmaris-bytecode-file-test") {
        std::filesystem::remove_all(root);
        std::filesystem::create_directories(root);
    }
    ~BytecodeFiles() override { std::filesystem::remove_all(root); }

    std::string file(const std::string& name) const { return (root / name).generic_string(); }

    std::filesystem::path root;
    OstrelScript engine;
};

} // namespace

// --- Writing ---------------------------------------------------------------------------------------------------------

TEST(BytecodeWriting, LaysDownEveryFieldInOrder) {
    OstrelScript engine;
    const BytecodeProgram program = engine.compileToBytecode("x = 1\nif x\ny()\nelse\nend", "d/a.os");
    // clang-format off
    const unsigned char expected[] = {
        'O', 'S', 'B', 'C', 0x3C, 0,                                       // magic, version
        1, 0, 0, 0, 'd',                                                   // sourceDirectory
        6, 0, 0, 0, 'd', '/', 'a', '.', 'o', 's',                          // sourcePath
        5, 0, 0, 0,                                                        // lines
        5, 0, 0, 0, 'x', ' ', '=', ' ', '1', 0, 0, 0, 0,                   // text, number
        3, 0, 0, 0, 1, 0, 0, 0, 'x', 1, 0, 0, 0, '=', 1, 0, 0, 0, '1',     // tokens
        4, 0, 0, 0, 'i', 'f', ' ', 'x', 1, 0, 0, 0,
        2, 0, 0, 0, 2, 0, 0, 0, 'i', 'f', 1, 0, 0, 0, 'x',
        3, 0, 0, 0, 'y', '(', ')', 2, 0, 0, 0,
        3, 0, 0, 0, 1, 0, 0, 0, 'y', 1, 0, 0, 0, '(', 1, 0, 0, 0, ')',
        4, 0, 0, 0, 'e', 'l', 's', 'e', 3, 0, 0, 0,
        1, 0, 0, 0, 4, 0, 0, 0, 'e', 'l', 's', 'e',
        3, 0, 0, 0, 'e', 'n', 'd', 4, 0, 0, 0,
        1, 0, 0, 0, 3, 0, 0, 0, 'e', 'n', 'd',
        3, 0, 0, 0,                                                        // instructions
        0, 2, 0, 0, 0, 0, 0, 0, 0,                                         // OpLine 2
        1, 0, 0, 0, 0, 0, 0, 0, 0,                                         // OpAssignFast 0
        2, 0, 0, 0, 0, 0, 0, 0, 0,                                         // OpIf 0
        3, 0, 0, 0,                                                        // chunks
        1, 0, 0, 0, 2, 0, 0, 0, 0, 0,                                      // top level
        0, 0, 0, 0, 1, 0, 0, 0, 0, 1,                                      // body of `if`
        1, 0, 0, 0, 0, 0, 0, 0, 0, 1,                                      // body of `else`
        1, 0, 0, 0, 2, 0, 0, 0,                                            // if groups, branches
        1, 0, 0, 0, 1, 0, 0, 0, 0,
        3, 0, 0, 0, 2, 0, 0, 0, 1,
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,                                // no while, repeat, numeric for
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,                                // no generic for, nest, function
    };
    // clang-format on
    EXPECT_EQ(engine.serialiseBytecode(program), Bytes(std::begin(expected), std::end(expected)));
}

TEST(BytecodeWriting, LaysDownLoopsNestsAndFunctions) {
    OstrelScript engine;
    BytecodeProgram program;
    program.chunks.push_back({0, 0, true, false});
    program.whileLoops.push_back({1, 2});
    program.repeatLoops.push_back({3, 4});
    program.numericForLoops.push_back({5, 6});
    program.genericForLoops.push_back({7, 8});
    program.nestBlocks.push_back({9, 10, 11, "n"});
    program.functions.push_back({12, 13, 14, 15, "d", "p"});
    program.inlineEligibility = {InlineEligibility::Yes};
    ImageBuilder expected;
    expected.raw("OSBC").u16(60).text("").text("").u32(0).u32(0);
    expected.u32(1).u32(0).u32(0).u8(1).u8(0);
    expected.u32(0);
    expected.u32(1).u32(1).u32(2).u32(1).u32(3).u32(4).u32(1).u32(5).u32(6).u32(1).u32(7).u32(8);
    expected.u32(1).u32(9).u32(10).u32(11).text("n");
    expected.u32(1).u32(12).u32(13).u32(14).u32(15).text("d").text("p");
    EXPECT_EQ(engine.serialiseBytecode(program), expected.bytes);
}

TEST(BytecodeWriting, KeepsTheSpareOfAnInstruction) {
    OstrelScript engine;
    BytecodeProgram program;
    program.instructions.push_back({9, 0x01020304, 0xA0B0C0D0});
    const Bytes bytes = engine.serialiseBytecode(program);
    const BytecodeProgram again = engine.deserialiseBytecode(bytes, "x");
    EXPECT_EQ(again.instructions[0].opcode, 9);
    EXPECT_EQ(again.instructions[0].operand, 0x01020304U);
    EXPECT_EQ(again.instructions[0].spare, 0xA0B0C0D0U);
}

TEST(BytecodeWriting, RaisesAnOldVersionTo60AndLeavesANewerOne) {
    OstrelScript engine;
    BytecodeProgram program;
    program.version = 5;
    EXPECT_EQ(engine.serialiseBytecode(program)[4], 60);
    program.version = 61;
    EXPECT_EQ(engine.serialiseBytecode(program)[4], 61);
}

// --- Versions --------------------------------------------------------------------------------------------------------

class BytecodeVersions : public testing::TestWithParam<unsigned> {};

TEST_P(BytecodeVersions, LoadsAndRuns) {
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(imageOfVersion(GetParam()), "x");
    EXPECT_EQ(program.version, GetParam());
    EXPECT_EQ(engine.runBytecode(program).toString(), "12");
}

TEST_P(BytecodeVersions, ReadsItsOptionalFieldsAndFillsInTheRest) {
    const unsigned version = GetParam();
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(imageOfVersion(version), "x");
    EXPECT_EQ(program.sourceDirectory, "dir");
    EXPECT_EQ(program.sourcePath, version >= 5 ? "dir/old.os" : "");
    ASSERT_EQ(program.lines.size(), 14U);
    EXPECT_EQ(program.lines[3].text, "total = 0");
    EXPECT_EQ(program.lines[3].tokens, (std::vector<std::string>{"total", "=", "0"}));
    EXPECT_EQ(program.lines[3].tokenAnalysis.size(), 3U);
    EXPECT_EQ(program.lines[3].lineNumber, version >= 6 ? 13U : 3U);
    EXPECT_FALSE(program.chunks[0].isNested);
    EXPECT_EQ(program.chunks[1].isNested, version >= 8);
    EXPECT_EQ(program.instructions[6].spare, 77U);
    EXPECT_EQ(program.nestBlocks.size(), version >= 8 ? 1U : 0U);
    ASSERT_EQ(program.functions.size(), 1U);
    EXPECT_EQ(program.functions[0].bodyEndLine, 2U);
    EXPECT_EQ(program.functions[0].sourceDirectory, "dir");
    EXPECT_EQ(program.functions[0].sourcePath, version >= 5 ? "dir/old.os" : "");
    EXPECT_TRUE(program.inlineEligibility.empty());
}

TEST_P(BytecodeVersions, PreparesTheLinesAgain) {
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(imageOfVersion(GetParam()), "x");
    EXPECT_EQ(program.lines[0].kind, LineKind::Function);
    EXPECT_EQ(program.lines[0].matchingEnd, 2U);
    EXPECT_EQ(program.lines[4].matchingEnd, 6U);
    EXPECT_EQ(program.lines[12].kind, LineKind::Blank);
}

TEST_P(BytecodeVersions, IsStoredAgainAsACurrentImage) {
    OstrelScript engine;
    const BytecodeProgram old = engine.deserialiseBytecode(imageOfVersion(GetParam()), "x");
    const Bytes bytes = engine.serialiseBytecode(old);
    const BytecodeProgram again = engine.deserialiseBytecode(bytes, "x");
    EXPECT_EQ(again.version, 60);
    EXPECT_EQ(again.sourcePath, old.sourcePath);
    EXPECT_EQ(again.lines[3].lineNumber, old.lines[3].lineNumber);
    EXPECT_EQ(again.nestBlocks.size(), old.nestBlocks.size());
    EXPECT_EQ(engine.serialiseBytecode(again), bytes);
    EXPECT_EQ(engine.runBytecode(again).toString(), "12");
}

TEST_P(BytecodeVersions, IsTruncatedWhereverItIsCut) {
    const Bytes whole = imageOfVersion(GetParam());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(refusal(cut), truncated) << "cut to " << length << " bytes";
    }
    EXPECT_EQ(refusal(whole), "");
}

TEST_P(BytecodeVersions, IgnoresBytesBehindTheLastSection) {
    Bytes bytes = imageOfVersion(GetParam());
    bytes.insert(bytes.end(), {0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(refusal(bytes), "");
}

INSTANTIATE_TEST_SUITE_P(Accepted, BytecodeVersions, testing::Values(4U, 5U, 6U, 7U, 8U, 60U));

TEST(BytecodeReading, RefusesAllOtherVersionsByTheirNumber) {
    for (unsigned version = 0; version <= 70; ++version) {
        if ((version >= 4 && version <= 8) || version == 60) continue;
        EXPECT_EQ(refusal(imageOfVersion(version)), "Unsupported bytecode version: " + std::to_string(version));
    }
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBC").u16(0xFFFF).bytes), "Unsupported bytecode version: 65535");
}

TEST(BytecodeReading, GivesVersion4AnEmptySourcePathAndANestCountWhenStored) {
    ImageBuilder old;
    old.raw("OSBC").u16(4).text("d").u32(0).u32(0).u32(1).u32(0).u32(0).u8(0).emptySections(6);
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(old.bytes, "x");
    ImageBuilder current;
    current.raw("OSBC").u16(60).text("d").text("").u32(0).u32(0).u32(1).u32(0).u32(0).u8(0).u8(0).emptySections(7);
    EXPECT_EQ(engine.serialiseBytecode(program), current.bytes);
}

TEST(BytecodeReading, TakesTheLabelOfAVersion8NestFromItsLine) {
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(imageOfVersion(8), "x");
    EXPECT_EQ(program.nestBlocks[0].label, "la\"bel");
    EXPECT_EQ(program.nestBlocks[0].parentChunk, 0U);
}

TEST(BytecodeReading, LeavesAVersion8NestWithoutALabelledLineUnlabelled) {
    ImageBuilder image;
    image.header(8).u32(2).line(8, "nest", 0, {"nest"}).line(8, "end", 1, {"end"});
    image.u32(0).u32(1).chunk(8, 0, 0, false).emptySections(5);
    image.u32(3).u32(0).u32(0).u32(1).u32(0).u32(2).u32(0).u32(0); // lines 0, 1, and 2 that does not exist
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(image.bytes, "x");
    ASSERT_EQ(program.nestBlocks.size(), 3U);
    for (const BytecodeNestBlock& block : program.nestBlocks) EXPECT_EQ(block.label, "");
}

TEST(BytecodeReading, TakesAnyByteButZeroForTrue) {
    ImageBuilder image;
    image.header(60).u32(0).u32(0);
    image.u32(2).u32(0).u32(0).u8(2).u8(255).u32(0).u32(0).u8(0).u8(0);
    image.u32(1).u32(1).u32(0).u32(0).u8(128).emptySections(6);
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(image.bytes, "x");
    EXPECT_TRUE(program.chunks[0].hasLocalDeclarations);
    EXPECT_TRUE(program.chunks[0].isNested);
    EXPECT_FALSE(program.chunks[1].hasLocalDeclarations);
    EXPECT_FALSE(program.chunks[1].isNested);
    EXPECT_TRUE(program.ifGroups[0].branches[0].isElse);
    const Bytes again = engine.serialiseBytecode(program);
    EXPECT_EQ(again[again.size() - 6 * 4 - 1], 1) << "a true bool is stored as 1";
}

// --- Bad images ------------------------------------------------------------------------------------------------------

TEST(BytecodeReading, RefusesAnotherMagic) {
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBD").u16(60).bytes), "Invalid bytecode file (bad magic): label.osb");
    EXPECT_EQ(refusal(ImageBuilder().raw("osbc").bytes), "Invalid bytecode file (bad magic): label.osb");
    EXPECT_EQ(refusal(ImageBuilder().raw("x = 1").bytes), "Invalid bytecode file (bad magic): label.osb");
}

TEST(BytecodeReading, TestsTheMagicBeforeTheLengthOfTheRest) {
    EXPECT_EQ(refusal({}), truncated);
    EXPECT_EQ(refusal(ImageBuilder().raw("xyz").bytes), truncated);
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBC").bytes), truncated);
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBC").u8(9).bytes), truncated);
}

TEST(BytecodeReading, RefusesATextThatRunsPastTheEnd) {
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBC").u16(60).u32(5).raw("abcd").bytes), truncated);
    EXPECT_EQ(refusal(ImageBuilder().raw("OSBC").u16(60).u32(0xFFFFFFFF).raw("abcd").bytes), truncated);
}

TEST(BytecodeReading, RefusesCountsThatCannotFitInEverySection) {
    // Each image ends in a count of which one record more is claimed than there are bytes for, or the largest count.
    const auto sections = [](int before) {
        return ImageBuilder().header(60).u32(0).u32(0).u32(0).emptySections(before);
    };
    const std::vector<std::pair<ImageBuilder, std::size_t>> counts = {
        {ImageBuilder().header(60), 12},               // lines
        {ImageBuilder().header(60).u32(0), 9},         // instructions
        {ImageBuilder().header(60).u32(0).u32(0), 10}, // chunks
        {sections(0), 4},                              // if groups
        {sections(0).u32(1), 9},                       // branches of a group
        {sections(1), 8},                              // while
        {sections(2), 8},                              // repeat
        {sections(3), 8},                              // numeric for
        {sections(4), 8},                              // generic for
        {sections(5), 16},                             // nest
        {sections(6), 24},                             // functions
    };
    for (const auto& [start, recordSize] : counts) {
        ImageBuilder huge = start;
        EXPECT_EQ(refusal(huge.u32(0xFFFFFFFF).emptySections(40).bytes), truncated);
        ImageBuilder oneTooMany = start;
        oneTooMany.u32(3).bytes.resize(start.bytes.size() + 4 + 3 * recordSize - 1);
        EXPECT_EQ(refusal(oneTooMany.bytes), truncated);
    }
}

TEST(BytecodeReading, RefusesATokenCountThatCannotFit) {
    EXPECT_EQ(refusal(ImageBuilder().header(60).u32(1).text("x").u32(0).u32(0xFFFFFFFF).emptySections(20).bytes),
              truncated);
    EXPECT_EQ(refusal(ImageBuilder().header(60).u32(1).text("x").u32(0).u32(2).u32(0).u8(0).bytes), truncated);
}

TEST(BytecodeReading, RefusesAFileCutInsideTheLastTokenList) {
    ImageBuilder image;
    image.header(60).u32(1).text("x = 1").u32(0).u32(3).text("x").text("=").u32(1);
    EXPECT_EQ(refusal(image.bytes), truncated);
}

TEST(BytecodeReading, PassesThroughWhatTheLinesAreAtFaultFor) {
    ImageBuilder image;
    image.header(60).u32(1).line(60, "nest(x)", 0, {"nest", "(", "x", ")"}).u32(0).emptySections(8);
    EXPECT_NE(refusal(image.bytes).find("nest labels must be string literals"), std::string::npos);
}

TEST(BytecodeReading, ReportsTheFaultOfALineBeforeATruncationBehindTheLines) {
    ImageBuilder image;
    image.header(60).u32(1).line(60, "nest(x)", 0, {"nest", "(", "x", ")"});
    EXPECT_NE(refusal(image.bytes).find("nest labels must be string literals"), std::string::npos);
}

TEST(BytecodeReading, LeavesIndexesToTheExecutor) {
    ImageBuilder image;
    image.header(60).u32(0);
    image.u32(1).u8(200).u32(0xFFFFFFFF).u32(0);
    image.u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u8(0).u8(0);
    image.u32(1).u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u8(0);
    for (int loops = 0; loops < 4; ++loops) image.u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF);
    image.u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u32(0xFFFFFFFF).text("");
    image.u32(1).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u32(0xFFFFFFFF).u32(0xFFFFFFFF).text("").text("");
    EXPECT_EQ(refusal(image.bytes), "");
}

TEST(BytecodeReading, TakesTokensThatNoTextGives) {
    ImageBuilder image;
    image.header(60).u32(2);
    image.line(60, "?", 0xFFFFFFFF, {"", "a b", "\"open", "((("});
    image.line(60, std::string(3, '\0'), 0, {std::string("\0=", 2), "="});
    image.u32(0).emptySections(8);
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(image.bytes, "x");
    EXPECT_EQ(program.lines[0].tokens[1], "a b");
    EXPECT_EQ(program.lines[0].lineNumber, 0xFFFFFFFFU);
    EXPECT_EQ(engine.serialiseBytecode(program), image.bytes);
}

TEST(BytecodeReading, KeepsACompiledProgramWhole) {
    OstrelScript engine;
    const std::string source =
        "local t = {1, 2, a = \"x\\\"y\"}\nwhile t[1] < 3\nt[1] += 1\nend\nrepeat\nt[2] = t[2] * 2\n"
        "until t[2] > 9\nfor k, v in pairs(t)\nif k == \"a\"\nlast = v\nelseif k\nelse\nend\nend\n"
        "native function f(a, ...)\nreturn a, ...\nend\nreturn t[1] + t[2], last, f(7)";
    const BytecodeProgram program = engine.compileToBytecode(source, "a/b.os");
    const BytecodeProgram again = engine.deserialiseBytecode(engine.serialiseBytecode(program), "x");
    EXPECT_EQ(engine.serialiseBytecode(again), engine.serialiseBytecode(program));
    const Variable result = engine.runBytecode(again);
    ASSERT_TRUE(result.isMulti());
    ASSERT_EQ(result.asMulti()->values.size(), 3U);
    EXPECT_EQ(result.asMulti()->values[0].toString(), "19");
    EXPECT_EQ(result.asMulti()->values[1].toString(), "x\"y");
    EXPECT_EQ(result.asMulti()->values[2].toString(), "7");
}

// --- Files -----------------------------------------------------------------------------------------------------------

TEST_F(BytecodeFiles, SavesWhatItSerialisesAndLoadsItAgain) {
    const BytecodeProgram program = engine.compileToBytecode("return 6 * 7", "x.os");
    std::ofstream(file("p.osb")) << std::string(100000, 'z');
    engine.saveBytecode(program, file("p.osb"));
    EXPECT_EQ(std::filesystem::file_size(file("p.osb")), engine.serialiseBytecode(program).size());
    EXPECT_EQ(engine.runBytecode(engine.loadBytecode(file("p.osb"))).toString(), "42");
}

TEST_F(BytecodeFiles, TakesBackslashesInPathsForSlashes) {
    std::string backslashed = file("sub/p.osb");
    std::filesystem::create_directory(root / "sub");
    for (char& c : backslashed)
        if (c == '/') c = '\\';
    engine.saveBytecode(engine.compileToBytecode("return 1"), backslashed);
    EXPECT_TRUE(std::filesystem::exists(root / "sub" / "p.osb"));
    EXPECT_EQ(engine.runBytecode(engine.loadBytecode(backslashed)).toString(), "1");
}

TEST_F(BytecodeFiles, ReportsAFileThatCannotBeOpened) {
    EXPECT_EQ(messageOf([&] { engine.loadBytecode(file("none\\p.osb")); }),
              "Failed to open bytecode file for reading: " + file("none/p.osb"));
    EXPECT_EQ(messageOf([&] { engine.saveBytecode(BytecodeProgram(), file("none\\p.osb")); }),
              "Failed to open bytecode file for writing: " + file("none/p.osb"));
}

TEST_F(BytecodeFiles, ReportsAnEmptyFileAsTruncated) {
    std::ofstream(file("empty.osb"));
    EXPECT_EQ(messageOf([&] { engine.loadBytecode(file("empty.osb")); }),
              "Invalid bytecode file (truncated): " + file("empty.osb"));
}

TEST_F(BytecodeFiles, NamesTheFileInTheMessagesOfItsContent) {
    std::ofstream(file("text.osb")) << "x = 1";
    EXPECT_EQ(messageOf([&] { engine.loadBytecode(file("text.osb")); }),
              "Invalid bytecode file (bad magic): " + file("text.osb"));
}

TEST_F(BytecodeFiles, ReportsAReadThatComesUpShort) {
    EXPECT_EQ(messageOf([&] { engine.loadBytecode(root.generic_string()); }),
              "Invalid bytecode file (truncated data): " + root.generic_string());
}

TEST_F(BytecodeFiles, ReportsAFileWithoutASize) {
    ASSERT_EQ(mkfifo(file("pipe").c_str(), 0600), 0);
    std::fstream keepOpen(file("pipe"), std::ios::in | std::ios::out); // so that opening for reading does not wait
    EXPECT_EQ(messageOf([&] { engine.loadBytecode(file("pipe")); }), "Failed to size bytecode file: " + file("pipe"));
}

TEST_F(BytecodeFiles, ReportsAFullDisk) {
    EXPECT_EQ(messageOf([&] { engine.saveBytecode(BytecodeProgram(), "/dev/full"); }),
              "Failed to write bytecode file: /dev/full");
}

// --- The recorded source ---------------------------------------------------------------------------------------------

TEST(BytecodeSource, IsRetargetedInTheProgramAndEveryFunction) {
    OstrelScript engine;
    BytecodeProgram program = engine.compileToBytecode("function f()\nend\nfunction g()\nend", "old/x.os");
    retargetBytecodeSource(program, "C:\\game/Resources\\lua.os");
    EXPECT_EQ(program.sourcePath, "C:\\game/Resources\\lua.os");
    EXPECT_EQ(program.sourceDirectory, "C:\\game/Resources");
    ASSERT_EQ(program.functions.size(), 2U);
    for (const BytecodeFunctionDecl& function : program.functions) {
        EXPECT_EQ(function.sourcePath, "C:\\game/Resources\\lua.os");
        EXPECT_EQ(function.sourceDirectory, "C:\\game/Resources");
    }
}

TEST(BytecodeSource, HasNoDirectoryWithoutASeparator) {
    BytecodeProgram program;
    program.sourceDirectory = "old";
    retargetBytecodeSource(program, "lua.os");
    EXPECT_EQ(program.sourceDirectory, "");
    retargetBytecodeSource(program, "/lua.os");
    EXPECT_EQ(program.sourceDirectory, "");
    retargetBytecodeSource(program, "");
    EXPECT_EQ(program.sourcePath, "");
}
