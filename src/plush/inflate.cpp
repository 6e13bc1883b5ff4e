// Decompression of zlib streams.
//
// Two decoders stand side by side. `decodeOne` is the definition: it takes bits as they come, over the borders of
// pieces and up to the very end of the input. `decodeFast` does the same while sixteen bytes of the piece at hand are
// left: then nobody has to ask for each bit whether it is there, the buffer of bits is filled by unaligned loads, and
// copies may write more than they should, since what comes next overwrites it. All but the last symbols of a piece take
// this way.
//
// The window has a margin behind its end that holds the longest match and all overshoot, so both decoders look at the
// end of the output only between symbols.

#include "plush/inflate.h"

#include "plush/png_checksums.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace wm::png {

namespace {

constexpr std::size_t historySize = 32768;  // bytes back that a match can reach
constexpr std::size_t longestMatch = 258;   // bytes
constexpr std::size_t freshSize = 131072;   // bytes inflated between two moves of the history
constexpr std::size_t literalsPerRound = 4; // of the fast decoder, in front of a match
constexpr std::size_t copyOvershoot = 16;   // bytes written behind the end of a match
constexpr std::size_t windowMargin = longestMatch + literalsPerRound + copyOvershoot + Inflater::readableSlack;

enum BlockType : std::uint32_t { storedBlock = 0, fixedBlock = 1, dynamicBlock = 2 };

// The code for code lengths: 0 to 15 are lengths, these repeat.
enum LengthSymbol : std::uint32_t { repeatPrevious = 16, repeatZeroShort = 17, repeatZeroLong = 18 };

constexpr std::array<std::uint8_t, lengthCodeSymbols> lengthCodeOrder = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                                         11, 4,  12, 3, 13, 2, 14, 1, 15};

constexpr std::size_t mostLiteralCodes = 286;
constexpr std::size_t mostDistanceCodes = 30;

constexpr std::uint64_t lowBits(unsigned count) { return (std::uint64_t{1} << count) - 1; }

constexpr unsigned bitsToTake(TableEntry entry) { return entry & 0xFFU; }
constexpr unsigned codeLength(TableEntry entry) { return entry >> 8 & 0xFU; }
constexpr std::uint32_t value(TableEntry entry) { return entry >> 16 & 0x7FFFU; }

/// The value of an entry plus its extra bits, from the bits that begin with the entry's code.
inline std::uint32_t valueWithExtra(TableEntry entry, std::uint64_t bits) {
    return value(entry) + static_cast<std::uint32_t>((bits & lowBits(bitsToTake(entry))) >> codeLength(entry));
}

inline std::uint64_t load64le(const std::uint8_t* from) {
    std::uint64_t value = 0;
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(&value, from, sizeof value);
    } else {
        for (unsigned i = 0; i < 8; ++i) value |= std::uint64_t{from[i]} << (8 * i);
    }
    return value;
}

