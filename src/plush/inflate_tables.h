#pragma once

// The lookup tables that turn the prefix codes of a deflate stream into what they stand for.
//
// A table is indexed with the next bits of the stream, as many as its width says, and gives at one stroke everything
// that the decoder wants to know: how many bits to take, whether this is a literal, which literal, or from which
// length or distance to count and how many extra bits to add. Codes longer than the width lead to a second table,
// stored behind the first, that is indexed with the bits that follow. The widths are a trade: a wider first table
// finds more codes at once, but takes longer to fill for each block and pushes other things out of the cache.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace wm::png {

/// What a table gives for the next bits. From the lowest bit:
///   bits 0 to 7    bits to take from the stream: the code and its extra bits
///   bits 8 to 11   bits of the code alone, so where the extra bits begin; in a link, the width of the second table
///   bit 13 to 15   flags for all that is neither literal nor plain length nor plain distance
///   bits 16 to 30  the literal, the least length, the least distance, or where the second table begins
///   bit 31         set for a literal
using TableEntry = std::uint32_t;

constexpr TableEntry entryIsLiteral = 1U << 31;
constexpr TableEntry entryIsSpecial = 1U << 15; // one of the three below, told apart by the other two flags
constexpr TableEntry entryIsLink = 1U << 14;    // a longer code: the answer is in the second table
constexpr TableEntry entryIsEnd = 1U << 13;     // the end of the block; neither flag: no code begins with these bits

constexpr unsigned maxCodeLength = 15;        // bits
constexpr unsigned literalTableWidth = 11;    // bits
constexpr unsigned distanceTableWidth = 8;    // bits
constexpr std::size_t literalSymbols = 288;   // two of which stand for nothing
constexpr std::size_t distanceSymbols = 32;   // likewise
constexpr std::size_t endOfBlockSymbol = 256; // among the literals

// The most entries, second tables included, that codes over so many symbols can need at these widths.
constexpr std::size_t literalTableSize = 2342;
constexpr std::size_t distanceTableSize = 402;

using LiteralTable = std::array<TableEntry, literalTableSize>;
using DistanceTable = std::array<TableEntry, distanceTableSize>;

/// Fills the table of a code for literals and lengths from the length of each symbol's code, 0 for an unused symbol.
/// False if the lengths make no prefix code, or leave bit patterns unused; a code of one symbol may leave half.
bool build_literal_table(LiteralTable& table, std::span<const std::uint8_t> lengths);

/// The same for distances. A block of literals alone may have no distance code at all.
bool build_distance_table(DistanceTable& table, std::span<const std::uint8_t> lengths);

// The code that, in front of a dynamic block, tells the code lengths of the two codes above.
constexpr unsigned lengthCodeWidth = 7; // bits; no code is longer, so there are no second tables
constexpr std::size_t lengthCodeSymbols = 19;
using LengthCodeTable = std::array<TableEntry, 1U << lengthCodeWidth>;

/// Fills the table of the code for code lengths, whose entries hold the symbol in bits 16 to 30. Only a complete code
/// will do.
bool build_length_code_table(LengthCodeTable& table, std::span<const std::uint8_t> lengths);

/// The tables of the code that blocks without a code of their own use; built at the first call.
const LiteralTable& fixed_literal_table();
const DistanceTable& fixed_distance_table();

} // namespace wm::png
