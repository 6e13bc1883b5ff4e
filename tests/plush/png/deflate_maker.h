#pragma once

// A plain writer of deflate streams for tests: no search, no compression. The test says which symbols and which codes
// a block has, and gets exactly that, also where the format forbids it.

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace png_test {

using Bytes = std::vector<std::uint8_t>;

/// A source of random numbers of 32 bits.
using Random = std::independent_bits_engine<std::mt19937, 32, std::uint32_t>;

/// A literal, or a match of `length` bytes from `distance` bytes back.
struct Token {
    std::uint32_t length = 0; // 0: a literal
    std::uint32_t distance = 0;
    std::uint8_t literal = 0;
};

inline Token literal(std::uint8_t byte) { return {0, 0, byte}; }
inline Token match(std::uint32_t length, std::uint32_t distance) { return {length, distance, 0}; }

/// What the tokens stand for, behind `before`.
Bytes expand(const std::vector<Token>& tokens, Bytes before = {});

/// The Adler-32 of `data`, straight from its definition.
std::uint32_t plainAdler(const Bytes& data);

/// The symbol of a match's length or distance, and what its extra bits say.
struct ExtraSymbol {
    std::uint32_t symbol;
    std::uint32_t extraBits;
    std::uint32_t extra;
};
ExtraSymbol lengthSymbol(std::uint32_t length);
ExtraSymbol distanceSymbol(std::uint32_t distance);

/// Code lengths, one per symbol, 0 for none.
using CodeLengths = std::vector<std::uint8_t>;

/// A complete code for some symbols, of random lengths up to `longest` bits.
/// @param used  which symbols get a code; at least two, and at most 2 to the power of `longest`
CodeLengths randomCode(Random& random, const std::vector<bool>& used, unsigned longest = 15);

/// Writes a zlib stream block by block.
class DeflateMaker {
public:
    DeflateMaker() = default;

    DeflateMaker& bits(std::uint32_t value, unsigned count);
    DeflateMaker& align();

    DeflateMaker& streamHeader(std::uint8_t method = 0x78, std::uint8_t flags = 0x01);
    DeflateMaker& blockHeader(bool last, std::uint32_t type) { return bits(last, 1).bits(type, 2); }
    DeflateMaker& stored(const Bytes& data, bool last);
    DeflateMaker& fixed(const std::vector<Token>& tokens, bool last);
    DeflateMaker& dynamic(const std::vector<Token>& tokens, bool last, const CodeLengths& literals,
                          const CodeLengths& distances);
    DeflateMaker& trailer(std::uint32_t adler);

    /// The tables in front of a dynamic block, each length written out.
    DeflateMaker& dynamicTables(const CodeLengths& literals, const CodeLengths& distances);
    /// Symbols in given codes, with the end of the block behind them.
    DeflateMaker& symbols(const std::vector<Token>& tokens, const CodeLengths& literals, const CodeLengths& distances);
    /// The code of one symbol.
    DeflateMaker& code(const CodeLengths& lengths, std::uint32_t symbol);

    Bytes finish() { return align().bytes_; }

private:
    Bytes bytes_;
    unsigned used_ = 8; // bits of the last byte
};

/// A whole zlib stream of stored blocks of at most `blockSize` bytes.
Bytes storedStream(const Bytes& data, std::size_t blockSize = 65535);

} // namespace png_test
