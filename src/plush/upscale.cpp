// Enlarging an image with bilinear filtering.
//
// The weight of a neighbour is a product of a column's part and a row's part, multiplied in that order. What belongs to
// the columns is therefore worked out once for each source row and kept while destination rows need it; a destination
// row is then four products and three sums for each number.

#include "plush/upscale.h"

#include "plush/interpolation.h"
#include "plush/registry.h"
#include "plush/rows.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace {

/// A destination row or column between two of the source, which has `size` of them.
Between between(int destination, float factor, int size) {
    const float position = (static_cast<float>(destination) + 0.5F) / factor - 0.5F;
    const auto whole = static_cast<int>(position);
    Between place;
    place.lower = std::clamp(whole, 0, size - 1);
    place.upper = std::clamp(whole + 1, 0, size - 1);
    place.weight = position - static_cast<float>(place.lower);
    return place;
}

/// A source row as the columns of a strip see it: both neighbours with their weights, four pixels a group.
class WeightedRow {
public:
    void prepare(const PlushImage& image, int row, const Strip& strip) {
        row_ = row;
        left_.resize(strip.groups());
        right_.resize(strip.groups());
        forEachGroup(image, row, strip, [this](std::size_t group, Pixels4 lower, Pixels4 upper, Floats4 weight) {
            for (int channel = 0; channel < bytesPerPixel; ++channel) {
                left_[group][static_cast<std::size_t>(channel)] = channelOf(lower, channel) * (1.0F - weight);
                right_[group][static_cast<std::size_t>(channel)] = channelOf(upper, channel) * weight;
            }
        });
    }

    int row() const { return row_; }
    const Channels& left(std::size_t group) const { return left_[group]; }
    const Channels& right(std::size_t group) const { return right_[group]; }

private:
    int row_ = -1; // none yet
    std::vector<Channels> left_;
    std::vector<Channels> right_;
};

/// One destination row of a strip.
void drawRow(PixelByte* target, const Strip& strip, const WeightedRow& above, const WeightedRow& below, float weight) {
    const float rest = 1.0F - weight;
    for (std::size_t group = 0; group < strip.groups(); ++group) {
        Pixels4 pixels = {};
        for (int channel = 0; channel < bytesPerPixel; ++channel) {
            const auto at = static_cast<std::size_t>(channel);
            const Floats4 sum = above.left(group)[at] * rest + above.right(group)[at] * rest +
                                below.left(group)[at] * weight + below.right(group)[at] * weight;
            pixels |= inChannel(truncated(sum), channel);
        }
        const std::size_t first = group * pixelsAtOnce;
        std::memcpy(target + first * bytesPerPixel, &pixels, strip.pixelsInGroup(group) * bytesPerPixel);
    }
}

void drawStrip(PixelByte* target, int targetWidth, const PlushImage& image, const Strip& strip, float factor,
               RowRange rows) {
    WeightedRow above;
    WeightedRow below;
    for (int y = rows.first; y < rows.last; ++y) {
        const Between place = between(y, factor, image.height);
        prepareOrTake(above, below, image, place.lower, strip);
        if (below.row() != place.upper) below.prepare(image, place.upper, strip);
        const std::size_t pixel = static_cast<std::size_t>(y) * static_cast<std::size_t>(targetWidth);
        drawRow(target + (pixel + static_cast<std::size_t>(strip.first)) * bytesPerPixel, strip, above, below,
                place.weight);
    }
}

} // namespace

bool upscalePlushImage(PlushImage& image, float factor) {
    if (!image.pixels || image.width < 1 || image.height < 1 || !(factor > 1.0F)) return true;
    const float wantedWidth = std::trunc(factor * static_cast<float>(image.width));
    const float wantedHeight = std::trunc(factor * static_cast<float>(image.height));
    constexpr auto mostPixels = static_cast<float>(maximumImageBytes / bytesPerPixel);
    if (!(wantedWidth <= mostPixels) || !(wantedHeight <= mostPixels)) return false;
    const auto width = static_cast<int>(wantedWidth);
    const auto height = static_cast<int>(wantedHeight);
    if (!imageSizeAllowed(width, height)) return false;

    const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    auto enlarged = std::make_unique_for_overwrite<PixelByte[]>(pixels * bytesPerPixel);
    splitRows(height, std::min(height, AllowedThreads), RowSplit::Even, [&](RowRange rows) {
        forEachStrip(width, [&](int first, int columns) {
            const Strip strip(first, columns, [&](int x) { return between(x, factor, image.width); });
            drawStrip(enlarged.get(), width, image, strip, factor, rows);
        });
    });
    delete[] image.pixels;
    image.pixels = enlarged.release();
    image.width = width;
    image.height = height;
    return true;
}
