// The decompressor: every kind of block, every fault, and its two ways of decoding against each other.

#include "deflate_maker.h"
#include "plush/inflate.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <optional>

namespace {

using namespace png_test;
using wm::png::Inflater;

/// Cuts `stream` into pieces of `pieceSize` bytes.
std::vector<std::span<const std::uint8_t>> pieces(const Bytes& stream, std::size_t pieceSize) {
    std::vector<std::span<const std::uint8_t>> cut;
    for (std::size_t at = 0; at < stream.size(); at += pieceSize)
        cut.emplace_back(stream.data() + at, std::min(pieceSize, stream.size() - at));
    return cut;
}

/// The whole output, taken `takeSize` bytes at a time; no value on failure.
std::optional<Bytes> inflated(const Bytes& stream, std::size_t expectedSize, std::size_t takeSize = 1000,
                              std::size_t pieceSize = SIZE_MAX / 2) {
    const auto input = pieces(stream, std::min(pieceSize, std::max<std::size_t>(stream.size(), 1)));
    Inflater inflater(input, expectedSize, takeSize);
    Bytes output;
    while (output.size() < expectedSize) {
        const std::size_t size = std::min(takeSize, expectedSize - output.size());
        const std::uint8_t* bytes = inflater.take(size);
        if (bytes == nullptr) return std::nullopt;
        output.insert(output.end(), bytes, bytes + size);
    }
    if (!inflater.finish()) return std::nullopt;
    return output;
}

Bytes text(const std::string& letters) { return Bytes(letters.begin(), letters.end()); }

std::vector<Token> literals(const std::string& letters) {
    std::vector<Token> tokens;
    for (const char letter : letters) tokens.push_back(literal(static_cast<std::uint8_t>(letter)));
    return tokens;
}

/// Whether a stream of the given blocks, whose output would be `output`, is taken.
bool accepts(DeflateMaker& maker, const Bytes& output) {
    return inflated(maker.trailer(plainAdler(output)).finish(), output.size()) == output;
}

DeflateMaker stream() { return DeflateMaker().streamHeader(); }

// ---- block types ----

TEST(Inflate, AStoredBlock) {
    auto maker = stream().stored(text("hello"), true);
    EXPECT_TRUE(accepts(maker, text("hello")));
}

TEST(Inflate, EmptyStoredBlocksBetweenOthers) {
    auto maker = stream().stored({}, false).stored(text("hel"), false).stored({}, false).stored(text("lo"), true);
    EXPECT_TRUE(accepts(maker, text("hello")));
}

TEST(Inflate, AStoredBlockOfTheLargestSize) {
    const Bytes data(65535, 'x');
    auto maker = stream().stored(data, true);
    EXPECT_TRUE(accepts(maker, data));
}

TEST(Inflate, AFixedBlockOfAllLiterals) {
    std::vector<Token> tokens;
    for (int byte = 0; byte < 256; ++byte) tokens.push_back(literal(static_cast<std::uint8_t>(byte)));
    auto maker = stream().fixed(tokens, true);
    EXPECT_TRUE(accepts(maker, expand(tokens)));
}

TEST(Inflate, EveryLengthAndDistanceOfAFixedBlock) {
    std::vector<Token> tokens;
    for (int i = 0; i < 33000; ++i) tokens.push_back(literal(static_cast<std::uint8_t>(i * 7 + i / 256)));
    for (std::uint32_t length = 3; length <= 258; ++length) tokens.push_back(match(length, length * 3 % 40 + 1));
    for (std::uint32_t distance = 1; distance <= 32768; distance = distance * 5 / 4 + 1)
        tokens.push_back(match(5, distance));
    tokens.push_back(match(258, 32768));
    auto maker = stream().fixed(tokens, true);
    EXPECT_TRUE(accepts(maker, expand(tokens)));
}

TEST(Inflate, MatchesThatOverlapThemselvesRepeatTheirPattern) {
    for (std::uint32_t distance = 1; distance <= 40; ++distance)
        for (std::uint32_t length : {3U, 4U, 7U, 8U, 9U, 15U, 16U, 17U, 31U, 33U, 257U, 258U}) {
            std::vector<Token> tokens;
            for (std::uint32_t i = 0; i < distance; ++i) tokens.push_back(literal(static_cast<std::uint8_t>(i + 65)));
            tokens.push_back(match(length, distance));
            tokens.push_back(literal('!'));
            // Enough behind it that the match itself takes the fast way.
            for (int i = 0; i < 40; ++i) tokens.push_back(literal('.'));
            auto maker = stream().fixed(tokens, true);
            ASSERT_TRUE(accepts(maker, expand(tokens))) << distance << ' ' << length;
        }
}

TEST(Inflate, ADynamicBlock) {
    CodeLengths literalCode(257);
    literalCode['a'] = 1;
    literalCode['b'] = 2;
    literalCode[256] = 2;
    auto maker = stream().dynamic(literals("abbaab"), true, literalCode, CodeLengths(1, 0));
    EXPECT_TRUE(accepts(maker, text("abbaab")));
}

TEST(Inflate, ADistanceCodeOfOneSymbolMayLeaveHalfUnused) {
    CodeLengths literalCode(260);
    literalCode['a'] = 1;
    literalCode[259] = 2; // length 5
    literalCode[256] = 2;
    const std::vector<Token> tokens = {literal('a'), match(5, 1)};
    auto maker = stream().dynamic(tokens, true, literalCode, CodeLengths(1, 1));
    EXPECT_TRUE(accepts(maker, text("aaaaaa")));
}

TEST(Inflate, BlocksOfAllTypesFollowEachOtherAndReferBack) {
    CodeLengths literalCode(258);
    literalCode['c'] = 2;
    literalCode[256] = 2;
    literalCode[257] = 1; // length 3
    CodeLengths distanceCode(5, 0);
    distanceCode[0] = 1;
    distanceCode[4] = 1; // distances 5 and 6
    const std::vector<Token> third = {literal('c'), match(3, 5), match(3, 1)};
    auto maker = stream().fixed(literals("ab"), false).stored(text("xyz"), false);
    maker.dynamic(third, false, literalCode, distanceCode).fixed({}, true);
    EXPECT_TRUE(accepts(maker, expand(third, text("abxyz"))));
}

/// Random tokens in random codes: blocks of `count` tokens each.
DeflateMaker randomStream(Random& random, std::size_t blocks, std::size_t count, Bytes& output) {
    DeflateMaker maker = stream();
    for (std::size_t block = 0; block < blocks; ++block) {
        const bool last = block + 1 == blocks;
        std::vector<Token> tokens;
        std::size_t size = output.size();
        std::vector<bool> usedLiterals(286);
        std::vector<bool> usedDistances(30);
        usedLiterals[256] = true;
        usedLiterals[random() % 256] = true;
        usedDistances[0] = usedDistances[1] = true;
        const unsigned literalShare = random() % 100;
        const unsigned colours = 1 + random() % 256;
        for (std::size_t i = 0; i < count; ++i) {
            Token token = literal(static_cast<std::uint8_t>(random() % colours));
            if (size > 0 && random() % 100 >= literalShare) {
                const std::uint32_t farthest = static_cast<std::uint32_t>(std::min<std::size_t>(size, 32768));
                const std::uint32_t nearest = random() % 2 == 0 ? 1 + random() % 20 : 1 + random() % farthest;
                token = match(3 + random() % 256, std::min(farthest, nearest));
            }
            if (token.length == 0) {
                usedLiterals[token.literal] = true;
            } else {
                usedLiterals[lengthSymbol(token.length).symbol] = true;
                usedDistances[distanceSymbol(token.distance).symbol] = true;
            }
            size += std::max(token.length, 1U);
            tokens.push_back(token);
        }
        switch (random() % 5) {
        case 0: {
            const Bytes data(random() % 300, static_cast<std::uint8_t>(random()));
            maker.stored(data, last);
            output.insert(output.end(), data.begin(), data.end());
            break;
        }
        case 1:
            maker.fixed(tokens, last);
            output = expand(tokens, output);
            break;
        default:
            maker.dynamic(tokens, last, randomCode(random, usedLiterals), randomCode(random, usedDistances));
            output = expand(tokens, output);
            break;
        }
    }
    return maker;
}

TEST(Inflate, RandomBlocksInRandomCodesComeOutHoweverTheInputIsCutAndTheOutputTaken) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (int round = 0; round < 60; ++round) {
        Bytes output;
        DeflateMaker maker = randomStream(random, 1 + random() % 6, 1 + random() % 600, output);
        if (output.empty()) continue;
        const Bytes file = maker.trailer(plainAdler(output)).finish();
        ASSERT_EQ(inflated(file, output.size()), output) << round;
        // One byte per piece never leaves room for the fast way.
        ASSERT_EQ(inflated(file, output.size(), 1000, 1), output) << round;
        ASSERT_EQ(inflated(file, output.size(), 1 + random() % 5000, 1 + random() % 100), output) << round;
    }
}

