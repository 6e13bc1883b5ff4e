// Drawing one image on another.
//
// There are three ways, each a set-up and a loop over rows. Whichever it is, a row ends as a run of source pixels
// that lie side by side, and one function copies or blends that run. At its own size the run is a piece of the source
// row. Scaled, it is picked out of the source row by a map of columns that is made once for the whole blit, and kept
// while the rows that follow show the same source row. Turned, source positions run along a slanted line: they rise
// or fall steadily, so those inside the image are one run again.
//
// All geometry is in single precision, in the order of the formulas.

#include "plush/blit.h"

#include "plush/image_copy.h"
#include "plush/pixels.h"
#include "plush/rows.h"
#include "plush/runs.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr std::int64_t threadingThreshold = 180000; // pixels; below this, starting threads costs more than it saves
constexpr float fullTurn = 360.0F;                  // degrees
constexpr float leastRotation = 1e-5F;              // degrees; less than this is none
constexpr float mostRotation = 359.999F;            // degrees; more than this is none
constexpr float radiansPerDegree = 0.017453292F;
constexpr float largestIndex = 1e9F; // more than any side of an image, and safe to turn into an integer

int workersFor(int rows, std::int64_t pixels) {
    return std::min(rows, pixels < threadingThreshold ? 1 : AllowedThreads);
}

/// A number held to a range and without its fraction; both limits are far inside what an integer holds.
int clampToInt(float number, int least, int most) {
    if (!(number > static_cast<float>(least))) return least;
    if (number >= static_cast<float>(most)) return most;
    return static_cast<int>(number);
}

/// The number rounded half away from zero; it must be above -0.5 and small enough for an integer.
int roundPositive(float number) {
    const int whole = static_cast<int>(number); // also 0 for what lies between -0.5 and 0
    return whole + (number - static_cast<float>(whole) >= 0.5F ? 1 : 0);
}

/// The number rounded half away from zero if that lies between 0 and `size` - 1, else -1.
int nearestIndex(float number, int size) {
    if (!(number > -0.5F && number < largestIndex)) return -1;
    const int nearest = roundPositive(number);
    return nearest < size ? nearest : -1;
}

/// Four columns from `first` on as numbers; behind the one before `last`, that one again.
Floats4 columnsFrom(int first, int last) {
    const Ints4 columns = first + Ints4{0, 1, 2, 3};
    const Ints4 past = columns >= last;
    return __builtin_convertvector((columns & ~past) | ((last - 1) & past), Floats4);
}

/// Target pixels: columns from `left`, rows from `top`, up to but not including `right` and `bottom`.
struct Box {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int columns() const { return std::max(right - left, 0); }
    int rows() const { return std::max(bottom - top, 0); }
    std::int64_t pixels() const { return std::int64_t{columns()} * rows(); }
};

void blitAtOwnSize(PlushImage& target, const PlushImage& image, int x, int y, Blend blend) {
    const int firstColumn = std::max(-x, 0);
    const auto columns = static_cast<std::size_t>(std::min(image.width, target.width - x) - firstColumn);
    const std::int64_t pixels = std::int64_t{image.width} * image.height;
    // A copy waits for the memory, which more threads don't make faster.
    const int workers = blend == Blend::Over ? workersFor(image.height, pixels) : 1;
    // Rows without anything between them are one long run.
    const bool rowsJoin = image.width == target.width && columns == static_cast<std::size_t>(image.width);
    splitRows(image.height, workers, RowSplit::Ceiling, [&](RowRange rows) {
        const int first = std::max(rows.first, -y);
        const int last = std::min(rows.last, target.height - y);
        const int step = rowsJoin ? std::max(last - first, 1) : 1;
        const std::size_t count = columns * static_cast<std::size_t>(step);
        for (int row = first; row < last; row += step) {
            drawRun(pixelAt(target, x + firstColumn, y + row), pixelAt(image, firstColumn, row), count, blend);
        }
    });
}

