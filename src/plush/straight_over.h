#pragma once

// Laying one pixel with straight alpha over another: how the frames of an animation and the layers of a layered
// picture become one picture.

#include "plush/png.h"

#include <algorithm>
#include <cstring>

namespace wm::png {

/// Lays the pixel `source` over the pixel at `canvas`. The rounded alpha can be a little too small for the rounded
/// colour, which then would be 256 where it is meant to be 255.
inline void lay_over(std::uint8_t* canvas, const std::uint8_t* source) {
    const unsigned sa = source[3];
    const unsigned da = canvas[3];
    if (sa == 255 || da == 0) {
        std::memcpy(canvas, source, rgbaSize);
        return;
    }
    if (sa == 0) return;
    const unsigned w = (255 - sa) * da;
    const unsigned alpha = sa + (w + 127) / 255;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const unsigned s = source[channel];
        const unsigned d = canvas[channel];
        const unsigned colour = (alpha / 2 + s * sa + (127 + w * d) / 255) / alpha;
        canvas[channel] = static_cast<std::uint8_t>(std::min(colour, 255U));
    }
    canvas[3] = static_cast<std::uint8_t>(alpha);
}

} // namespace wm::png