TEST(Inflate, AnOutputLongerThanTheWindowComesOutWholeInSmallAndLargeParts) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    Bytes output;
    DeflateMaker maker = stream();
    std::vector<Token> tokens;
    for (int i = 0; i < 40000; ++i) tokens.push_back(literal(static_cast<std::uint8_t>(random())));
    std::size_t size = 40000;
    for (int i = 0; i < 8000; ++i) {
        tokens.push_back(match(3 + random() % 256, 1 + random() % 32768));
        size += tokens.back().length;
    }
    output = expand(tokens);
    const Bytes file = maker.fixed(tokens, true).trailer(plainAdler(output)).finish();
    ASSERT_GT(size, 400000U);
    for (const std::size_t takeSize : {1UL, 777UL, 32768UL, 150000UL, 400000UL})
        EXPECT_EQ(inflated(file, output.size(), takeSize), output) << takeSize;
}

TEST(Inflate, TheFixedTablesAreBuiltOnce) {
    EXPECT_EQ(&wm::png::fixed_literal_table(), &wm::png::fixed_literal_table());
    EXPECT_EQ(&wm::png::fixed_distance_table(), &wm::png::fixed_distance_table());
}

// ---- the size of the output ----

TEST(Inflate, AnOutputOfAnotherSizeFails) {
    const Bytes file = stream().fixed(literals("hello"), true).trailer(plainAdler(text("hello"))).finish();
    EXPECT_EQ(inflated(file, 5), text("hello"));
    EXPECT_EQ(inflated(file, 4), std::nullopt);
    EXPECT_EQ(inflated(file, 6), std::nullopt);
}

