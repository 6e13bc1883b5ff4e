// Filling an image in between the pixels of a coarse grid.
//
// Only grid pixels are read and all others are written, so threads need no order among them. All rows between two grid
// rows mix the same two lines: each grid row interpolated along its length. These lines are worked out when the first
// row needs them and the lower one becomes the next upper one.

#include "plush/grid_fill.h"

#include "plush/interpolation.h"
#include "plush/rows.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

/// Behind the last grid line, both neighbours are that line.
Between between(int position, int step, int size) {
    const int rest = position % step;
    Between place;
    place.lower = position - rest;
    place.upper = std::int64_t{place.lower} + step < size ? place.lower + step : place.lower;
    if (place.upper != place.lower) {
        place.weight = static_cast<float>(rest) / static_cast<float>(place.upper - place.lower);
    }
    return place;
}

/// A grid row interpolated along the columns of a strip, four pixels a group.
class GridLine {
public:
    void prepare(const PlushImage& image, int row, const Strip& strip) {
        row_ = row;
        groups_.resize(strip.groups());
        forEachGroup(image, row, strip, [this](std::size_t group, Pixels4 lower, Pixels4 upper, Floats4 weight) {
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                groups_[group][static_cast<std::size_t>(channel)] =
                    channelOf(lower, channel) * (1.0F - weight) + channelOf(upper, channel) * weight;
            }
        });
    }

    int row() const { return row_; }
    const Channels& operator[](std::size_t group) const { return groups_[group]; }

private:
    int row_ = -1; // none yet
    std::vector<Channels> groups_;
};

/// Four pixels between two lines.
Pixels4 mixed(const Channels& top, const Channels& bottom, float weight) {
    const float rest = 1.0F - weight;
    Pixels4 pixels = {};
    for (int channel = 0; channel < bytesPerPixel; ++channel) {
        const auto at = static_cast<std::size_t>(channel);
        pixels |= inChannel(roundedPositive(top[at] * rest + bottom[at] * weight), channel);
    }
    return pixels;
}

void fillStrip(PlushImage& image, const Strip& strip, int step, RowRange rows) {
    GridLine top;
    GridLine bottom;
    for (int y = rows.first; y < rows.last; ++y) {
        const Between place = between(y, step, image.height);
        prepareOrTake(top, bottom, image, place.lower, strip);
        const bool onGrid = place.weight == 0.0F; // or behind its last row: the lower line alone counts
        if (!onGrid && bottom.row() != place.upper) bottom.prepare(image, place.upper, strip);
        const GridLine& other = onGrid ? top : bottom;

        const std::size_t start =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) + static_cast<std::size_t>(strip.first);
        PixelByte* row = image.pixels + start * bytesPerPixel;
        const bool holdsGridPixels = y == place.lower; // which other threads may be reading
        for (std::size_t group = 0; group < strip.groups(); ++group) {
            const Pixels4 pixels = mixed(top[group], other[group], place.weight);
            const std::size_t first = group * pixelsAtOnce;
            const std::size_t count = strip.pixelsInGroup(group);
            if (!holdsGridPixels) {
                std::memcpy(row + first * bytesPerPixel, &pixels, count * bytesPerPixel);
                continue;
            }
            for (std::size_t at = 0; at < count; ++at) {
                const std::uint32_t pixel = pixels[at];
                const bool isGridPixel = strip.first + static_cast<int>(first + at) == strip.lower[first + at];
                if (!isGridPixel) std::memcpy(row + (first + at) * bytesPerPixel, &pixel, sizeof pixel);
            }
        }
    }
}

} // namespace

void bilinearInPlace(PlushImage& image) {
    const int step = samplingStep;
    if (!image.pixels || AllowedThreads < 1 || step < 1) return;
    splitRows(image.height, AllowedThreads, RowSplit::Even, [&](RowRange rows) {
        forEachStrip(image.width, [&](int first, int columns) {
            const Strip strip(first, columns, [&](int x) { return between(x, step, image.width); });
            fillStrip(image, strip, step, rows);
        });
    });
}
