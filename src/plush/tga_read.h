#pragma once

// Reading TGA files: colour maps, true colours and greys, plain and in run lengths, from any corner.

#include "plush/picture_block.h"

#include <cstdint>
#include <span>

namespace wm::png {

/// Whether `data` begins like a TGA file. That format has no signature, so this asks whether what would be its header
/// makes sense: an image type, a colour map and a pixel depth that go together, and a size.
bool looks_like_tga(std::span<const std::uint8_t> data);

/// Decodes the TGA file `data` into a block that `allocate` gives. False on any fault. What follows the pixels is not
/// looked at: a footer says nothing about them.
bool decode_tga(std::span<const std::uint8_t> data, const PixelAllocator& allocate);

} // namespace wm::png
