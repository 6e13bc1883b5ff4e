// The register of live images, and the two operations at the ends of an image's life.

#include "plush/registry.h"

#include <algorithm>
#include <cstring>
#include <memory>

std::unordered_set<PlushImage*> livePlushImages;

namespace {

void freeImage(PlushImage* image) {
    delete[] image->pixels;
    delete[] image->reflectPixels;
    delete image;
}

/// Frees at exit what the scripts left alive. Stands behind the set, so that it goes first.
struct LeftOverImages {
    ~LeftOverImages() {
        for (PlushImage* image : livePlushImages) freeImage(image);
    }
} leftOverImages;

/// The number of bytes of an image whose sides are at least 1.
std::size_t imageBytes(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel;
}

} // namespace

bool imageSizeAllowed(int width, int height) {
    return imageBytes(std::max(width, 1), std::max(height, 1)) <= maximumImageBytes;
}

PlushImage* createSolidColourImage(int width, int height, PixelByte r, PixelByte g, PixelByte b, PixelByte a) {
    auto image = std::make_unique<PlushImage>();
    image->width = std::max(width, 1);
    image->height = std::max(height, 1);
    const std::size_t size = imageBytes(image->width, image->height);
    auto pixels = std::make_unique_for_overwrite<PixelByte[]>(size);

    const PixelByte colour[bytesPerPixel] = {r, g, b, a};
    if (r == g && g == b && b == a) {
        std::memset(pixels.get(), r, size);
    } else {
        for (std::size_t at = 0; at < size; at += bytesPerPixel) std::memcpy(pixels.get() + at, colour, bytesPerPixel);
    }

    livePlushImages.insert(image.get());
    image->pixels = pixels.release();
    return image.release();
}

void registerImage(PlushImage* image) {
    if (image) livePlushImages.insert(image);
}

bool isLiveImage(const PlushImage* image) { return livePlushImages.contains(const_cast<PlushImage*>(image)); }

void killImage(PlushImage* image) {
    if (livePlushImages.erase(image) != 0) freeImage(image);
}

bool cleanImage(PlushImage* image) {
    if (!image || !isLiveImage(image)) return false;
    if (image->width == 0 && image->height == 0) return true;
    if (image->width > 0 && image->height > 0 && image->pixels) return true;
    // Whoever left the image in this state may still use the block of pixels: it is given up, not freed.
    image->width = 0;
    image->height = 0;
    image->pixels = nullptr;
    return false;
}
