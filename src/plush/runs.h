#pragma once

// Runs of pixels that lie side by side: what every blit comes down to, row by row.

#include "plush/blend.h"
#include "plush/blit.h"
#include "plush/image.h"
#include "plush/wide_vectors.h"

#include <cstring>
#include <vector>

/// Copies or blends a run of pixels. The two must not overlap.
inline void drawRun(PixelByte* target, const PixelByte* source, std::size_t count, Blend blend) {
    if (blend == Blend::Over) {
        blendRow(target, source, count);
    } else {
        std::memcpy(target, source, count * bytesPerPixel);
    }
}

/// Picks pixels out of a source row into a run, one for each number in `columns`.
inline void pickRun(PixelByte* run, const PixelByte* sourceRow, const std::vector<int>& columns) {
    std::size_t at = 0;
    for (; at + pixelsAtOnce <= columns.size(); at += pixelsAtOnce) {
        const Pixels4 pixels = gatheredPixels(sourceRow, &columns[at]);
        std::memcpy(run + at * bytesPerPixel, &pixels, sizeof pixels);
    }
    for (; at < columns.size(); ++at) {
        const std::uint32_t pixel = loadPixel(sourceRow + static_cast<std::size_t>(columns[at]) * bytesPerPixel);
        std::memcpy(run + at * bytesPerPixel, &pixel, sizeof pixel);
    }
}