TEST(Inflate, EmptyBlocksBehindTheLastByteAreTaken) {
    auto maker = stream().fixed(literals("hello"), false).stored({}, false).fixed({}, true);
    EXPECT_TRUE(accepts(maker, text("hello")));
}

TEST(Inflate, AnOutputThatNeverEndsIsCutShort) {
    std::vector<Token> tokens = {literal('a')};
    for (int i = 0; i < 5000; ++i) tokens.push_back(match(258, 1));
    const Bytes output = expand(tokens);
    const Bytes file = stream().fixed(tokens, true).trailer(plainAdler(output)).finish();
    EXPECT_EQ(inflated(file, 100), std::nullopt);
    EXPECT_EQ(inflated(file, output.size() - 1), std::nullopt);
    EXPECT_EQ(inflated(file, output.size()), output);
}

TEST(Inflate, NoStreamGivesMoreThanItsSizeAllows) {
    // The densest stream there is: a length of 258 and a distance of 1, in one bit each.
    CodeLengths literalCode(286);
    literalCode['a'] = 2;
    literalCode[256] = 2;
    literalCode[285] = 1;
    std::vector<Token> tokens = {literal('a')};
    for (int i = 0; i < 20000; ++i) tokens.push_back(match(258, 1));
    const Bytes output = expand(tokens);
    const Bytes file =
        stream().dynamic(tokens, true, literalCode, CodeLengths(1, 1)).trailer(plainAdler(output)).finish();
    EXPECT_EQ(inflated(file, output.size()), output);
    EXPECT_GE(file.size(), wm::png::least_deflated_size(output.size()));
    EXPECT_LT(file.size(), wm::png::least_deflated_size(output.size()) * 102 / 100);
}

// ---- faults ----

TEST(Inflate, AWrongAdlerFails) {
    const Bytes hello = text("hello");
    for (unsigned bit = 0; bit < 32; ++bit) {
        auto maker = stream().stored(hello, true).trailer(plainAdler(hello) ^ 1U << bit);
        EXPECT_EQ(inflated(maker.finish(), 5), std::nullopt) << bit;
    }
}

TEST(Inflate, BytesBehindTheStreamAreIgnored) {
    Bytes file = stream().stored(text("hello"), true).trailer(plainAdler(text("hello"))).finish();
    file.push_back(99);
    EXPECT_EQ(inflated(file, 5), text("hello"));
}