inline void store64le(std::uint8_t* to, std::uint64_t value) {
    if constexpr (std::endian::native == std::endian::little) {
        std::memcpy(to, &value, sizeof value);
    } else {
        for (unsigned i = 0; i < 8; ++i) to[i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

template <std::size_t size> inline void copyBlock(std::uint8_t* to, const std::uint8_t* from) {
    std::array<std::uint8_t, size> block;
    std::memcpy(block.data(), from, size);
    std::memcpy(to, block.data(), size);
}

/// Writes `length` bytes at `out`, each equal to the one `distance` bytes before it, and up to `copyOvershoot` more of
/// no meaning.
inline void copyMatch(std::uint8_t* out, std::size_t distance, std::size_t length) {
    const std::uint8_t* from = out - distance;
    std::uint8_t* const end = out + length;
    if (distance >= 16) {
        do {
            copyBlock<16>(out, from);
            out += 16;
            from += 16;
        } while (out < end);
    } else if (distance >= 8) {
        do {
            copyBlock<8>(out, from);
            out += 8;
            from += 8;
        } while (out < end);
    } else {
        // A pattern shorter than a block: repeat it through one block, then write that in steps of whole patterns.
        constexpr std::array<std::uint8_t, 8> wholePatterns = {0, 8, 8, 6, 8, 5, 6, 7};
        std::uint64_t block = load64le(from) & lowBits(static_cast<unsigned>(8 * distance));
        for (std::size_t shift = 8 * distance; shift < 64; shift *= 2) block |= block << shift;
        const std::size_t step = wholePatterns[distance];
        do {
            store64le(out, block);
            out += step;
        } while (out < end);
    }
}

std::size_t windowCapacity(std::uint64_t expectedSize, std::size_t longestTake) {
    const std::uint64_t sliding = std::uint64_t{historySize} + freshSize + longestTake;
    return static_cast<std::size_t>(std::min(expectedSize, sliding));
}

} // namespace

Inflater::Inflater(Pieces pieces, std::uint64_t expectedSize, std::size_t longestTake)
    : pieces_(pieces), expectedLeft_(expectedSize), capacity_(windowCapacity(expectedSize, longestTake)),
      window_(std::make_unique_for_overwrite<std::uint8_t[]>(capacity_ + windowMargin)), adler_(adlerOfNothing) {}

std::size_t Inflater::memory_needed(std::uint64_t expectedSize, std::size_t longestTake) {
    return windowCapacity(expectedSize, longestTake) + windowMargin + sizeof(Inflater);
}

const std::uint8_t* Inflater::take(std::size_t size) {
    if (written_ - taken_ < size) {
        if (taken_ + size > capacity_ || written_ >= capacity_) makeRoom();
        fill(capacity_);
        if (state_ == State::failed || written_ - taken_ < size) return nullptr;
    }
    const std::uint8_t* start = window_.get() + taken_;
    taken_ += size;
    return start;
}

bool Inflater::finish() {
    if (state_ == State::failed || expectedLeft_ != 0 || taken_ != written_) return false;
    makeRoom();
    fill(written_ + 1); // all that may come is the end; a byte of output is one too many
    return state_ == State::ended;
}

/// Drops from the window what was taken and can't be referred to any more.
void Inflater::makeRoom() {
    const std::size_t dropped = std::min(taken_, written_ - std::min(written_, historySize));
    std::memmove(window_.get(), window_.get() + dropped, written_ - dropped);
    taken_ -= dropped;
    written_ -= dropped;
}

/// Inflates until at least `target` bytes are in the window or the stream is over.
void Inflater::fill(std::size_t target) {
    const std::size_t start = written_;
    while (written_ < target && state_ < State::trailer) {
        switch (state_) {
        case State::streamHeader: readStreamHeader(); break;
        case State::blockHeader: readBlockHeader(); break;
        case State::stored: copyStored(target); break;
        default: decodeSymbols(target); break;
        }
    }
    const std::size_t fresh = written_ - start;
    if (fresh > expectedLeft_) return fail();
    expectedLeft_ -= fresh;
    adler_ = adler32(window_.get() + start, fresh, adler_);
    if (state_ == State::trailer) readTrailer();
}

void Inflater::readStreamHeader() {
    constexpr std::uint32_t deflateMethod = 8;
    constexpr std::uint32_t largestWindow = 7;
    constexpr std::uint32_t checkDivisor = 31;
    constexpr std::uint32_t presetDictionary = 0x20;
    const std::uint32_t method = takeBits(8);
    const std::uint32_t flags = takeBits(8);
    if (state_ == State::failed) return;
    const bool usable = (method & 0xFU) == deflateMethod && method >> 4 <= largestWindow &&
                        (method << 8 | flags) % checkDivisor == 0 && (flags & presetDictionary) == 0;
    state_ = usable ? State::blockHeader : State::failed;
}

void Inflater::readBlockHeader() {
    lastBlock_ = takeBits(1) != 0;
    const std::uint32_t type = takeBits(2);
    if (state_ == State::failed) return;
    switch (type) {
    case storedBlock: return readStoredHeader();
    case fixedBlock:
        literals_ = fixed_literal_table().data();
        distances_ = fixed_distance_table().data();
        state_ = State::coded;
        return;
    case dynamicBlock: return readDynamicTables();
    default: return fail();
    }
}

void Inflater::readStoredHeader() {
    drop(bitCount_ % 8); // the block begins with a whole byte
    const std::uint32_t length = takeBits(16);
    const std::uint32_t complement = takeBits(16);
    if (state_ == State::failed || length != (complement ^ 0xFFFFU)) return fail();
    storedLeft_ = length;
    state_ = State::stored;
}

void Inflater::readDynamicTables() {
    const std::size_t literalCount = takeBits(5) + 257;
    const std::size_t distanceCount = takeBits(5) + 1;
    const std::size_t lengthCodeCount = takeBits(4) + 4;
    if (state_ == State::failed || literalCount > mostLiteralCodes || distanceCount > mostDistanceCodes) return fail();

    std::array<std::uint8_t, lengthCodeSymbols> lengthCode{};
    for (std::size_t i = 0; i < lengthCodeCount; ++i)
        lengthCode[lengthCodeOrder[i]] = static_cast<std::uint8_t>(takeBits(3));
    LengthCodeTable lengthTable;
    if (state_ == State::failed || !build_length_code_table(lengthTable, lengthCode)) return fail();

    std::array<std::uint8_t, mostLiteralCodes + mostDistanceCodes> lengths;
    const std::size_t count = literalCount + distanceCount;
    for (std::size_t at = 0; at < count;) {
        const std::uint32_t symbol = takeSymbol(lengthTable.data(), lengthCodeWidth).value;
        std::uint32_t times = 1;
        std::uint8_t length = 0;
        switch (symbol) {
        case repeatPrevious:
            if (at == 0) return fail();
            length = lengths[at - 1];
            times = 3 + takeBits(2);
            break;
        case repeatZeroShort: times = 3 + takeBits(3); break;
        case repeatZeroLong: times = 11 + takeBits(7); break;
        default: length = static_cast<std::uint8_t>(symbol); break;
        }
        if (state_ == State::failed || times > count - at) return fail();
        std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(at), times, length);
        at += times;
    }

    const std::span<const std::uint8_t> all(lengths.data(), count);
    if (all[endOfBlockSymbol] == 0 || !build_literal_table(ownLiterals_, all.first(literalCount)) ||
        !build_distance_table(ownDistances_, all.subspan(literalCount)))
        return fail();
    literals_ = ownLiterals_.data();
    distances_ = ownDistances_.data();
    state_ = State::coded;
}

void Inflater::copyStored(std::size_t target) {
    while (storedLeft_ > 0 && written_ < target) {
        if (bitCount_ >= 8 || in_ == inEnd_) {
            const auto byte = static_cast<std::uint8_t>(takeBits(8));
            if (state_ == State::failed) return;
            window_[written_++] = byte;
            --storedLeft_;
            continue;
        }
        const std::size_t size = std::min({storedLeft_, static_cast<std::size_t>(inEnd_ - in_), target - written_});
        std::memcpy(window_.get() + written_, in_, size);
        in_ += size;
        written_ += size;
        storedLeft_ -= size;
    }
    if (storedLeft_ == 0) endBlock();
}

void Inflater::decodeSymbols(std::size_t target) {
    while (written_ < target && state_ == State::coded) {
        decodeFast(target);
        if (written_ < target && state_ == State::coded) decodeOne();
    }
}

void Inflater::decodeOne() {
    const Symbol symbol = takeSymbol(literals_, literalTableWidth);
    if (state_ == State::failed) return;
    if ((symbol.entry & entryIsLiteral) != 0) {
        window_[written_++] = static_cast<std::uint8_t>(symbol.value);
        return;
    }
    if ((symbol.entry & entryIsEnd) != 0) return endBlock();
    const Symbol distance = takeSymbol(distances_, distanceTableWidth);
    if (state_ == State::failed || distance.value > written_) return fail();
    copyMatch(window_.get() + written_, distance.value, symbol.value);
    written_ += symbol.value;
}

void Inflater::decodeFast(std::size_t target) {
    constexpr std::ptrdiff_t mostPerRound = 16; // bytes of input: two loads of eight
    if (inEnd_ - in_ < mostPerRound) return;
    const std::uint8_t* in = in_;
    const std::uint8_t* const inStop = inEnd_ - mostPerRound;
    std::uint8_t* const start = window_.get();
    std::uint8_t* out = start + written_;
    std::uint8_t* const outStop = start + target;
    const TableEntry* const literals = literals_;
    const TableEntry* const distances = distances_;
    std::uint64_t bits = bits_;
    unsigned bitCount = bitCount_;

    // At least 56 bits: four literals of the first table, or a longest length and a longest distance. Bits above the
    // count are those that come next in any case, so that loading them again does no harm.
    const auto refill = [&] {
        bits |= load64le(in) << bitCount;
        in += (63 - bitCount) / 8;
        bitCount |= 56;
    };
    const auto take = [&](TableEntry entry) {
        bits >>= bitsToTake(entry);
        bitCount -= bitsToTake(entry);
    };

    while (in <= inStop && out < outStop) {
        refill();
        TableEntry entry = literals[bits & lowBits(literalTableWidth)];
        if ((entry & entryIsLiteral) != 0) {
            for (std::size_t i = 0; i < literalsPerRound && (entry & entryIsLiteral) != 0; ++i) {
                *out++ = static_cast<std::uint8_t>(entry >> 16);
                take(entry);
                entry = literals[bits & lowBits(literalTableWidth)];
            }
            if ((entry & entryIsLiteral) != 0) continue;
            refill();
        }
        if ((entry & entryIsSpecial) != 0) {
            if ((entry & entryIsLink) != 0) {
                take(entry);
                entry = literals[value(entry) + (bits & lowBits(codeLength(entry)))];
                if ((entry & entryIsLiteral) != 0) {
                    *out++ = static_cast<std::uint8_t>(entry >> 16);
                    take(entry);
                    continue;
                }
            }
            if ((entry & entryIsSpecial) != 0) {
                if ((entry & entryIsEnd) == 0) return fail();
                take(entry);
                endBlock();
                break;
            }
        }
        const std::size_t length = valueWithExtra(entry, bits);
        take(entry);

        TableEntry far = distances[bits & lowBits(distanceTableWidth)];
        if ((far & entryIsSpecial) != 0) {
            if ((far & entryIsLink) == 0) return fail();
            take(far);
            far = distances[value(far) + (bits & lowBits(codeLength(far)))];
            if ((far & entryIsSpecial) != 0) return fail();
        }
        const std::size_t distance = valueWithExtra(far, bits);
        take(far);
        if (distance > static_cast<std::size_t>(out - start)) return fail();
        copyMatch(out, distance, length);
        out += length;
    }

    in_ = in;
    bits_ = bits & lowBits(bitCount);
    bitCount_ = bitCount;
    written_ = static_cast<std::size_t>(out - start);
}

void Inflater::endBlock() { state_ = lastBlock_ ? State::trailer : State::blockHeader; }

void Inflater::readTrailer() {
    drop(bitCount_ % 8);
    std::uint32_t stated = 0;
    for (int i = 0; i < 4; ++i) stated = stated << 8 | takeBits(8);
    if (state_ == State::failed) return;
    state_ = stated == adler_ ? State::ended : State::failed;
}

/// Adds the next byte of the input to the bits. False at the end of the input, or if there is no place for it.
bool Inflater::readByte() {
    while (in_ == inEnd_) {
        if (pieces_.empty()) return false;
        in_ = pieces_.front().data();
        inEnd_ = in_ + pieces_.front().size();
        pieces_ = pieces_.subspan(1);
    }
    bits_ |= std::uint64_t{*in_++} << bitCount_;
    bitCount_ += 8;
    return true;
}

void Inflater::drop(unsigned count) {
    bits_ >>= count;
    bitCount_ -= count;
}

/// The next `count` bits, at most 16; fails and gives 0 when the input ends before.
std::uint32_t Inflater::takeBits(unsigned count) {
    while (bitCount_ < count)
        if (!readByte()) {
            fail();
            return 0;
        }
    const auto taken = static_cast<std::uint32_t>(bits_ & lowBits(count));
    drop(count);
    return taken;
}

/// The next symbol of a code that stands for something; fails when the input ends within it, or nothing has its code.
Inflater::Symbol Inflater::takeSymbol(const TableEntry* table, unsigned width) {
    constexpr unsigned longestSymbol = maxCodeLength + 13; // bits; a distance with all its extra bits
    while (bitCount_ < longestSymbol && readByte()) {
    }
    TableEntry entry = table[bits_ & lowBits(width)];
    if ((entry & entryIsLink) != 0 && width <= bitCount_) {
        drop(width);
        entry = table[value(entry) + (bits_ & lowBits(codeLength(entry)))];
    }
    const bool meaningless = (entry & entryIsSpecial) != 0 && (entry & entryIsEnd) == 0;
    if (meaningless || bitsToTake(entry) > bitCount_) {
        fail();
        return {entryIsSpecial, 0};
    }
    const Symbol symbol{entry, valueWithExtra(entry, bits_)};
    drop(bitsToTake(entry));
    return symbol;
}

} // namespace wm::png
