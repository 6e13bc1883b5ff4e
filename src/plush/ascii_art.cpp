// An image as text, for terminals.

#include "plush/ascii_art.h"

#include "plush/colour_grading.h"
#include "plush/pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::string_view ramp = " .`\",;li~_?]}1(|/fjxuczYJCQOmwpbka*MW8B$"; // from dark to bright
constexpr int lastShade = 39;
static_assert(ramp.size() == lastShade + 1);

constexpr double cellHeight = 1.5; // where its width is 1
constexpr int channelMaximum = 255;
constexpr int channelCount = 3;

char shadeOf(const PixelByte* pixel) {
    const ColourGrading& grading = colourGrading;
    const auto r = static_cast<float>(pixel[0]);
    const auto g = static_cast<float>(pixel[1]);
    const auto b = static_cast<float>(pixel[2]);
    const float luminance =
        grading.red1 * r * grading.red2 + grading.green1 * g * grading.green2 + grading.blue1 * b * grading.blue2;
    const float shade = luminance / channelCount * lastShade / channelMaximum + 0.5F;
    return ramp[static_cast<std::size_t>(shade > 0.0F ? std::min(shade, static_cast<float>(lastShade)) : 0.0F)];
}

/// One direction of the grid: where the picture lies in it.
struct Fit {
    double offset = 0.0; // of the picture's edge
    double drawn = 0.0;  // the picture's length
    double scale = 0.0;  // grid units for each pixel
    int size = 0;        // the image's side

    /// The pixel at a place of the grid; -1 outside the picture.
    int pixelAtPlace(double place) const {
        if (place < offset || place > offset + drawn) return -1;
        return static_cast<int>(std::round(std::clamp((place - offset) / scale, 0.0, static_cast<double>(size - 1))));
    }
};

} // namespace

std::optional<std::string> asciiArt(const PlushImage* image, int columns, int rows) {
    if (!image || !image->pixels || image->width < 1 || image->height < 1 || columns < 1 || rows < 1) return {};
    const double virtualHeight = rows * cellHeight;
    const double scale = std::min(static_cast<double>(columns) / image->width, virtualHeight / image->height);
    const auto fit = [scale](double room, int size) {
        const double drawn = scale * size;
        return Fit{(room - drawn) * 0.5, drawn, scale, size};
    };
    const Fit across = fit(columns, image->width);
    const Fit down = fit(virtualHeight, image->height);

    std::string text;
    text.reserve((static_cast<std::size_t>(columns) + 1) * static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        const int y = down.pixelAtPlace(row * cellHeight + cellHeight / 2);
        for (int column = 0; column < columns; ++column) {
            const int x = y < 0 ? -1 : across.pixelAtPlace(column + 0.5);
            text += x < 0 ? ' ' : shadeOf(getPixel(image, x, y));
        }
        text += '\n';
    }
    return text;
}

void printAsciiArt(const PlushImage* image, int columns, int rows) {
    if (const std::optional<std::string> text = asciiArt(image, columns, rows)) {
        std::fwrite(text->data(), 1, text->size(), stdout);
    } else {
        std::fputs("Invalid input parameters.\n", stderr);
    }
}
