// Telling picture files apart, and loading them.

#include "plush/png_load.h"

#include "plush/bmp_read.h"
#include "plush/png.h"
#include "plush/png_decode.h"
#include "plush/tga_read.h"
#include "plush/xcf_format.h"
#include "plush/xcf_read.h"

#include <algorithm>
#include <fstream>
#include <new>
#include <string_view>

namespace wm::png {

namespace {

constexpr std::string_view bmpMagic = "BM";
constexpr std::size_t leastXcfSize = 14;

bool startsWith(std::span<const std::uint8_t> data, std::string_view magic) {
    return data.size() >= magic.size() && std::ranges::equal(data.first(magic.size()), magic, {}, {},
                                                             [](char c) { return static_cast<std::uint8_t>(c); });
}

} // namespace

int detect_format(const std::uint8_t* data, std::size_t size) {
    if (data == nullptr || size == 0) return unknownFormat;
    const std::span<const std::uint8_t> bytes(data, size);
    if (size >= pngSignature.size() && std::ranges::equal(bytes.first(pngSignature.size()), pngSignature))
        return pngFormat;
    if (startsWith(bytes, bmpMagic)) return bmpFormat;
    if (size >= leastXcfSize && startsWith(bytes, xcf::magic)) return xcfFormat;
    return looks_like_tga(bytes) ? tgaFormat : unknownFormat;
}

bool open_png(std::span<const std::uint8_t> data, ParsedPng& png) { return parse_png(data, png) && is_decodable(png); }

bool decode_picture(std::span<const std::uint8_t> data, const PixelAllocator& allocate) {
    try {
        switch (detect_format(data.data(), data.size())) {
        case pngFormat: {
            ParsedPng png;
            if (!open_png(data, png)) return false;
            return decode_png(png, allocate(static_cast<std::int32_t>(png.header.width),
                                            static_cast<std::int32_t>(png.header.height)));
        }
        case bmpFormat: return decode_bmp(data, allocate);
        case tgaFormat: return decode_tga(data, allocate);
        case xcfFormat: return decode_xcf(data, allocate);
        default: return false;
        }
    } catch (const std::bad_alloc&) {
        return false; // a picture within the limit can still be too large for the machine
    }
}

bool load_memory(const std::uint8_t* data, std::size_t size, Image& image) {
    image = {};
    return decode_picture({data, data == nullptr ? 0 : size}, [&image](std::int32_t width, std::int32_t height) {
        image.width = width;
        image.height = height;
        image.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * rgbaSize);
        return image.pixels.data();
    });
}

bool load_file(const std::string& path, Image& image) {
    FileBytes bytes;
    return read_picture_file(path, bytes) && load_memory(bytes.data.get(), bytes.size, image);
}

bool read_picture_file(const std::string& path, FileBytes& bytes) {
    std::filebuf file;
    if (file.open(path, std::ios::in | std::ios::binary) == nullptr) return false;
    const std::streamoff end = file.pubseekoff(0, std::ios::end, std::ios::in);
    if (end < 0 || static_cast<std::uint64_t>(end) > memoryLimit || file.pubseekpos(0, std::ios::in) != 0) return false;
    bytes.size = static_cast<std::size_t>(end);
    bytes.data.reset(new (std::nothrow) std::uint8_t[bytes.size]);
    return bytes.data != nullptr && file.sgetn(reinterpret_cast<char*>(bytes.data.get()), end) == end;
}

} // namespace wm::png
