// Scans over sixteen bytes at once, by the compiler's vectors, which are the processor's own where it has any. A test
// gives 255 in each byte that passes and 0 in the others; two words of eight such bytes tell by their lowest bit set
// which byte is the first.

#include "pattern/byte_scan.h"

#include <array>
#include <bit>

namespace pattern {

namespace {

constexpr std::size_t blockSize = 16;

using Block = std::uint8_t __attribute__((vector_size(blockSize)));

static_assert(std::endian::native == std::endian::little, "the first byte of a word is looked for in its lowest bits");

Block load(const Byte* bytes) {
    Block block;
    std::memcpy(&block, bytes, blockSize);
    return block;
}

Block filled(Byte byte) { return Block{} + byte; }

/// The index of the first byte of `test` that isn't 0, or blockSize.
std::size_t firstSet(const Block& test) {
    std::uint64_t words[2];
    std::memcpy(words, &test, blockSize);
    if (words[0] != 0) return static_cast<std::size_t>(std::countr_zero(words[0])) / 8;
    if (words[1] != 0) return 8 + static_cast<std::size_t>(std::countr_zero(words[1])) / 8;
    return blockSize;
}

/// Scans for the first byte that is in the ranges, or that isn't, with a number of ranges known to the compiler.
template <std::size_t count>
std::size_t scanRanges(const ByteTable& table, bool wanted, const Byte* text, std::size_t from, std::size_t limit) {
    Block lows[count];
    Block sizes[count];
    for (std::size_t i = 0; i < count; ++i) {
        lows[i] = filled(table.ranges[i].low);
        sizes[i] = filled(static_cast<Byte>(table.ranges[i].high - table.ranges[i].low));
    }
    const Block flip = filled(wanted ? 0 : 0xFF);
    std::size_t at = from;
    for (; limit - at >= blockSize; at += blockSize) {
        const Block block = load(text + at);
        Block test{};
        for (std::size_t i = 0; i < count; ++i) test |= reinterpret_cast<Block>(block - lows[i] <= sizes[i]);
        const std::size_t found = firstSet(test ^ flip);
        if (found < blockSize) return at + found;
    }
    return at;
}

/// The place in [from, limit) of the first byte that is in the ranges of `table`, or isn't, as `wanted` says. May stop
/// before that, less than a block away from `limit`.
std::size_t scanBlocks(const ByteTable& table, bool wanted, const Byte* text, std::size_t from, std::size_t limit) {
    switch (table.rangeCount) {
    case 1: return scanRanges<1>(table, wanted, text, from, limit);
    case 2: return scanRanges<2>(table, wanted, text, from, limit);
    case 3: return scanRanges<3>(table, wanted, text, from, limit);
    case 4: return scanRanges<4>(table, wanted, text, from, limit);
    default: return from;
    }
}

std::size_t scan(const ByteTable& table, bool wanted, const Byte* text, std::size_t from, std::size_t limit) {
    std::size_t at = scanBlocks(table, wanted != table.rangesAreOthers, text, from, limit);
    while (at < limit && table.has[text[at]] != wanted) ++at;
    return at;
}

} // namespace

std::size_t farFirstOf(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit) {
    return scan(table, true, text, from, limit);
}

std::size_t farEndOfRun(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit) {
    return scan(table, false, text, from, limit);
}

namespace {

bool isAt(const PairedLiteral& literal, const Byte* text, std::size_t place) {
    return text[place] == static_cast<Byte>(literal.bytes.front()) &&
           std::memcmp(text + place, literal.bytes.data(), literal.bytes.size()) == 0;
}

/// The first place of a block where the pair was found, as the two words of `test` say, and the whole literal is; or
/// blockSize.
std::size_t firstWhole(const PairedLiteral& literal, const Byte* block, std::array<std::uint64_t, 2> test) {
    for (std::size_t half = 0; half < test.size(); ++half)
        while (test[half] != 0) {
            const std::size_t shift = static_cast<std::size_t>(std::countr_zero(test[half]));
            const std::size_t place = 8 * half + shift / 8;
            if (isAt(literal, block, place)) return place;
            test[half] &= ~(std::uint64_t{0xFF} << shift);
        }
    return blockSize;
}

} // namespace

std::size_t firstOf(const PairedLiteral& literal, const Byte* text, std::size_t from, std::size_t limit) {
    const Block first = filled(static_cast<Byte>(literal.bytes[literal.first]));
    const Block second = filled(static_cast<Byte>(literal.bytes[literal.second]));
    const Byte* const firsts = text + literal.first;
    const Byte* const seconds = text + literal.second;
    std::size_t at = from;
    for (; at < limit && limit - at >= blockSize; at += blockSize) {
        const auto test = (load(firsts + at) == first) & (load(seconds + at) == second);
        std::array<std::uint64_t, 2> words;
        std::memcpy(words.data(), &test, blockSize);
        if ((words[0] | words[1]) == 0) continue;
        const std::size_t found = firstWhole(literal, text + at, words);
        if (found < blockSize) return at + found;
    }
    for (; at < limit; ++at)
        if (isAt(literal, text, at)) return at;
    return limit;
}

} // namespace pattern
