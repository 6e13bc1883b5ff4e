#pragma once

// The decompressor: a zlib stream in pieces comes in, stretches of bytes go out.
//
// A picture file scatters its compressed data over many chunks, and a picture's rows are wanted one at a time. So the
// input is a list of borrowed pieces that are read as if they stood one behind another, and the output is a window: the
// last 32 KiB, which the stream may refer back to, and behind them what has not been taken yet. Nobody ever holds the
// whole decompressed picture, and a row is still in the cache when it is taken.
//
// The size of the whole output is known beforehand. A stream that gives one byte more or less is faulty, so whatever
// the input claims, no memory beyond the window is ever used.

#include "plush/inflate_tables.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace wm::png {

/// The parts of a stream, in order.
using Pieces = std::span<const std::span<const std::uint8_t>>;

/// The least number of input bytes from which a deflate stream can make `outputSize` bytes: a match gives 258 bytes and
/// costs two bits at least. A shorter input cannot hold the output, whatever is in it.
constexpr std::uint64_t least_deflated_size(std::uint64_t outputSize) {
    constexpr std::uint64_t mostPerByte = 258 * 8 / 2;
    return outputSize / mostPerByte;
}

/// Inflates one zlib stream of known output size. After a failure every further call fails too.
class Inflater {
public:
    /// @param pieces        the stream; borrowed, with what they refer to, as long as this lives
    /// @param expectedSize  bytes that the whole stream must give
    /// @param longestTake   the most bytes that will be asked for at once
    Inflater(Pieces pieces, std::uint64_t expectedSize, std::size_t longestTake);

    /// The memory, in bytes, that an inflater of these sizes takes.
    static std::size_t memory_needed(std::uint64_t expectedSize, std::size_t longestTake);

    /// The next `size` bytes of the output, at most `longestTake`; valid until the next call and followed by
    /// `readableSlack` bytes that may be read but mean nothing. Null if the stream is faulty or has fewer left.
    const std::uint8_t* take(std::size_t size);

    /// Whether all output was taken, the stream ends here, and its checksum is right. Bytes behind the stream are
    /// ignored.
    bool finish();

    static constexpr std::size_t readableSlack = 16;

private:
    enum class State { streamHeader, blockHeader, stored, coded, trailer, ended, failed };

    /// What a code in the stream stands for.
    struct Symbol {
        TableEntry entry;    // of the table, links followed
        std::uint32_t value; // the literal, length or distance, extra bits added
    };

    void makeRoom();
    void fill(std::size_t target);
    void readStreamHeader();
    void readBlockHeader();
    void readStoredHeader();
    void readDynamicTables();
    void copyStored(std::size_t target);
    void decodeSymbols(std::size_t target);
    void decodeFast(std::size_t target);
    void decodeOne();
    void endBlock();
    void readTrailer();

    bool readByte();
    void drop(unsigned count);
    std::uint32_t takeBits(unsigned count);
    Symbol takeSymbol(const TableEntry* table, unsigned width);
    void fail() { state_ = State::failed; }

    Pieces pieces_;                       // those not begun
    const std::uint8_t* in_ = nullptr;    // next byte of the piece at hand
    const std::uint8_t* inEnd_ = nullptr; // behind its last
    std::uint64_t bits_ = 0;              // read but not used; bit 0 comes next
    unsigned bitCount_ = 0;               // how many of them there are; those above are 0

    State state_ = State::streamHeader;
    bool lastBlock_ = false;
    std::size_t storedLeft_ = 0;            // bytes of a stored block
    const TableEntry* literals_ = nullptr;  // of the block at hand
    const TableEntry* distances_ = nullptr; // likewise

    std::uint64_t expectedLeft_;             // bytes that the stream has still to give
    std::size_t capacity_;                   // bytes of the window; a match may run beyond it, into its margin
    std::unique_ptr<std::uint8_t[]> window_; // from the oldest byte that is kept
    std::size_t taken_ = 0;                  // index of the first byte not taken
    std::size_t written_ = 0;                // index behind the last byte
    std::uint32_t adler_;                    // of all bytes written

    LiteralTable ownLiterals_;
    DistanceTable ownDistances_;
};

} // namespace wm::png
