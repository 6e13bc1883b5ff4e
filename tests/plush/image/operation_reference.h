#pragma once

// The operations on images as their rules say them, one pixel after the other.

#include "plush/blit.h"
#include "plush/blit_rect.h"
#include "plush/image.h"
#include "plush/skew.h"

#include <string>
#include <vector>

/// Pixels with a size.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<PixelByte> bytes;

    Picture() = default;
    Picture(int columns, int rows)
        : width(columns), height(rows),
          bytes(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows) * bytesPerPixel) {}
    explicit Picture(const PlushImage& image);

    PixelByte* at(int x, int y) {
        return &bytes[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                      bytesPerPixel];
    }
    const PixelByte* at(int x, int y) const { return const_cast<Picture*>(this)->at(x, y); }

    /// The same pixels as the operations know them.
    PlushImage image() { return {width, height, bytes.data(), 0, 0, nullptr}; }

    bool operator==(const Picture&) const = default;
};

Picture referenceBlitRect(Picture target, const Picture& image, const PixelRect& rect, int x, int y, Blend blend,
                          float scale);
Picture referenceSkew(const Corners& corners, Picture input, Picture output);
Picture referenceDither(const Picture& image, int amount, bool pixelate);
Picture referenceUpscale(Picture image, float factor);
Picture referenceGridFill(Picture image, int step);
Picture referenceTrim(const Picture& image, int width, int height);
Picture referenceMirror(const Picture& image, bool horizontal);
std::string referenceAsciiArt(const Picture& image, int columns, int rows);
