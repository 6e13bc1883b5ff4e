// Drawing a rectangle of one image on another.
//
// The source column of each target column is the same for all rows, so the map of columns is made once. A source row
// is picked out by the map when it is first needed and serves all target rows that show it. At its own size there is
// nothing to pick.

#include "plush/blit_rect.h"

#include "plush/image_copy.h"
#include "plush/pixels.h"
#include "plush/runs.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

constexpr float farthest = 1e12F;       // pixels; beyond every image, and safe to turn into an integer
constexpr int exactDistances = 1 << 24; // whole numbers below this are exact in single precision

/// One direction of the blit: which part of the image is shown where.
struct Span {
    int source = 0;         // the first source pixel
    int sourceSize = 0;     // pixels
    std::int64_t place = 0; // of the first source pixel, in target pixels
    int first = 0;          // target pixels from here
    int last = 0;           // up to, but not including, this

    bool isEmpty() const { return sourceSize < 1 || first >= last; }

    /// The source pixel that a target pixel shows, counted from `source`.
    int shown(int target, float scale) const {
        const float position = static_cast<float>(target - place) / scale;
        if (position >= static_cast<float>(sourceSize)) return sourceSize - 1;
        return std::min(sourceSize - 1, static_cast<int>(position));
    }
};

/// @param start, size  of the wanted rectangle in the image, whose side is `imageSize`
Span spanOf(int start, int size, int imageSize, int place, int targetSize, float scale) {
    Span span;
    span.source = std::max(start, 0);
    span.sourceSize = static_cast<int>(std::min<std::int64_t>(std::int64_t{start} + size, imageSize) - span.source);
    if (span.sourceSize < 1) return {};
    const float drawn = std::clamp(std::round(scale * static_cast<float>(span.sourceSize)), 1.0F, farthest);
    span.place = place;
    span.first = std::max(place, 0);
    span.last = static_cast<int>(
        std::clamp<std::int64_t>(std::int64_t{place} + static_cast<std::int64_t>(drawn), 0, targetSize));
    return span;
}

} // namespace

void blitImageRect(PlushImage& target, const PlushImage& image, const PixelRect& rect, int x, int y, Blend blend,
                   float scale) {
    if (rect.width < 1 || rect.height < 1 || scale == 0.0F || !std::isfinite(scale)) return;
    if (!target.pixels || !image.pixels) return;
    if (target.pixels == image.pixels) {
        const ImageCopy copy(image);
        blitImageRect(target, copy.image(), rect, x, y, blend, scale);
        return;
    }
    const Span across = spanOf(rect.x, rect.width, image.width, x, target.width, scale);
    const Span down = spanOf(rect.y, rect.height, image.height, y, target.height, scale);
    if (across.isEmpty() || down.isEmpty()) return;
    const auto count = static_cast<std::size_t>(across.last - across.first);

    if (scale == 1.0F && across.sourceSize <= exactDistances && down.sourceSize <= exactDistances) {
        const int column = across.source + static_cast<int>(across.first - across.place);
        for (int py = down.first; py < down.last; ++py) {
            const int row = down.source + static_cast<int>(py - down.place);
            drawRun(pixelAt(target, across.first, py), pixelAt(image, column, row), count, blend);
        }
        return;
    }

    std::vector<int> columns(count);
    for (int px = across.first; px < across.last; ++px) {
        columns[static_cast<std::size_t>(px - across.first)] = across.source + across.shown(px, scale);
    }
    PickedRows picked(columns, blend);
    for (int py = down.first; py < down.last; ++py) {
        const int row = down.source + down.shown(py, scale);
        picked.draw(pixelAt(target, across.first, py), pixelAt(image, 0, row));
    }
}
