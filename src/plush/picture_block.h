#pragma once

// Where a decoder puts its picture. Only the decoder knows the size, and only its caller knows who will own the pixels;
// so the caller hands over a function, and the decoder calls it once, when everything that can be known from the
// file's headers is known and found right.

#include "plush/png.h"

#include <functional>

namespace wm::png {

/// Gives a block for `width * height` RGBA pixels, which the decoder fills wholly; its bytes are not set beforehand.
/// May throw `std::bad_alloc`.
using PixelAllocator = std::function<std::uint8_t*(std::int32_t width, std::int32_t height)>;

/// Whether a picture of this size can be decoded within `memoryLimit`, and has any pixels.
/// @param spent  bytes that are needed beside its pixels, at most `memoryLimit`
constexpr bool picture_fits(std::uint64_t width, std::uint64_t height, std::uint64_t spent) {
    if (width == 0 || height == 0 || width > memoryLimit || height > memoryLimit || spent > memoryLimit) return false;
    return width * height <= (memoryLimit - spent) / rgbaSize;
}

} // namespace wm::png
