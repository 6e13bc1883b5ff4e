#pragma once

// The numbers of the XCF format, shared by its reader and its writer. All of them are big-endian in a file.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wm::png::xcf {

constexpr std::string_view magic = "gimp xcf "; // with the version and a zero byte, 14 bytes
constexpr std::size_t versionSize = 4;
constexpr std::uint32_t tileSide = 64; // pixels; tiles at the right and bottom edges are smaller

enum BaseType : std::uint32_t { rgbBase = 0, greyBase = 1, indexedBase = 2 };

/// Twice the base type, and one more with alpha.
enum LayerType : std::uint32_t { rgbLayer = 0, rgbaLayer = 1 };

enum Property : std::uint32_t {
    endOfProperties = 0,
    colourMap = 1,
    opacity = 6,
    visible = 8,
    applyMask = 11,
    offsets = 15,
    compression = 17,
    groupItem = 29,
    itemPath = 30,
    floatOpacity = 33,
};

enum Compression : std::uint8_t { noCompression = 0, runLengths = 1, zlibStreams = 2 };

// The first byte of a run: up to 126 repeats a byte that often and once more, from 129 up stands in front of
// 256 less that many bytes; the two between are for numbers that need 16 bits.
enum Run : std::uint8_t { longestShortRepeat = 126, longRepeat = 127, longLiteral = 128 };

// Versions from which the layout differs.
constexpr unsigned firstWithColourMap = 1;     // before, a colour map was lost in writing
constexpr unsigned firstWithPrecision = 4;     // a field for how samples are stored
constexpr unsigned firstWithWidePointers = 11; // of 64 bits
constexpr unsigned firstWithBigSamples = 12;   // big-endian; before, long samples lay as in the writer's machine

} // namespace wm::png::xcf
