// Cropping and mirroring an image, and giving it a reflection map.

#include "plush/reshape.h"

#include "plush/pixels.h"
#include "plush/rows.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

namespace {

void reverseRow(PixelByte* row, int width) {
    PixelByte* left = row;
    PixelByte* right = row + (static_cast<std::size_t>(width) - 1) * bytesPerPixel;
    for (; left < right; left += bytesPerPixel, right -= bytesPerPixel) {
        std::uint32_t first;
        std::uint32_t last;
        std::memcpy(&first, left, bytesPerPixel);
        std::memcpy(&last, right, bytesPerPixel);
        std::memcpy(left, &last, bytesPerPixel);
        std::memcpy(right, &first, bytesPerPixel);
    }
}

} // namespace

void trimPlushImage(PlushImage& image, int width, int height) {
    if (!image.pixels || width < 1 || height < 1 || width > image.width || height > image.height) return;
    if (width == image.width && height == image.height) return;
    const std::size_t rowBytes = static_cast<std::size_t>(width) * bytesPerPixel;
    auto trimmed = std::make_unique_for_overwrite<PixelByte[]>(rowBytes * static_cast<std::size_t>(height));
    splitRows(height, std::min(height, AllowedThreads), RowSplit::Even, [&](RowRange rows) {
        for (int row = rows.first; row < rows.last; ++row) {
            std::memcpy(trimmed.get() + rowBytes * static_cast<std::size_t>(row), pixelAt(image, 0, row), rowBytes);
        }
    });
    delete[] image.pixels;
    image.pixels = trimmed.release();
    image.width = width;
    image.height = height;
}

PlushImage& mirrorPlushImage(PlushImage& image, Mirror mirror) {
    if (!image.pixels || image.width < 1 || image.height < 1) return image;
    if (mirror == Mirror::Columns) {
        for (int row = 0; row < image.height; ++row) reverseRow(pixelAt(image, 0, row), image.width);
        return image;
    }
    const std::size_t rowBytes = static_cast<std::size_t>(image.width) * bytesPerPixel;
    for (int row = 0; row < image.height / 2; ++row) {
        PixelByte* upper = pixelAt(image, 0, row);
        std::swap_ranges(upper, upper + rowBytes, pixelAt(image, 0, image.height - 1 - row));
    }
    return image;
}

void insertReflection(PlushImage& image, const PlushImage& map) {
    const std::size_t size = static_cast<std::size_t>(map.width) * static_cast<std::size_t>(map.height) * bytesPerPixel;
    auto copy = std::make_unique_for_overwrite<PixelByte[]>(size);
    std::memcpy(copy.get(), map.pixels, size);
    delete[] image.reflectPixels;
    image.reflectPixels = copy.release();
    image.reflectWidth = map.width;
    image.reflectHeight = map.height;
}