void blitScaled(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale) {
    const float scaledWidth = scale * static_cast<float>(image.width);
    const float scaledHeight = scale * static_cast<float>(image.height);
    Box box;
    box.left = std::max(x, 0);
    box.top = std::max(y, 0);
    box.right = clampToInt(std::ceil(static_cast<float>(x) + scaledWidth), 0, target.width);
    box.bottom = clampToInt(std::ceil(static_cast<float>(y) + scaledHeight), 0, target.height);
    if (box.pixels() == 0) return;

    std::vector<int> sourceColumns; // of each target column from the left; those beyond the image are left out
    sourceColumns.reserve(static_cast<std::size_t>(box.columns()));
    for (int px = box.left; px < box.right; ++px) {
        const int column = nearestIndex(static_cast<float>(px - x) / scale, image.width);
        if (column < 0) break;
        sourceColumns.push_back(column);
    }
    if (sourceColumns.empty()) return;

    splitRows(box.rows(), workersFor(box.rows(), box.pixels()), RowSplit::Ceiling, [&](RowRange rows) {
        PickedRows picked(sourceColumns, blend);
        for (int py = box.top + rows.first; py < box.top + rows.last; ++py) {
            const int row = nearestIndex(static_cast<float>(py - y) / scale, image.height);
            if (row < 0) break;
            picked.draw(pixelAt(target, box.left, py), pixelAt(image, 0, row));
        }
    });
}

/// A turned rectangle in the target.
struct Turn {
    float cx = 0.0F; // the centre, in target pixels
    float cy = 0.0F;
    float c = 1.0F; // cosine of the angle
    float s = 0.0F; // sine of the angle
};

/// The bounding box of the rectangle at (x, y) after turning it, cut to the target.
Box turnedBox(const PlushImage& target, const Turn& turn, float x, float y, float scaledWidth, float scaledHeight) {
    const float cornersX[] = {x, x + scaledWidth, x, x + scaledWidth};
    const float cornersY[] = {y, y, y + scaledHeight, y + scaledHeight};
    float turnedX[4];
    float turnedY[4];
    for (int corner = 0; corner < 4; ++corner) {
        const float dx = cornersX[corner] - turn.cx;
        const float dy = cornersY[corner] - turn.cy;
        turnedX[corner] = turn.cx + (dx * turn.c - dy * turn.s);
        turnedY[corner] = turn.cy + (dx * turn.s + dy * turn.c);
    }
    const auto [leastX, mostX] = std::minmax_element(std::begin(turnedX), std::end(turnedX));
    const auto [leastY, mostY] = std::minmax_element(std::begin(turnedY), std::end(turnedY));
    Box box;
    box.left = clampToInt(std::floor(*leastX), 0, target.width);
    box.top = clampToInt(std::floor(*leastY), 0, target.height);
    box.right = clampToInt(std::ceil(*mostX), 0, target.width);
    box.bottom = clampToInt(std::ceil(*mostY), 0, target.height);
    return box;
}

/// One coordinate of the source along a row of the target. It rises or falls with the target column all the way,
/// rounding included, since every single operation does, and never is no number, since the centre is finite.
struct SourceLine {
    float factor = 0.0F; // by which the distance from the centre is multiplied
    float addend = 0.0F; // what the row's own distance from the centre adds
    float scale = 1.0F;
    float half = 0.0F; // of the source's side
    float centre = 0.0F;
    int size = 0; // the source's side

    float position(int px) const {
        const float dx = static_cast<float>(px) - centre;
        return (dx * factor + addend) / scale + half;
    }
    Floats4 positions(Floats4 columns) const { return ((columns - centre) * factor + addend) / scale + half; }
    bool isInside(int px) const { return nearestIndex(position(px), size) >= 0; }
    bool isBelow(int px) const { return !(position(px) > -0.5F); }
    bool rises() const { return (factor < 0.0F) == (scale < 0.0F); }

