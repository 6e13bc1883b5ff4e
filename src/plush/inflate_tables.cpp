// Filling the lookup tables of prefix codes.
//
// Deflate gives only the length of each code; the codes follow, counted upwards by length and then by symbol. The
// stream holds a code's first bit lowest, so a table index is the code reversed and whatever comes after it above. A
// code of n bits thus belongs at every index whose low n bits are its own. Instead of storing each code many times,
// the table begins with only as many entries as the shortest codes need, and each time the length grows by one, the
// part that is filled is copied behind itself: most entries are written by block copies.

#include "plush/inflate_tables.h"

#include <algorithm>

namespace wm::png {

namespace {

constexpr unsigned valueShift = 16;
constexpr unsigned codeLengthShift = 8;

constexpr TableEntry noCode = entryIsSpecial | 1U; // takes a bit, so that nobody waits for more

/// How a length or a distance is coded: the least value of its symbol and the number of extra bits to add.
struct ExtraRange {
    std::uint16_t least;
    std::uint8_t extraBits;
};

constexpr std::size_t firstLengthSymbol = endOfBlockSymbol + 1;

constexpr std::array<ExtraRange, 29> lengthRanges = {
    {{3, 0},  {4, 0},  {5, 0},  {6, 0},   {7, 0},   {8, 0},   {9, 0},   {10, 0},  {11, 1}, {13, 1},
     {15, 1}, {17, 1}, {19, 2}, {23, 2},  {27, 2},  {31, 2},  {35, 3},  {43, 3},  {51, 3}, {59, 3},
     {67, 4}, {83, 4}, {99, 4}, {115, 4}, {131, 5}, {163, 5}, {195, 5}, {227, 5}, {258, 0}}};

constexpr std::array<ExtraRange, 30> distanceRanges = {
    {{1, 0},     {2, 0},     {3, 0},     {4, 0},      {5, 1},      {7, 1},     {9, 2},     {13, 2},
     {17, 3},    {25, 3},    {33, 4},    {49, 4},     {65, 5},     {97, 5},    {129, 6},   {193, 6},
     {257, 7},   {385, 7},   {513, 8},   {769, 8},    {1025, 9},   {1537, 9},  {2049, 10}, {3073, 10},
     {4097, 11}, {6145, 11}, {8193, 12}, {12289, 12}, {16385, 13}, {24577, 13}}};

constexpr TableEntry rangeEntry(ExtraRange range) {
    return TableEntry{range.least} << valueShift | TableEntry{range.extraBits};
}

/// What each symbol stands for, as table entries that still lack the length of the code.
constexpr std::array<TableEntry, literalSymbols> literalMeanings = [] {
    std::array<TableEntry, literalSymbols> meanings{};
    meanings.fill(entryIsSpecial);
    for (std::size_t byte = 0; byte < 256; ++byte)
        meanings[byte] = entryIsLiteral | static_cast<TableEntry>(byte) << valueShift;
    meanings[endOfBlockSymbol] = entryIsSpecial | entryIsEnd;
    for (std::size_t i = 0; i < lengthRanges.size(); ++i) meanings[firstLengthSymbol + i] = rangeEntry(lengthRanges[i]);
    return meanings;
}();

constexpr std::array<TableEntry, distanceSymbols> distanceMeanings = [] {
    std::array<TableEntry, distanceSymbols> meanings{};
    meanings.fill(entryIsSpecial);
    for (std::size_t i = 0; i < distanceRanges.size(); ++i) meanings[i] = rangeEntry(distanceRanges[i]);
    return meanings;
}();

constexpr std::array<TableEntry, lengthCodeSymbols> lengthCodeMeanings = [] {
    std::array<TableEntry, lengthCodeSymbols> meanings{};
    for (std::size_t i = 0; i < meanings.size(); ++i) meanings[i] = static_cast<TableEntry>(i) << valueShift;
    return meanings;
}();

/// A meaning with its code's length filled in: `bits` of it are still to be taken when the entry is reached.
constexpr TableEntry withCode(TableEntry meaning, unsigned bits) { return meaning + (bits << codeLengthShift) + bits; }

/// The code after `code` among those of `length` bits, both with their bits reversed.
constexpr std::uint32_t nextReversed(std::uint32_t code, unsigned length) {
    std::uint32_t bit = 1U << (length - 1);
    while ((code & bit) != 0) bit >>= 1; // carries run from the highest bit downwards
    return bit == 0 ? 0 : (code & (bit - 1)) | bit;
}

/// How many codes there are of each length, and the symbols in the order of their codes.
struct SortedCode {
    std::array<unsigned, maxCodeLength + 1> counts{};
    std::array<std::uint16_t, literalSymbols> symbols{};
    unsigned longest = 0;
    int unused = 1; // patterns of `maxCodeLength` bits that begin with no code; below 0 if codes share patterns
};

SortedCode sortCode(std::span<const std::uint8_t> lengths) {
    SortedCode code;
    for (const std::uint8_t length : lengths) ++code.counts[length];
    std::array<unsigned, maxCodeLength + 2> starts{};
    for (unsigned length = 1; length <= maxCodeLength; ++length)
        starts[length + 1] = starts[length] + code.counts[length];
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
        if (lengths[symbol] != 0) code.symbols[starts[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);

    for (unsigned length = 1; length <= maxCodeLength; ++length) {
        code.unused = code.unused * 2 - static_cast<int>(code.counts[length]);
        if (code.counts[length] != 0) code.longest = length;
    }
    return code;
}

/// The width of the second table that begins with the next code of `length` bits: wide enough for all codes that
/// share their first `width` bits with it.
unsigned secondTableWidth(const std::array<unsigned, maxCodeLength + 1>& left, unsigned length, unsigned width) {
    unsigned second = length - width;
    unsigned filled = left[length];
    while (filled < 1U << second && width + second < maxCodeLength) {
        ++second;
        filled = filled * 2 + left[width + second];
    }
    return second;
}

/// Fills `table`, whose first part has `width` bits, for a sorted code without unused patterns.
bool fillTable(std::span<TableEntry> table, unsigned width, const SortedCode& code, const TableEntry* meanings) {
    auto left = code.counts;
    const std::uint16_t* symbol = code.symbols.data();
    std::uint32_t reversed = 0;

    table[0] = noCode;
    std::size_t filled = 1; // entries, a power of two: all that codes up to this length tell apart
    for (unsigned length = 1; length <= width; ++length) {
        std::copy_n(table.begin(), filled, table.begin() + static_cast<std::ptrdiff_t>(filled));
        filled *= 2;
        for (; left[length] > 0; --left[length]) {
            table[reversed] = withCode(meanings[*symbol++], length);
            reversed = nextReversed(reversed, length);
        }
    }

    const std::uint32_t mask = static_cast<std::uint32_t>(filled) - 1;
    std::uint32_t prefix = mask + 1; // of the second table being filled; at first none
    std::size_t begin = filled;      // of the second table
    std::size_t end = filled;
    for (unsigned length = width + 1; length <= code.longest; ++length)
        for (; left[length] > 0; --left[length]) {
            if ((reversed & mask) != prefix) {
                prefix = reversed & mask;
                begin = end;
                const unsigned second = secondTableWidth(left, length, width);
                end = begin + (std::size_t{1} << second);
                if (end > table.size()) return false;
                table[prefix] = entryIsSpecial | entryIsLink | static_cast<TableEntry>(begin) << valueShift |
                                second << codeLengthShift | width;
            }
            const TableEntry entry = withCode(meanings[*symbol++], length - width);
            for (std::size_t at = begin + (reversed >> width); at < end; at += std::size_t{1} << (length - width))
                table[at] = entry;
            reversed = nextReversed(reversed, length);
        }
    return true;
}

/// Whether an incomplete code is one that the format allows: none at all, or a single symbol of one bit.
bool isSparseCode(const SortedCode& code) { return code.longest == 0 || (code.longest == 1 && code.counts[1] == 1); }

bool buildTable(std::span<TableEntry> table, unsigned width, std::span<const std::uint8_t> lengths,
                const TableEntry* meanings) {
    const SortedCode code = sortCode(lengths);
    if (code.unused == 0) return fillTable(table, width, code, meanings);
    if (!isSparseCode(code)) return false;
    const std::size_t size = std::size_t{1} << width;
    const TableEntry only = code.longest == 0 ? noCode : withCode(meanings[code.symbols[0]], 1);
    for (std::size_t at = 0; at < size; ++at) table[at] = at % 2 == 0 ? only : noCode;
    return true;
}

} // namespace

bool build_literal_table(LiteralTable& table, std::span<const std::uint8_t> lengths) {
    return buildTable(table, literalTableWidth, lengths, literalMeanings.data());
}

bool build_distance_table(DistanceTable& table, std::span<const std::uint8_t> lengths) {
    return buildTable(table, distanceTableWidth, lengths, distanceMeanings.data());
}

bool build_length_code_table(LengthCodeTable& table, std::span<const std::uint8_t> lengths) {
    const SortedCode code = sortCode(lengths);
    return code.unused == 0 && fillTable(table, lengthCodeWidth, code, lengthCodeMeanings.data());
}

const LiteralTable& fixed_literal_table() {
    static const LiteralTable table = [] {
        std::array<std::uint8_t, literalSymbols> lengths{};
        std::fill(lengths.begin(), lengths.begin() + 144, std::uint8_t{8});
        std::fill(lengths.begin() + 144, lengths.begin() + 256, std::uint8_t{9});
        std::fill(lengths.begin() + 256, lengths.begin() + 280, std::uint8_t{7});
        std::fill(lengths.begin() + 280, lengths.end(), std::uint8_t{8});
        LiteralTable built{};
        build_literal_table(built, lengths);
        return built;
    }();
    return table;
}

const DistanceTable& fixed_distance_table() {
    static const DistanceTable table = [] {
        std::array<std::uint8_t, distanceSymbols> lengths{};
        lengths.fill(5);
        DistanceTable built{};
        build_distance_table(built, lengths);
        return built;
    }();
    return table;
}

} // namespace wm::png
