#pragma once

// Alpha that a file has room for but doesn't promise.

#include "plush/png.h"

#include <span>

namespace wm::png {

/// Makes a picture opaque of which no pixel has any alpha: its writer left the byte unused. Any other stays as it is.
inline void settle_unused_alpha(std::span<std::uint8_t> pixels) {
    constexpr std::size_t alpha = 3;
    for (std::size_t at = alpha; at < pixels.size(); at += rgbaSize)
        if (pixels[at] != 0) return;
    for (std::size_t at = alpha; at < pixels.size(); at += rgbaSize) pixels[at] = 255;
}

} // namespace wm::png
