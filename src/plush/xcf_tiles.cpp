// Decoding tiles.
//
// A layer leads to a hierarchy, that to a level, and the level to its tiles, row by row. Smaller levels may follow the
// first; they are copies for quick views, and nobody reads them.

#include "plush/xcf_tiles.h"

#include "plush/inflate.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace wm::png::xcf {

namespace {

constexpr std::size_t mostPixelBytes = 4 * sizeof(double);
constexpr std::size_t mostTileBytes = std::size_t{tileSide} * tileSide * mostPixelBytes;

bool decodeTile(const Picture& picture, std::uint64_t offset, TileSize size, unsigned bpp, std::uint8_t* tile) {
    ByteReader reader = xcf_reader_at(picture, offset);
    const std::size_t bytes = std::size_t{size.width} * size.height * bpp;
    switch (picture.compression) {
    case runLengths: return xcf_decode_rle_tile(reader, size, bpp, tile);
    case zlibStreams: {
        if (reader.failed()) return false;
        const std::array<std::span<const std::uint8_t>, 1> pieces = {reader.bytes(reader.remaining())};
        if (pieces.front().empty()) return false;
        Inflater inflater(pieces, bytes, bytes);
        const std::uint8_t* inflated = inflater.take(bytes);
        if (inflated == nullptr) return false;
        std::memcpy(tile, inflated, bytes);
        return inflater.finish();
    }
    default: {
        const auto plain = reader.bytes(bytes);
        if (plain.empty()) return false;
        std::ranges::copy(plain, tile);
        return true;
    }
    }
}

/// The offset of the level below a hierarchy; 0 if either is not as it should be.
std::uint64_t findLevel(const Picture& picture, std::uint64_t offset, std::uint32_t width, std::uint32_t height,
                        unsigned bpp) {
    ByteReader reader = xcf_reader_at(picture, offset);
    const bool sameSize = reader.u32be() == width && reader.u32be() == height;
    const bool sameDepth = reader.u32be() == bpp;
    const std::uint64_t level = xcf_take_pointer(reader, picture);
    return sameSize && sameDepth && !reader.failed() ? level : 0;
}

} // namespace

bool xcf_decode_rle_tile(ByteReader& reader, TileSize size, unsigned bpp, std::uint8_t* tile) {
    const std::size_t count = std::size_t{size.width} * size.height;
    for (unsigned channel = 0; channel < bpp; ++channel) {
        std::uint8_t* target = tile + channel;
        std::size_t left = count;
        while (left > 0) {
            const std::uint8_t code = reader.u8();
            const bool repeats = code <= longRepeat;
            std::size_t length = repeats ? code + std::size_t{1} : std::size_t{256} - code;
            if (code == longRepeat || code == longLiteral) length = reader.u16be();
            if (reader.failed() || length > left) return false;
            const auto bytes = reader.bytes(repeats ? 1 : length);
            if (reader.failed()) return false;
            for (std::size_t i = 0; i < length; ++i, target += bpp) *target = bytes[repeats ? 0 : i];
            left -= length;
        }
    }
    return true;
}

bool xcf_decode_layer_pixels(const Picture& picture, std::uint64_t offset, std::uint32_t width, std::uint32_t height,
                             Channels channels, std::uint8_t* pixels) {
    const unsigned bpp = xcf_expected_bpp(picture, channels);
    const std::uint64_t level = findLevel(picture, offset, width, height, bpp);
    ByteReader reader = xcf_reader_at(picture, level);
    if (level == 0 || reader.u32be() != width || reader.u32be() != height) return false;
    std::array<std::uint8_t, mostTileBytes> tile;
    for (std::uint32_t y = 0; y < height; y += tileSide) {
        for (std::uint32_t x = 0; x < width; x += tileSide) {
            const std::uint64_t pointer = xcf_take_pointer(reader, picture);
            const TileSize size = {std::min(tileSide, width - x), std::min(tileSide, height - y)};
            if (pointer == 0 || !decodeTile(picture, pointer, size, bpp, tile.data())) return false;
            for (std::uint32_t row = 0; row < size.height; ++row) {
                std::uint8_t* target = pixels + ((std::size_t{y} + row) * width + x) * channels.count();
                const std::uint8_t* stored = &tile[std::size_t{row} * size.width * bpp];
                xcf_reduce_samples(picture.samples, channels, stored, size.width, target);
            }
        }
    }
    return xcf_take_pointer(reader, picture) == 0 && !reader.failed();
}

} // namespace wm::png::xcf
