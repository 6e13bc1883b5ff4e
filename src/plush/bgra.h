#pragma once

// The byte order in which the writers of plain pictures store their pixels.

#include "plush/byte_writer.h"
#include "plush/png.h"

namespace wm::png {

/// Appends `count` RGBA pixels in the order blue, green, red, alpha.
inline void put_bgra(ByteWriter& file, const std::uint8_t* pixels, std::size_t count) {
    std::uint8_t* target = file.extend(count * rgbaSize);
    for (std::size_t i = 0; i < count; ++i, pixels += rgbaSize, target += rgbaSize) {
        target[0] = pixels[2];
        target[1] = pixels[1];
        target[2] = pixels[0];
        target[3] = pixels[3];
    }
}

} // namespace wm::png
