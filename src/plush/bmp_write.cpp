// The BMP writer: 32 bits a pixel, with masks and a header that knows about alpha, rows from the top.

#include "plush/bgra.h"
#include "plush/picture_block.h"
#include "plush/runtime_file.h"

#include <limits>
#include <new>

namespace wm::png {

namespace {

constexpr std::uint32_t fileHeaderSize = 14;
constexpr std::uint32_t infoHeaderSize = 108;
constexpr std::uint32_t pixelOffset = fileHeaderSize + infoHeaderSize;
constexpr std::uint32_t bitFields = 3;
constexpr std::uint32_t resolution = 2835; // pixels per metre, which is 72 per inch
constexpr std::size_t endPointsAndGamma = 48;

void putHeaders(ByteWriter& file, std::int32_t width, std::int32_t height, std::uint32_t imageSize) {
    file.text("BM");
    file.u32le(pixelOffset + imageSize);
    file.zeros(4);
    file.u32le(pixelOffset);

    file.u32le(infoHeaderSize);
    file.u32le(static_cast<std::uint32_t>(width));
    file.u32le(static_cast<std::uint32_t>(-height)); // rows from the top
    file.u16le(1);                                   // planes
    file.u16le(32);                                  // bits of a pixel
    file.u32le(bitFields);
    file.u32le(imageSize);
    file.u32le(resolution);
    file.u32le(resolution);
    file.zeros(8); // no palette
    file.u32le(0x00FF0000);
    file.u32le(0x0000FF00);
    file.u32le(0x000000FF);
    file.u32le(0xFF000000);
    file.text("BGRs"); // the colour space of screens, a number written from its low byte up
    file.zeros(endPointsAndGamma);
}

} // namespace

bool save_bmp_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    constexpr std::uint64_t longestFile = std::numeric_limits<std::uint32_t>::max();
    if (pixels == nullptr || width < 1 || height < 1) return false;
    const std::uint64_t count = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
    if (count > (longestFile - pixelOffset) / rgbaSize) return false;
    try {
        ByteWriter file;
        file.reserve(pixelOffset + static_cast<std::size_t>(count) * rgbaSize);
        putHeaders(file, width, height, static_cast<std::uint32_t>(count * rgbaSize));
        put_bgra(file, pixels, static_cast<std::size_t>(count));
        return writeRuntimeFile(path, file.take());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace wm::png
