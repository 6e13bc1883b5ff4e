#pragma once

// The pixels of an XCF file's layers and masks: tiles of 64 by 64 pixels, each compressed by itself.

#include "plush/xcf_parse.h"

#include <cstdint>
#include <span>

namespace wm::png::xcf {

/// The size of a row of tiles that is being filled.
struct TileSize {
    std::uint32_t width = 0;  // pixels, at most `tileSide`
    std::uint32_t height = 0; // likewise
};

/// Decodes the run lengths of one tile: first the first byte of all pixels, then the second of all, and so on. False if
/// they give more or fewer bytes than the tile has.
/// @param tile  receives `width * height * bpp` bytes, those of a pixel together
bool xcf_decode_rle_tile(ByteReader& reader, TileSize size, unsigned bpp, std::uint8_t* tile);

/// Decodes all tiles below the hierarchy at `offset`.
/// @param channels  what a pixel has to consist of
/// @param pixels    receives `width * height` pixels, a byte for each channel, rows from the top
bool xcf_decode_layer_pixels(const Picture& picture, std::uint64_t offset, std::uint32_t width, std::uint32_t height,
                             Channels channels, std::uint8_t* pixels);

} // namespace wm::png::xcf