TEST(Inflate, AStreamCutAnywhereFails) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    Bytes output;
    DeflateMaker maker = randomStream(random, 4, 60, output);
    const Bytes file = maker.trailer(plainAdler(output)).finish();
    for (std::size_t size = 0; size < file.size(); ++size) {
        const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
        ASSERT_EQ(inflated(cut, output.size()), std::nullopt) << size;
        ASSERT_EQ(inflated(cut, output.size(), 100, 1), std::nullopt) << size;
    }
}

TEST(Inflate, AnUnknownMethodOrWindowFails) {
    const auto loads = [](std::uint8_t method, std::uint8_t flags) {
        auto maker = DeflateMaker().streamHeader(method, flags).stored(text("hello"), true);
        return accepts(maker, text("hello"));
    };
    EXPECT_TRUE(loads(0x78, 0x01));
    EXPECT_TRUE(loads(0x78, 0x9C));
    EXPECT_TRUE(loads(0x08, 0x1D));  // a window of 256 bytes
    EXPECT_FALSE(loads(0x77, 0x09)); // a method that is not deflate
    EXPECT_FALSE(loads(0x88, 0x1C)); // a window beyond 32 KiB
    EXPECT_FALSE(loads(0x78, 0x02)); // not a multiple of 31
    EXPECT_FALSE(loads(0x78, 0x20)); // a preset dictionary
    EXPECT_FALSE(loads(0x78, 0xBB)); // likewise
}

TEST(Inflate, TheReservedBlockTypeFails) {
    auto maker = stream().blockHeader(true, 3);
    EXPECT_EQ(inflated(maker.trailer(1).finish(), 1), std::nullopt);
}

TEST(Inflate, AStoredLengthWithoutItsComplementFails) {
    auto maker = stream().blockHeader(true, 0).align().bits(1, 16).bits(0xFFFF, 16).bits('a', 8);
    EXPECT_EQ(inflated(maker.trailer(plainAdler(text("a"))).finish(), 1), std::nullopt);
}

/// Whether the first `size` bytes come out, whatever may follow them.
bool begins(const Bytes& file, std::size_t size) {
    const auto input = pieces(file, file.size());
    Inflater inflater(input, size, size);
    return inflater.take(size) != nullptr;
}

TEST(Inflate, ADistanceBeforeTheFirstByteFails) {
    for (const std::size_t padding : {0U, 60U})
        for (const std::uint32_t distance : {3U, 4U, 5U, 300U, 32768U}) {
            std::vector<Token> tokens = literals("abc");
            tokens.push_back(match(3, distance));
            tokens.resize(tokens.size() + padding, literal('.'));
            const Bytes file = stream().fixed(tokens, true).finish();
            EXPECT_EQ(begins(file, 6 + padding), distance == 3) << distance << ' ' << padding;
        }
}

TEST(Inflate, FixedSymbolsThatStandForNothingFail) {
    CodeLengths fixedCode(288, 8);
    std::fill(fixedCode.begin() + 144, fixedCode.begin() + 256, std::uint8_t{9});
    std::fill(fixedCode.begin() + 256, fixedCode.begin() + 280, std::uint8_t{7});
    for (const std::uint32_t symbol : {286U, 287U})
        for (const unsigned padding : {0U, 60U}) {
            auto maker = stream().blockHeader(true, 1).code(fixedCode, 'a').code(fixedCode, symbol);
            for (unsigned i = 0; i < padding; ++i) maker.code(fixedCode, 'a');
            EXPECT_EQ(inflated(maker.finish(), 4 + padding), std::nullopt) << symbol;
        }
    for (const std::uint32_t symbol : {30U, 31U})
        for (const unsigned padding : {0U, 60U}) {
            auto maker = stream().blockHeader(true, 1).code(fixedCode, 'a').code(fixedCode, 257);
            maker.code(CodeLengths(32, 5), symbol);
            for (unsigned i = 0; i < padding; ++i) maker.code(fixedCode, 'a');
            EXPECT_EQ(inflated(maker.finish(), 4 + padding), std::nullopt) << symbol;
        }
}

/// Whether the tables of a dynamic block are taken. The block holds one literal, and much behind it.
bool acceptsCodes(const CodeLengths& literalCode, const CodeLengths& distanceCode) {
    auto maker = stream().dynamic(literals("a"), false, literalCode, distanceCode).stored({}, true);
    return accepts(maker, text("a"));
}