    /// Shortens the columns from `first` up to `last` to those whose source position is inside.
    void cut(int& first, int& last) const {
        const auto beforeInside = [this](int px) { return isBelow(px) == rises() && !isInside(px); };
        first = firstColumn(first, last, [&](int px) { return !beforeInside(px); });
        last = firstColumn(first, last, [this](int px) { return !isInside(px); });
    }

private:
    /// The first column of a range for which `reached` holds, given that it holds for all behind it.
    template <typename Reached> static int firstColumn(int first, int last, const Reached& reached) {
        while (first < last) {
            const int middle = first + (last - first) / 2;
            if (reached(middle)) {
                last = middle;
            } else {
                first = middle + 1;
            }
        }
        return first;
    }
};

void blitTurned(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale, float rotation) {
    const float scaledWidth = scale * static_cast<float>(image.width);
    const float scaledHeight = scale * static_cast<float>(image.height);
    const float angle = rotation * radiansPerDegree;
    Turn turn;
    turn.cx = static_cast<float>(x) + scaledWidth * 0.5F;
    turn.cy = static_cast<float>(y) + scaledHeight * 0.5F;
    // Through double, since single-precision cosines differ from one C library to the next in the last bit.
    turn.c = static_cast<float>(std::cos(static_cast<double>(angle)));
    turn.s = static_cast<float>(std::sin(static_cast<double>(angle)));
    if (!std::isfinite(turn.cx) || !std::isfinite(turn.cy)) return;
    const Box box = turnedBox(target, turn, static_cast<float>(x), static_cast<float>(y), scaledWidth, scaledHeight);
    const float halfWidth = static_cast<float>(image.width) * 0.5F;
    const float halfHeight = static_cast<float>(image.height) * 0.5F;

    splitRows(box.rows(), workersFor(box.rows(), box.pixels()), RowSplit::Ceiling, [&](RowRange rows) {
        std::vector<PixelByte> run(static_cast<std::size_t>(box.columns() + pixelsAtOnce) * bytesPerPixel);
        for (int py = box.top + rows.first; py < box.top + rows.last; ++py) {
            const float dy = static_cast<float>(py) - turn.cy;
            const SourceLine across{turn.c, dy * turn.s, scale, halfWidth, turn.cx, image.width};
            const SourceLine down{-turn.s, dy * turn.c, scale, halfHeight, turn.cx, image.height};
            int first = box.left;
            int last = box.right;
            across.cut(first, last);
            down.cut(first, last);
            if (first >= last) continue;

            const int count = last - first;
            for (int at = 0; at < count; at += pixelsAtOnce) {
                const Floats4 columns = columnsFrom(first + at, last);
                const Ints4 column = roundedPositive(across.positions(columns));
                const Ints4 row = roundedPositive(down.positions(columns));
                const Pixels4 pixels = gatheredPixels(image.pixels, row * image.width + column);
                std::memcpy(run.data() + static_cast<std::size_t>(at) * bytesPerPixel, &pixels, sizeof pixels);
            }
            drawRun(pixelAt(target, first, py), run.data(), static_cast<std::size_t>(count), blend);
        }
    });
}

/// Whether a rotation is so close to whole turns that it counts as none.
bool isNoRotation(float rotation) {
    float normalised = std::fmod(rotation, fullTurn);
    if (normalised < 0.0F) normalised += fullTurn;
    return normalised < leastRotation || normalised > mostRotation;
}

} // namespace

bool touches(const PlushImage& target, const PlushImage& image, int x, int y) {
    return x < target.width && y < target.height && std::int64_t{image.width} + x >= 1 &&
           std::int64_t{image.height} + y >= 1;
}

void blitImage(PlushImage& target, const PlushImage& image, int x, int y, Blend blend, float scale, float rotation) {
    if (!touches(target, image, x, y) || scale == 0.0F || !std::isfinite(scale) || !std::isfinite(rotation)) return;
    if (!target.pixels || !image.pixels) return;
    if (target.pixels == image.pixels) {
        const ImageCopy copy(image);
        blitImage(target, copy.image(), x, y, blend, scale, rotation);
        return;
    }
    const bool turned = !isNoRotation(rotation);
    if (turned) {
        blitTurned(target, image, x, y, blend, scale, rotation);
    } else if (scale == 1.0F) {
        blitAtOwnSize(target, image, x, y, blend);
    } else {
        blitScaled(target, image, x, y, blend, scale);
    }
}
