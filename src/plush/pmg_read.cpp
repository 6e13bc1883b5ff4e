// Reading an image with its reflection map. Both blocks must lie in the file before either is allocated, so no file
// can ask for more memory than it has bytes.

#include "plush/byte_reader.h"
#include "plush/pmg.h"
#include "plush/registry.h"
#include "plush/runtime_file.h"

#include <algorithm>
#include <limits>
#include <new>

namespace {

/// Fields and as many pixels as an image may have. Longer files are not even read.
constexpr std::uint64_t longestFile = 4 * sizeof(std::uint64_t) + maximumImageBytes;

/// A size and the pixels that follow it, borrowed from the file.
struct Block {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::span<const std::uint8_t> pixels;
};

/// The next block; the reader fails if it is not whole, and false says that its size is none.
bool takeBlock(ByteReader& file, Block& block) {
    constexpr std::uint64_t longestSide = std::numeric_limits<std::int32_t>::max();
    const std::uint64_t width = file.u64le();
    const std::uint64_t height = file.u64le();
    if (file.failed() || width > longestSide || height > longestSide) return false;
    const std::uint64_t pixels = width * height; // below 2^62
    if (pixels > file.remaining() / bytesPerPixel) return false;
    block.width = static_cast<std::int32_t>(width);
    block.height = static_cast<std::int32_t>(height);
    block.pixels = file.bytes(static_cast<std::size_t>(pixels) * bytesPerPixel);
    return true;
}

/// A copy that an image can own; null for no pixels.
PixelByte* copyOf(std::span<const std::uint8_t> pixels) {
    if (pixels.empty()) return nullptr;
    auto copy = std::make_unique_for_overwrite<PixelByte[]>(pixels.size());
    std::ranges::copy(pixels, copy.get());
    return copy.release();
}

} // namespace

void ImageDeleter::operator()(PlushImage* image) const {
    delete[] image->pixels;
    delete[] image->reflectPixels;
    delete image;
}

OwnedImage readPMG(std::span<const std::uint8_t> bytes) {
    ByteReader file(bytes);
    Block picture;
    Block map;
    if (!takeBlock(file, picture) || !takeBlock(file, map)) return nullptr;
    if (picture.pixels.size() + map.pixels.size() > maximumImageBytes) return nullptr;
    OwnedImage image(new PlushImage);
    image->width = picture.width;
    image->height = picture.height;
    image->reflectWidth = map.width;
    image->reflectHeight = map.height;
    image->pixels = copyOf(picture.pixels);
    image->reflectPixels = copyOf(map.pixels);
    return image;
}

PlushImage* loadPlushImage(const std::string& path) {
    if (!hasPMGExtension(path)) return nullptr;
    try {
        std::vector<std::uint8_t> bytes;
        if (!readRuntimeFile(path, bytes, longestFile)) return nullptr;
        OwnedImage image = readPMG(bytes);
        registerImage(image.get());
        return image.release();
    } catch (const std::bad_alloc&) {
        return nullptr; // an image within the limit can still be too large for the machine
    }
}
