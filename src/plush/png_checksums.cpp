// CRC-32 and Adler-32, both several bytes at a time.
//
// A CRC is linear: the remainder of a stretch is the exclusive or of the remainders of its bytes, each taken as if
// only zeros followed. One table per distance from the end of a 16-byte step therefore lets sixteen bytes be looked up
// independently of each other, where the plain algorithm has to finish a byte before it can begin the next. The tables
// cost 16 KiB, which stay in the first-level cache while a chunk is summed. Where the processor can do better, it takes
// the bulk first (crc_folding.h).
//
// Adler-32 is two sums, of the bytes and of the running sums. Over a block they are a plain sum and a sum weighted by
// the distance from the block's end, which sixteen independent lanes can gather; only the end of a block needs the
// division.

#include "plush/png_checksums.h"

#include "plush/byte_vectors.h"
#include "plush/crc_folding.h"

#include <algorithm>
#include <array>

namespace wm::png {

namespace {

constexpr std::size_t crcStep = 16; // bytes looked up at once

using CrcTables = std::array<std::array<std::uint32_t, 256>, crcStep>;

/// tables[d][b] is the CRC of the byte b followed by d zero bytes.
constexpr CrcTables makeCrcTables() {
    CrcTables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1U) != 0 ? crc >> 1 ^ crcPolynomial : crc >> 1;
        tables[0][byte] = crc;
    }
    for (std::size_t distance = 1; distance < crcStep; ++distance)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[distance - 1][byte];
            tables[distance][byte] = before >> 8 ^ tables[0][before & 0xFFU];
        }
    return tables;
}

constexpr CrcTables crcTables = makeCrcTables();

constexpr std::uint32_t adlerModulus = 65521; // the largest prime below 65536
constexpr std::size_t adlerLanes = 16;        // bytes per step
constexpr std::size_t adlerSteps = 16;        // after which the lanes are gathered, long before one overflows
constexpr std::size_t adlerGroup = adlerLanes * adlerSteps;
constexpr std::size_t adlerBlock = 5552 / adlerGroup * adlerGroup; // bytes; the most for which no sum leaves 32 bits

/// The remainder after `size` bytes, from the one before them.
std::uint32_t remainderByTables(const std::uint8_t* data, std::size_t size, std::uint32_t crc) {
    for (; size >= crcStep; data += crcStep, size -= crcStep) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < 4; ++i) next ^= crcTables[crcStep - 1 - i][(crc >> (8 * i) & 0xFFU) ^ data[i]];
        for (std::size_t i = 4; i < crcStep; ++i) next ^= crcTables[crcStep - 1 - i][data[i]];
        crc = next;
    }
    for (; size > 0; ++data, --size) crc = crc >> 8 ^ crcTables[0][(crc & 0xFFU) ^ *data];
    return crc;
}

} // namespace

std::uint32_t crc32(const std::uint8_t* data, std::size_t size, std::uint32_t crc) {
    crc = ~crc;
    std::array<std::uint8_t, foldedSize> folded;
    const std::size_t done = foldForCrc(data, size, crc, folded.data());
    if (done > 0) crc = remainderByTables(folded.data(), folded.size(), 0);
    return ~remainderByTables(data + done, size - done, crc);
}

std::uint32_t adler32(const std::uint8_t* data, std::size_t size, std::uint32_t adler) {
    std::uint32_t sum = adler & 0xFFFFU;   // of the bytes
    std::uint32_t sumOfSums = adler >> 16; // of `sum` after each byte
    while (size >= adlerGroup) {
        const std::size_t block = std::min(size / adlerGroup * adlerGroup, adlerBlock);
        const std::uint8_t* const end = data + block;
        for (; data < end; data += adlerGroup) {
            Words8 low{}; // lane l: the sum of the bytes at l, l + 16, ...
            Words8 high{};
            Words8 lowSums{}; // lane l: the sum of `low[l]` after each step
            Words8 highSums{};
            for (std::size_t at = 0; at < adlerGroup; at += adlerLanes) {
                const Bytes16 bytes = loadBytes16(data + at);
                low += widenLow(bytes);
                high += widenHigh(bytes);
                lowSums += low;
                highSums += high;
            }
            // A byte in lane l of step t counts 256 - 16t - l times, that is 16 times for its own step and each one
            // after it, less l.
            sumOfSums += sum * static_cast<std::uint32_t>(adlerGroup);
            for (std::uint32_t lane = 0; lane < 8; ++lane) {
                sumOfSums += (lowSums[lane] + highSums[lane]) * 16U - low[lane] * lane - high[lane] * (lane + 8U);
                sum += low[lane] + high[lane];
            }
        }
        sum %= adlerModulus;
        sumOfSums %= adlerModulus;
        size -= block;
    }
    for (; size > 0; ++data, --size) {
        sum += *data;
        sumOfSums += sum;
    }
    return sumOfSums % adlerModulus << 16 | sum % adlerModulus;
}

} // namespace wm::png
