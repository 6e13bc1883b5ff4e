#pragma once

// Single pixels, with every access checked. For scripts and for code that touches a few pixels; whatever works on
// rows checks the row once and goes on with bare pointers.

#include "plush/image.h"

#include <cstddef>
#include <cstring>

/// Whether (x, y) is a pixel of the image; false without pixels.
inline bool hasPixel(const PlushImage* image, int x, int y) {
    return image && image->pixels && x >= 0 && y >= 0 && x < image->width && y < image->height;
}

/// Where pixel (x, y) starts. It must exist.
inline PixelByte* pixelAt(const PlushImage& image, int x, int y) {
    const std::size_t index = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width);
    return image.pixels + (index + static_cast<std::size_t>(x)) * bytesPerPixel;
}

/// Writes a pixel; does nothing outside the image.
inline void setPixel(PlushImage* image, int x, int y, PixelByte r, PixelByte g, PixelByte b, PixelByte a) {
    if (!hasPixel(image, x, y)) return;
    const PixelByte colour[bytesPerPixel] = {r, g, b, a};
    std::memcpy(pixelAt(*image, x, y), colour, bytesPerPixel);
}

/// The four bytes of a pixel; outside the image those of a transparent one.
inline const PixelByte* getPixel(const PlushImage* image, int x, int y) {
    static constexpr PixelByte transparent[bytesPerPixel] = {};
    return hasPixel(image, x, y) ? pixelAt(*image, x, y) : transparent;
}
