#pragma once

// Reading XCF files: the layers of a picture as its editor keeps them, laid together.

#include "plush/picture_block.h"

#include <cstdint>
#include <span>

namespace wm::png {

/// Decodes the XCF file `data` into a block that `allocate` gives. False on any fault.
bool decode_xcf(std::span<const std::uint8_t> data, const PixelAllocator& allocate);

} // namespace wm::png
