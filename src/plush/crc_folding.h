#pragma once

// CRC-32 of long runs by carry-less multiplication, where the processor has it; one of two files is built.

#include <cstddef>
#include <cstdint>

namespace wm::png {

constexpr std::uint32_t crcPolynomial = 0xEDB88320U; // the bits of PNG's polynomial in reverse order

/// Bytes that a run is folded into.
constexpr std::size_t foldedSize = 16;

/// Folds the beginning of a run, as much of it as it can, into `foldedSize` bytes that leave the same remainder when
/// they are summed from a remainder of 0.
/// @param remainder  of the bytes before the run
/// @return how many bytes of the run `folded` stands for; 0 if the processor or the length doesn't allow it
std::size_t foldForCrc(const std::uint8_t* data, std::size_t size, std::uint32_t remainder, std::uint8_t* folded);

} // namespace wm::png