CodeLengths smallCode() {
    CodeLengths code(257);
    code['a'] = 1;
    code[256] = 1;
    return code;
}

TEST(Inflate, ACodeWithoutAnEndOfBlockFails) {
    CodeLengths code(257);
    code['a'] = 1;
    code['b'] = 1;
    auto without = stream().blockHeader(true, 2).dynamicTables(code, {0}).code(code, 'a');
    EXPECT_FALSE(begins(without.finish(), 1));
    code['b'] = 0;
    code[256] = 1;
    auto with = stream().blockHeader(true, 2).dynamicTables(code, {0}).code(code, 'a');
    EXPECT_TRUE(begins(with.finish(), 1));
}

TEST(Inflate, AnOversubscribedCodeFails) {
    CodeLengths code = smallCode();
    EXPECT_TRUE(acceptsCodes(code, {0}));
    code['b'] = 1;
    EXPECT_FALSE(acceptsCodes(code, {0}));
    EXPECT_FALSE(acceptsCodes(smallCode(), {1, 1, 1}));
}

TEST(Inflate, AnIncompleteCodeFailsUnlessItIsASingleBit) {
    CodeLengths code = smallCode();
    code[256] = 2;
    EXPECT_FALSE(acceptsCodes(code, {0}));
    EXPECT_TRUE(acceptsCodes(smallCode(), {1}));
    EXPECT_TRUE(acceptsCodes(smallCode(), {0, 1}));
    EXPECT_TRUE(acceptsCodes(smallCode(), {0, 0}));
    EXPECT_FALSE(acceptsCodes(smallCode(), {2}));
    EXPECT_FALSE(acceptsCodes(smallCode(), {2, 2, 2}));
    EXPECT_TRUE(acceptsCodes(smallCode(), {2, 2, 2, 2}));
}

TEST(Inflate, ALiteralCodeOfOneSymbolCanOnlyEndTheBlock) {
    CodeLengths code(257);
    code[256] = 1;
    auto maker = stream().dynamic({}, false, code, {0}).stored(text("a"), true);
    EXPECT_TRUE(accepts(maker, text("a")));
    auto other = stream().blockHeader(true, 2).dynamicTables(code, {0}).bits(1, 1).bits(0, 16);
    EXPECT_EQ(inflated(other.finish(), 1), std::nullopt);
}

TEST(Inflate, UsingAMissingDistanceCodeFails) {
    CodeLengths code(258);
    code['a'] = 2;
    code[256] = 2;
    code[257] = 1;
    for (const std::uint8_t distanceLength : {std::uint8_t{0}, std::uint8_t{1}})
        for (const unsigned padding : {0U, 200U}) {
            auto maker = stream().blockHeader(true, 2).dynamicTables(code, {distanceLength}).code(code, 'a');
            maker.code(code, 257).bits(1, 1); // the half that a single code leaves unused
            for (unsigned i = 0; i < padding; ++i) maker.bits(1, 1);
            EXPECT_EQ(inflated(maker.finish(), 4 + padding), std::nullopt);
        }
}

TEST(Inflate, TooManyCodesFail) {
    // 287 or 288 literals, or 31 or 32 distances, can be announced but are too many.
    for (const std::uint32_t literalCount : {287U, 288U}) {
        CodeLengths code(literalCount);
        code['a'] = code[256] = 1;
        EXPECT_FALSE(acceptsCodes(code, {0}));
    }
    CodeLengths most(286);
    most['a'] = most[256] = 1;
    EXPECT_TRUE(acceptsCodes(most, CodeLengths(30)));
    for (const std::size_t distanceCount : {31UL, 32UL})
        EXPECT_FALSE(acceptsCodes(smallCode(), CodeLengths(distanceCount)));
}

