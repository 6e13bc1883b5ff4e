// The checksum that goes with a saved game. It finds accidents, not intent.

#include "host/checksum.h"

#include <bit>

namespace {

constexpr int turnedBits = 29;

} // namespace

std::uint32_t textChecksum(std::string_view text) {
    std::uint32_t sum = 0;
    std::uint32_t position = 0;
    for (const char byte : text) {
        ++position;
        sum = std::rotr(sum, turnedBits) + position * static_cast<unsigned char>(byte);
    }
    return sum;
}
