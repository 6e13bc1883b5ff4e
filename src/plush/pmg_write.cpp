// Writing an image with its reflection map. The file is built in memory, so that an image which cannot be written
// leaves no file behind.

#include "plush/byte_writer.h"
#include "plush/pmg.h"
#include "plush/runtime_file.h"

#include <new>

namespace {

std::size_t blockSize(std::int32_t width, std::int32_t height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel;
}

/// Whether a size and a block of pixels go together.
bool isWritable(std::int32_t width, std::int32_t height, const PixelByte* pixels) {
    if (width < 0 || height < 0) return false;
    return width == 0 || height == 0 || pixels != nullptr;
}

void putBlock(ByteWriter& file, std::int32_t width, std::int32_t height, const PixelByte* pixels) {
    file.u64le(static_cast<std::uint64_t>(width));
    file.u64le(static_cast<std::uint64_t>(height));
    if (const std::size_t size = blockSize(width, height); size > 0) file.bytes({pixels, size});
}

} // namespace

bool hasPMGExtension(std::string_view path) { return path.ends_with(".pmg"); }

bool writePMG(const PlushImage& image, std::vector<std::uint8_t>& bytes) {
    constexpr std::size_t fieldsSize = 4 * sizeof(std::uint64_t);
    if (!isWritable(image.width, image.height, image.pixels)) return false;
    if (!isWritable(image.reflectWidth, image.reflectHeight, image.reflectPixels)) return false;
    ByteWriter file;
    file.reserve(fieldsSize + blockSize(image.width, image.height) +
                 blockSize(image.reflectWidth, image.reflectHeight));
    putBlock(file, image.width, image.height, image.pixels);
    putBlock(file, image.reflectWidth, image.reflectHeight, image.reflectPixels);
    bytes = file.take();
    return true;
}

bool savePlushImage(const PlushImage* image, const std::string& path) {
    if (image == nullptr || !hasPMGExtension(path)) return false;
    try {
        std::vector<std::uint8_t> bytes;
        return writePMG(*image, bytes) && writeRuntimeFile(path, bytes);
    } catch (const std::bad_alloc&) {
        return false;
    }
}
