// The XCF writer: a picture of one layer, in tiles of run lengths.
//
// The file is the first version of the format, which every reader knows. Each structure is led to by an offset in the
// one before it. All but those of the tiles are known beforehand; these are filled in as the tiles are written.

#include "plush/byte_writer.h"
#include "plush/png.h"
#include "plush/runtime_file.h"
#include "plush/xcf_format.h"

#include <algorithm>
#include <limits>
#include <new>

namespace wm::png {

namespace {

using namespace xcf;

constexpr std::string_view version("v00\0", versionSize);
constexpr std::string_view layerName("Layer\0", 6);
constexpr std::uint64_t longestFile = std::numeric_limits<std::uint32_t>::max(); // offsets have 32 bits
constexpr std::size_t shortestRepeat = 3; // two equal bytes among others cost no more as they are

std::uint32_t offsetHere(const ByteWriter& file, std::size_t further) {
    return static_cast<std::uint32_t>(file.size() + further);
}

void putProperty(ByteWriter& file, Property kind, std::initializer_list<std::uint32_t> values) {
    file.u32be(kind);
    file.u32be(static_cast<std::uint32_t>(values.size() * sizeof(std::uint32_t)));
    for (const std::uint32_t value : values) file.u32be(value);
}

/// Everything in front of the tiles' offsets. Each pointer to the next structure leads over what is left of this one.
void putStructure(ByteWriter& file, std::uint32_t width, std::uint32_t height) {
    constexpr std::size_t pointer = sizeof(std::uint32_t);
    file.text(magic);
    file.text(version);
    file.zeros(1);
    file.u32be(width);
    file.u32be(height);
    file.u32be(rgbBase);
    file.u32be(compression);
    file.u32be(1);
    file.u8(runLengths);
    putProperty(file, endOfProperties, {});
    file.u32be(offsetHere(file, 3 * pointer)); // the layer
    file.u32be(0);                             // no more of them
    file.u32be(0);                             // and no channels

    file.u32be(width);
    file.u32be(height);
    file.u32be(rgbaLayer);
    file.u32be(static_cast<std::uint32_t>(layerName.size()));
    file.text(layerName);
    putProperty(file, opacity, {255});
    putProperty(file, visible, {1});
    putProperty(file, offsets, {0, 0});
    putProperty(file, endOfProperties, {});
    file.u32be(offsetHere(file, 2 * pointer)); // its hierarchy
    file.u32be(0);                             // no mask

    file.u32be(width);
    file.u32be(height);
    file.u32be(rgbaSize);
    file.u32be(offsetHere(file, 2 * pointer)); // its level
    file.u32be(0);                             // and no smaller ones

    file.u32be(width);
    file.u32be(height);
}

/// How many bytes from `at` on are equal.
std::size_t repeatsAt(const std::uint8_t* bytes, std::size_t at, std::size_t size) {
    std::size_t end = at + 1;
    while (end < size && bytes[end] == bytes[at]) ++end;
    return end - at;
}

void putRepeat(ByteWriter& file, std::size_t count, std::uint8_t byte) {
    if (count <= std::size_t{longestShortRepeat} + 1) {
        file.u8(static_cast<std::uint8_t>(count - 1));
    } else {
        file.u8(longRepeat);
        file.u16be(static_cast<std::uint16_t>(count));
    }
    file.u8(byte);
}

void putLiteral(ByteWriter& file, std::span<const std::uint8_t> bytes) {
    constexpr std::size_t longestShort = 127;
    if (bytes.size() <= longestShort) {
        file.u8(static_cast<std::uint8_t>(256 - bytes.size()));
    } else {
        file.u8(longLiteral);
        file.u16be(static_cast<std::uint16_t>(bytes.size()));
    }
    file.bytes(bytes);
}

/// Writes the run lengths of one channel of a tile.
void putRuns(ByteWriter& file, const std::uint8_t* bytes, std::size_t size) {
    std::size_t at = 0;
    while (at < size) {
        std::size_t repeats = 0;
        std::size_t end = at; // of the bytes in front of the next repeat
        while (end < size && (repeats = repeatsAt(bytes, end, size)) < shortestRepeat) end += repeats;
        if (end > at) putLiteral(file, {bytes + at, end - at});
        if (end < size) putRepeat(file, repeats, bytes[end]);
        at = end < size ? end + repeats : size;
    }
}

/// Writes one tile, all bytes of a channel together.
void putTile(ByteWriter& file, const std::uint8_t* corner, std::size_t rowBytes, std::size_t width,
             std::size_t height) {
    std::uint8_t plane[tileSide * tileSide];
    for (std::size_t channel = 0; channel < rgbaSize; ++channel) {
        for (std::size_t y = 0; y < height; ++y)
            for (std::size_t x = 0; x < width; ++x)
                plane[y * width + x] = corner[y * rowBytes + x * rgbaSize + channel];
        putRuns(file, plane, width * height);
    }
}

/// Writes the offsets of the tiles and then the tiles. False if the file becomes too long for them.
bool putTiles(ByteWriter& file, const std::uint8_t* pixels, std::uint32_t width, std::uint32_t height) {
    const auto tilesOf = [](std::uint32_t side) { return (std::size_t{side} + tileSide - 1) / tileSide; };
    const std::size_t rowBytes = std::size_t{width} * rgbaSize;
    std::size_t pointer = file.size();
    file.zeros((tilesOf(width) * tilesOf(height) + 1) * sizeof(std::uint32_t)); // the last one is the end mark
    for (std::size_t y = 0; y < height; y += tileSide) {
        for (std::size_t x = 0; x < width; x += tileSide) {
            if (file.size() > longestFile) return false;
            file.u32beAt(pointer, offsetHere(file, 0));
            pointer += sizeof(std::uint32_t);
            putTile(file, pixels + y * rowBytes + x * rgbaSize, rowBytes, std::min<std::size_t>(tileSide, width - x),
                    std::min<std::size_t>(tileSide, height - y));
        }
    }
    return true;
}

} // namespace

bool save_xcf_rgba8_file(const std::string& path, const std::uint8_t* pixels, std::int32_t width, std::int32_t height) {
    if (pixels == nullptr || width < 1 || height < 1) return false;
    try {
        ByteWriter file;
        putStructure(file, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
        return putTiles(file, pixels, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)) &&
               writeRuntimeFile(path, file.take());
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace wm::png
