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

/// Draws rows of an image with the pixels picked out by a map of columns. Target rows that show the same source row one
/// after the other share the picking.
class PickedRows {
public:
    /// @param columns  of the source, one for each target pixel; must outlive this
    PickedRows(const std::vector<int>& columns, Blend blend) : columns_(columns), blend_(blend) {
        if (blend_ == Blend::Over) run_.resize(columns_.size() * bytesPerPixel);
    }

    /// The row drawn last must still be as it was drawn.
    void draw(PixelByte* target, const PixelByte* sourceRow) {
        if (sourceRow != sourceRow_) {
            PixelByte* run = blend_ == Blend::Over ? run_.data() : target;
            pickRun(run, sourceRow, columns_);
            sourceRow_ = sourceRow;
            picked_ = run;
        }
        if (picked_ != target) drawRun(target, picked_, columns_.size(), blend_);
    }

private:
    const std::vector<int>& columns_;
    Blend blend_;
    std::vector<PixelByte> run_;           // what is blended; a replacing row is picked into the target at once
    const PixelByte* sourceRow_ = nullptr; // the one last picked from
    const PixelByte* picked_ = nullptr;    // what was picked from it
};
