// Drawing an image on a quadrilateral.
//
// Each output pixel asks both triangles where it lies in them, in single precision and in the order of the formulas,
// four pixels at a time. Whether a pixel just at an edge belongs to a triangle depends on every rounding, so nothing is
// worked out incrementally.
//
// What can be left out is asking at all. As long as every coordinate is small enough that the products of distances are
// exact, a pixel more than one pixel outside the corners' bounding box is never accepted: two of its three weights have
// their true signs, and the third is wrong by far less than a pixel's worth. Only that box is walked then. With larger
// coordinates roundings may accept pixels anywhere, and the whole output is walked.

#include "plush/skew.h"

#include "plush/image_copy.h"
#include "plush/pixels.h"
#include "plush/rows.h"
#include "plush/wide_vectors.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>

namespace {

constexpr float leastArea = 1e-5F;                  // of a triangle's doubled area; less is none
constexpr std::int64_t longestExactDistance = 4095; // pixels; products of two such distances are exact

/// A corner as numbers.
struct Point {
    float x = 0.0F;
    float y = 0.0F;
};

/// Twice the signed area.
float doubledArea(Point p, Point q, Point b) { return (q.x - p.x) * (b.y - p.y) - (b.x - p.x) * (q.y - p.y); }

/// One half of the quadrilateral: two corners and the left bottom one.
struct Triangle {
    Point p;
    Point q;
    Point b;
    float inverse = 0.0F; // of the doubled area; 0 for a triangle that has none

    Triangle(Point first, Point second, Point bottom) : p(first), q(second), b(bottom) {
        const float area = doubledArea(p, q, b);
        if (std::abs(area) >= leastArea) inverse = 1.0F / area;
    }
};

/// The weights of four pixels in a triangle, and which of them are inside: -1 in their lanes, else 0.
struct Weights {
    Floats4 u = {};    // of q
    Floats4 t = {};    // of p
    Floats4 rest = {}; // of b
    Ints4 inside = {};
};

Weights weightsAt(const Triangle& triangle, Floats4 x, float y) {
    const auto& [p, q, b, inverse] = triangle;
    Weights weights;
    if (inverse == 0.0F) return weights;
    weights.u = inverse * ((x - p.x) * (b.y - p.y) - (y - p.y) * (b.x - p.x));
    weights.t = inverse * ((q.x - x) * (b.y - y) - (b.x - x) * (q.y - y));
    weights.rest = 1.0F - weights.t - weights.u;
    weights.inside = (weights.u >= 0.0F) & (weights.t >= 0.0F) & (weights.rest >= 0.0F);
    return weights;
}

bool any(Ints4 lanes) {
    std::uint64_t halves[2];
    std::memcpy(halves, &lanes, sizeof halves);
    return (halves[0] | halves[1]) != 0;
}

/// The nearest pixel for a share of the way along a side of the image; lanes that are not `inside` give 0.
Ints4 nearest(Floats4 share, float last, Ints4 inside) {
    const auto position = reinterpret_cast<Floats4>(reinterpret_cast<Ints4>(share * last) & inside);
    return roundedPositive(position);
}

class Warp {
public:
    Warp(const Corners& corners, const PlushImage& input, PlushImage& output)
        : upper_(point(corners.leftTop), point(corners.rightTop), point(corners.leftBottom)),
          lower_(point(corners.rightTop), point(corners.rightBottom), point(corners.leftBottom)), input_(input),
          output_(output) {}

    bool isDegenerate() const { return upper_.inverse == 0.0F && lower_.inverse == 0.0F; }

    /// Draws the columns from `left` up to `right` of some rows.
    void processRows(int first, int last, int left, int right) const {
        for (int y = first; y < last; ++y) {
            for (int x = left; x < right; x += pixelsAtOnce) drawFour(x, y, std::min(right - x, pixelsAtOnce));
        }
    }

private:
    static Point point(Corner corner) { return {static_cast<float>(corner.x), static_cast<float>(corner.y)}; }

    void drawFour(int x, int y, int count) const {
        const Ints4 columns = {x, x + 1, x + 2, x + 3};
        const auto px = __builtin_convertvector(columns, Floats4);
        const auto py = static_cast<float>(y);
        const auto lastColumn = static_cast<float>(input_.width - 1);
        const auto lastRow = static_cast<float>(input_.height - 1);

        const Weights upper = weightsAt(upper_, px, py);
        Ints4 inside = upper.inside;
        Ints4 column = {};
        Ints4 row = {};
        if (any(inside)) {
            column = nearest(upper.u, lastColumn, inside);
            row = nearest(upper.rest, lastRow, inside);
        }
        if (any(~inside)) {
            const Weights lower = weightsAt(lower_, px, py);
            const Ints4 added = lower.inside & ~inside;
            if (any(added)) {
                column |= nearest(lower.t + lower.u, lastColumn, added);
                row |= nearest(lower.u + lower.rest, lastRow, added);
                inside |= added;
            }
        }
        if (!any(inside)) return;
        PixelByte* target = pixelAt(output_, x, y);
        for (int at = 0; at < count; ++at, target += bytesPerPixel) {
            if (inside[at] == 0) continue;
            const int sourceX = std::min(column[at], input_.width - 1);
            const int sourceY = std::min(row[at], input_.height - 1);
            std::memcpy(target, pixelAt(input_, sourceX, sourceY), bytesPerPixel);
        }
    }

    Triangle upper_;
    Triangle lower_;
    const PlushImage& input_;
    PlushImage& output_;
};

/// The rows or columns of the output to walk.
struct Range {
    int first = 0;
    int last = 0;
};

struct Box {
    Range columns;
    Range rows;
};

Box boxToWalk(const Corners& corners, const PlushImage& output) {
    const auto [leftTop, rightTop, leftBottom, rightBottom] = corners;
    const auto [left, right] = std::minmax({leftTop.x, rightTop.x, leftBottom.x, rightBottom.x});
    const auto [top, bottom] = std::minmax({leftTop.y, rightTop.y, leftBottom.y, rightBottom.y});
    const auto distance = [](int least, int most, int size) {
        return std::int64_t{std::max(most, size - 1)} - std::min(least, 0);
    };
    if (std::max(distance(left, right, output.width), distance(top, bottom, output.height)) > longestExactDistance) {
        return {{0, output.width}, {0, output.height}};
    }
    return {{std::max(left - 1, 0), std::min(right + 2, output.width)},
            {std::max(top - 1, 0), std::min(bottom + 2, output.height)}};
}

bool hasPixels(const PlushImage& image) { return image.pixels && image.width >= 1 && image.height >= 1; }

} // namespace

void skewImage(const Corners& corners, const PlushImage& input, PlushImage& output) {
    if (!hasPixels(input) || !hasPixels(output)) return;
    if (input.pixels == output.pixels) {
        const ImageCopy copy(input);
        skewImage(corners, copy.image(), output);
        return;
    }
    const Warp warp(corners, input, output);
    if (warp.isDegenerate()) return;
    const auto [columns, rows] = boxToWalk(corners, output);
    const int count = rows.last - rows.first;
    splitRows(count, std::min(count, AllowedThreads), RowSplit::Ceiling,
              [&, top = rows.first, range = columns](RowRange some) {
                  warp.processRows(top + some.first, top + some.last, range.first, range.last);
              });
}
