// Telling picture files apart, and loading them.

#include "plush/png_load.h"

#include "plush/byte_reader.h"
#include "plush/png.h"
#include "plush/png_decode.h"

#include <algorithm>
#include <fstream>
#include <new>
#include <string_view>

namespace wm::png {

namespace {

constexpr std::string_view bmpMagic = "BM";
constexpr std::string_view xcfMagic = "gimp xcf ";
constexpr std::size_t leastXcfSize = 14;
constexpr std::size_t tgaHeaderSize = 18;

enum TgaType : std::uint8_t { tgaMapped = 1, tgaColour = 2, tgaGrey = 3 };
constexpr std::uint8_t tgaRunLength = 8; // added to a type

bool startsWith(std::span<const std::uint8_t> data, std::string_view magic) {
    return data.size() >= magic.size() && std::ranges::equal(data.first(magic.size()), magic, {}, {},
                                                             [](char c) { return static_cast<std::uint8_t>(c); });
}

bool isColourDepth(unsigned bits) { return bits == 15 || bits == 16 || bits == 24 || bits == 32; }

} // namespace

bool looks_like_tga(std::span<const std::uint8_t> data) {
    if (data.size() < tgaHeaderSize) return false;
    ByteReader reader(data);
    reader.skip(1); // length of the free text behind the header
    const unsigned mapKind = reader.u8();
    const unsigned type = reader.u8();
    reader.skip(2); // first colour of the map
    const unsigned mapLength = reader.u16le();
    const unsigned mapDepth = reader.u8();
    reader.skip(4); // position on a screen
    const unsigned width = reader.u16le();
    const unsigned height = reader.u16le();
    const unsigned depth = reader.u8();

    if (width == 0 || height == 0 || mapKind > 1) return false;
    const bool hasMap = mapKind == 1;
    if (hasMap && (mapLength == 0 || !isColourDepth(mapDepth))) return false;
    switch (type & ~unsigned{tgaRunLength}) {
    case tgaMapped: return hasMap && (depth == 8 || depth == 15 || depth == 16);
    case tgaColour: return isColourDepth(depth);
    case tgaGrey: return depth == 8 || depth == 15 || depth == 16;
    default: return false;
    }
}

int detect_format(const std::uint8_t* data, std::size_t size) {
    if (data == nullptr || size == 0) return unknownFormat;
    const std::span<const std::uint8_t> bytes(data, size);
    if (size >= pngSignature.size() && std::ranges::equal(bytes.first(pngSignature.size()), pngSignature))
        return pngFormat;
    if (startsWith(bytes, bmpMagic)) return bmpFormat;
    if (size >= leastXcfSize && startsWith(bytes, xcfMagic)) return xcfFormat;
    return looks_like_tga(bytes) ? tgaFormat : unknownFormat;
}

bool open_png(std::span<const std::uint8_t> data, ParsedPng& png) { return parse_png(data, png) && is_decodable(png); }

bool load_memory(const std::uint8_t* data, std::size_t size, Image& image) {
    if (detect_format(data, size) != pngFormat) return false;
    image = {};
    try {
        ParsedPng png;
        if (!open_png({data, size}, png)) return false;
        image.width = static_cast<std::int32_t>(png.header.width);
        image.height = static_cast<std::int32_t>(png.header.height);
        image.pixels.resize(std::size_t{png.header.width} * png.header.height * rgbaSize);
        return decode_png(png, image.pixels.data());
    } catch (const std::bad_alloc&) {
        return false; // a picture within the limit can still be too large for the machine
    }
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
