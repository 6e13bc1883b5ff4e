#pragma once

// The row filters of PNG: predictions of a byte from its neighbours, of which only the error is stored.
//
// A filter looks at the byte of the same channel in the pixel to the left (a), in the row above (b), and above to the
// left (c); outside the picture all of them are 0. Reading undoes the filter that a row names; writing tries all five
// and keeps the one that leaves the smallest errors.

#include <cstddef>
#include <cstdint>

namespace wm::png {

enum Filter : std::uint8_t { filterNone = 0, filterSub = 1, filterUp = 2, filterAverage = 3, filterPaeth = 4 };
constexpr std::size_t filterCount = 5;

/// Bytes behind the end of a row that `unfilter_row_to` may touch when a pixel takes 3 or 6 bytes: read in all three
/// blocks, written in the target.
constexpr std::size_t filterSlack = 2;

/// Undoes the filter of one row.
/// @param target         receives `size` bytes; must not overlap the others
/// @param filtered       the row as stored, without its filter byte
/// @param above          the finished row above it; zeros for the first row
/// @param size           bytes of the row, a multiple of `bytesPerPixel`
/// @param bytesPerPixel  1, 2, 3, 4, 6 or 8; 1 also where a pixel takes less than a byte
/// @return false if `filter` is none of the five
bool unfilter_row_to(std::uint8_t* target, const std::uint8_t* filtered, const std::uint8_t* above, std::size_t size,
                     std::size_t bytesPerPixel, std::uint8_t filter);

/// Filters one RGBA row with the filter whose results have the smallest sum of absolute values, each byte read as
/// signed; of equal ones the first.
/// @param target  receives the filter byte and the `size` filtered bytes
/// @param row     `size` bytes, at least one pixel
/// @param above   the row above it; zeros for the first row
void filter_rgba_row_to(std::uint8_t* target, const std::uint8_t* row, const std::uint8_t* above, std::size_t size);

} // namespace wm::png
