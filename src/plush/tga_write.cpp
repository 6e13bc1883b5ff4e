// The TGA writer: 32 bits a pixel, uncompressed, rows from the top, and the footer of the format's second version.

#include "plush/bgra.h"
#include "plush/runtime_file.h"

#include <limits>
#include <new>

namespace wm::png {

namespace {

constexpr std::size_t headerSize = 18;
constexpr std::size_t footerSize = 26;
constexpr std::uint8_t trueColour = 2;
constexpr std::uint8_t eightAlphaBitsFromTop = 0x28;

void putHeader(ByteWriter& file, std::int32_t width, std::int32_t height) {
    file.zeros(2); // no free text, no colour map
    file.u8(trueColour);
    file.zeros(9); // nothing of a map; the corner of a screen
    file.u16le(static_cast<std::uint16_t>(width));
    file.u16le(static_cast<std::uint16_t>(height));
    file.u8(32); // bits of a pixel
    file.u8(eightAlphaBitsFromTop);
}

void putFooter(ByteWriter& file) {
    file.zeros(8); // nothing between the pixels and this
    file.text("TRUEVISION-XFILE.");
    file.zeros(1);
}

} // namespace

bool save_tga_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    constexpr std::int32_t longestSide = std::numeric_limits<std::uint16_t>::max();
    if (pixels == nullptr || width < 1 || height < 1 || width > longestSide || height > longestSide) return false;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    try {
        ByteWriter file;
        file.reserve(headerSize + count * rgbaSize + footerSize);
        putHeader(file, width, height);
        put_bgra(file, pixels, count);
        putFooter(file);
        return writeRuntimeFile(path, file.take());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace wm::png
