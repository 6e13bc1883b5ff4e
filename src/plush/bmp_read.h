#pragma once

// Reading BMP files: every header from the oldest to the fifth version, palettes, bit fields and run lengths.

#include "plush/picture_block.h"

#include <cstdint>
#include <span>

namespace wm::png {

/// Decodes the BMP file `data` into a block that `allocate` gives. False on any fault.
bool decode_bmp(std::span<const std::uint8_t> data, const PixelAllocator& allocate);

} // namespace wm::png