TEST(InflateTables, TheCodeForCodeLengthsMustBeComplete) {
    const auto builds = [](std::uint8_t zero, std::uint8_t one, std::uint8_t sixteen) {
        std::array<std::uint8_t, wm::png::lengthCodeSymbols> lengths{};
        lengths[0] = zero;
        lengths[1] = one;
        lengths[16] = sixteen;
        wm::png::LengthCodeTable table;
        return wm::png::build_length_code_table(table, lengths);
    };
    EXPECT_TRUE(builds(1, 1, 0));
    EXPECT_TRUE(builds(1, 2, 2));
    EXPECT_FALSE(builds(0, 0, 0)); // none at all
    EXPECT_FALSE(builds(1, 0, 0)); // half of it unused
    EXPECT_FALSE(builds(1, 2, 0)); // a quarter unused
    EXPECT_FALSE(builds(1, 1, 1)); // one too many
}

/// Code lengths for code lengths: 0, 1, repeat the last, many zeros, in two bits each.
CodeLengths codeForLengths() {
    CodeLengths code(19);
    code[0] = code[1] = code[16] = code[18] = 2;
    return code;
}

/// A dynamic block's beginning, with 257 literals and one distance, up to the first of their code lengths.
DeflateMaker beforeCodeLengths() {
    constexpr std::uint8_t order[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
    DeflateMaker maker = stream().blockHeader(true, 2).bits(0, 5).bits(0, 5).bits(15, 4);
    const CodeLengths code = codeForLengths();
    for (const std::uint8_t symbol : order) maker.bits(code[symbol], 3);
    return maker;
}

/// `count` zeros, 11 to 138 of them.
void addZeros(DeflateMaker& maker, std::uint32_t count) { maker.code(codeForLengths(), 18).bits(count - 11, 7); }

/// The code lengths from the letter a on, where it and the end of the block have one bit each; then the letter.
DeflateMaker& addLetter(DeflateMaker& maker) {
    maker.code(codeForLengths(), 1);
    addZeros(maker, 138);
    addZeros(maker, 20);
    return maker.code(codeForLengths(), 1);
}

TEST(Inflate, ARepetitionOfCodeLengthsMustNotRunBeyondTheLast) {
    auto right = beforeCodeLengths();
    addZeros(right, 'a');
    addLetter(right).code(codeForLengths(), 0);
    EXPECT_TRUE(accepts(right.bits(0, 1).bits(1, 1), text("a")));

    auto wrong = beforeCodeLengths();
    addZeros(wrong, 'a');
    addZeros(addLetter(wrong), 11);
    EXPECT_FALSE(accepts(wrong.bits(0, 1).bits(1, 1), text("a")));
}

TEST(Inflate, ARepetitionOfThePreviousCodeLengthNeedsOne) {
    auto right = beforeCodeLengths().code(codeForLengths(), 0).code(codeForLengths(), 16).bits(0, 2);
    addZeros(right, 'a' - 4);
    addLetter(right).code(codeForLengths(), 0);
    EXPECT_TRUE(accepts(right.bits(0, 1).bits(1, 1), text("a")));

    auto wrong = beforeCodeLengths().code(codeForLengths(), 16).bits(0, 2);
    addZeros(wrong, 'a' - 3);
    addLetter(wrong).code(codeForLengths(), 0);
    EXPECT_FALSE(accepts(wrong.bits(0, 1).bits(1, 1), text("a")));
}

TEST(Inflate, AFailureIsForGood) {
    const Bytes file = stream().blockHeader(true, 3).finish();
    const auto input = pieces(file, file.size());
    Inflater inflater(input, 10, 10);
    EXPECT_EQ(inflater.take(1), nullptr);
    EXPECT_EQ(inflater.take(1), nullptr);
    EXPECT_FALSE(inflater.finish());
}

TEST(Inflate, FinishingBeforeAllIsTakenFails) {
    const Bytes file = stream().stored(text("hello"), true).trailer(plainAdler(text("hello"))).finish();
    const auto input = pieces(file, file.size());
    Inflater inflater(input, 5, 5);
    EXPECT_NE(inflater.take(3), nullptr);
    EXPECT_FALSE(inflater.finish());
}

TEST(Inflate, AnyBytesGiveAnOutputOrAFailure) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (int round = 0; round < 300; ++round) {
        Bytes output;
        DeflateMaker maker = randomStream(random, 3, 100, output);
        Bytes file = maker.trailer(plainAdler(output)).finish();
        for (unsigned damage = 1 + random() % 3; damage > 0; --damage)
            file[random() % file.size()] = static_cast<std::uint8_t>(random());
        const auto whole = inflated(file, output.size());
        ASSERT_EQ(inflated(file, output.size(), 500, 1), whole) << round;
    }
}

} // namespace
