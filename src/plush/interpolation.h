#pragma once

// What the bilinear filters share: where a pixel lies between its neighbours, and upright strips of an image.
//
// The filters keep a few rows of numbers, four bytes for every channel, while they go down the image. They do so in
// strips that are narrow enough for these rows to stay in the nearest cache.

#include "plush/wide_vectors.h"

#include <algorithm>
#include <utility>
#include <vector>

/// Where a row or column lies between two others.
struct Between {
    int lower = 0;
    int upper = 0;
    float weight = 0.0F; // of the upper one
};

/// A run of columns and their neighbours, padded to whole vectors with the last one.
struct Strip {
    static constexpr int mostColumns = 256; // a multiple of pixelsAtOnce

    int first = 0;
    int count = 0;
    std::vector<int> lower;
    std::vector<int> upper;
    std::vector<float> weight;

    /// @param placeOf  tells of a column, from the left of the image, what it lies between
    template <typename PlaceOf>
    Strip(int firstColumn, int columns, PlaceOf placeOf) : first(firstColumn), count(columns) {
        const int padded = (columns + pixelsAtOnce - 1) / pixelsAtOnce * pixelsAtOnce;
        for (int at = 0; at < padded; ++at) {
            const Between place = placeOf(first + std::min(at, count - 1));
            lower.push_back(place.lower);
            upper.push_back(place.upper);
            weight.push_back(place.weight);
        }
    }

    std::size_t groups() const { return lower.size() / pixelsAtOnce; }

    /// How many pixels of a group are not padding.
    std::size_t pixelsInGroup(std::size_t group) const {
        return std::min<std::size_t>(static_cast<std::size_t>(count) - group * pixelsAtOnce, pixelsAtOnce);
    }
};

/// Calls `work` with the first column and the number of columns of each strip of an image.
template <typename Work> void forEachStrip(int width, Work work) {
    for (int first = 0; first < width; first += Strip::mostColumns) {
        work(first, std::min(width - first, Strip::mostColumns));
    }
}

/// Calls `take` for each group of a strip with its number and, for a row of the image, the pixels to the left and right
/// of its columns and the weight of the right ones.
template <typename Take> void forEachGroup(const PlushImage& image, int row, const Strip& strip, Take take) {
    const PixelByte* pixels =
        image.pixels + static_cast<std::size_t>(row) * static_cast<std::size_t>(image.width) * bytesPerPixel;
    for (std::size_t group = 0; group < strip.groups(); ++group) {
        const std::size_t at = group * pixelsAtOnce;
        take(group, gatheredPixels(pixels, &strip.lower[at]), gatheredPixels(pixels, &strip.upper[at]),
             loadFloats4(&strip.weight[at]));
    }
}

/// Brings `line` to a row of the image. If `next` is there already, as it is when the way down has reached it, the two
/// change places.
template <typename Line>
void prepareOrTake(Line& line, Line& next, const PlushImage& image, int row, const Strip& strip) {
    if (line.row() == row) return;
    if (next.row() == row)
        std::swap(line, next);
    else
        line.prepare(image, row, strip);
}
