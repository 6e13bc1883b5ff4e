#pragma once

// The picture type of the engine and the registry of the pictures that scripts hold.
//
// A script's handle to a picture is its bare address. What keeps a stale address harmless is the live set: every
// picture that is handed to a script is entered there and leaves it when it is freed, so an address can be tested
// before it is read. The record is plain on purpose, because the platform layer and the renderers share it.

#include <cstdint>
#include <unordered_set>

/// One pixel, four bytes in memory order R, G, B, A; straight alpha, not premultiplied.
using PixelByte = std::uint8_t;
constexpr int bytesPerPixel = 4;

/// An image: `width * height` pixels, rows from the top, no padding; pixel (x, y) starts at byte
/// `(x + width * y) * bytesPerPixel`. The only pixel container of the engine: window frames, textures and glyph
/// runs are all of this type.
struct PlushImage {
    std::int32_t width = 0;             // pixels
    std::int32_t height = 0;            // pixels
    PixelByte* pixels = nullptr;        // owned, allocated as a bare array
    std::int32_t reflectWidth = 0;      // pixels
    std::int32_t reflectHeight = 0;     // pixels
    PixelByte* reflectPixels = nullptr; // owned reflection map, null when the image has none
};
