#pragma once

// The two checksums of a PNG file: CRC-32 over every chunk, Adler-32 over the data before compression.

#include <cstddef>
#include <cstdint>

namespace wm::png {

/// The Adler-32 of no bytes at all: what a running sum starts from.
constexpr std::uint32_t adlerOfNothing = 1;

/// CRC-32 of `size` bytes, with the polynomial that PNG prescribes.
/// @param crc  the CRC of the bytes before them, so that a long run can be summed in parts; 0 at the beginning
std::uint32_t crc32(const std::uint8_t* data, std::size_t size, std::uint32_t crc = 0);

/// Adler-32 of `size` bytes.
/// @param adler  the sum of the bytes before them
std::uint32_t adler32(const std::uint8_t* data, std::size_t size, std::uint32_t adler = adlerOfNothing);

} // namespace wm::png
