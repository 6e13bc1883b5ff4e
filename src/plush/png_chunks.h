#pragma once

// The outer layer of a PNG file: a signature and a chain of chunks, each with its length, type and checksum.
//
// Walking the chain checks every chunk and sorts what it holds into a `ParsedPng`. Nothing is copied but a palette:
// compressed data stay where they are in the file's bytes and are known by the pieces that make them up, because a
// file may cut them into as many chunks as it likes. A `ParsedPng` therefore lives no longer than the bytes.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace wm::png {

constexpr std::array<std::uint8_t, 8> pngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

namespace chunk {
constexpr std::string_view header = "IHDR";
constexpr std::string_view palette = "PLTE";
constexpr std::string_view transparency = "tRNS";
constexpr std::string_view animation = "acTL";
constexpr std::string_view frameControl = "fcTL";
constexpr std::string_view imageData = "IDAT";
constexpr std::string_view frameData = "fdAT";
constexpr std::string_view end = "IEND";
} // namespace chunk

enum ColourType : std::uint8_t { grey = 0, rgb = 2, palette = 3, greyAlpha = 4, rgba = 6 };
enum InterlaceMethod : std::uint8_t { notInterlaced = 0, adam7 = 1 };
enum BlendOperation : std::uint8_t { blendSource = 0, blendOver = 1 };

/// The fields of the first chunk.
struct Header {
    std::uint32_t width = 0;  // pixels, at least 1
    std::uint32_t height = 0; // pixels, at least 1
    std::uint8_t bitDepth = 0;
    std::uint8_t colourType = 0;
    std::uint8_t compression = 0;
    std::uint8_t filterMethod = 0;
    std::uint8_t interlaceMethod = 0;
};

/// Compressed data: borrowed pieces, to be read one behind another.
struct CompressedData {
    std::vector<std::span<const std::uint8_t>> pieces; // none of them empty
    std::uint64_t size = 0;                            // bytes of all pieces
};

/// One frame of an animated file: its place on the canvas and its data.
struct Frame {
    std::uint32_t width = 0;   // pixels, at least 1
    std::uint32_t height = 0;  // pixels, at least 1
    std::uint32_t xOffset = 0; // pixels from the canvas's left; the frame lies wholly on the canvas
    std::uint32_t yOffset = 0; // pixels from the canvas's top
    std::uint8_t disposeOperation = 0;
    std::uint8_t blendOperation = 0;
    bool takesImageData = false; // from IDAT chunks, so that this frame is also the default image
    CompressedData data;
};

/// What the chunks of a file say. Borrows the file's bytes.
struct ParsedPng {
    Header header;
    std::vector<std::uint8_t> palette;          // triples R, G, B, at most 256; empty unless the colour type needs it
    std::span<const std::uint8_t> transparency; // of the tRNS chunk; empty if there is none
    CompressedData imageData;                   // of all IDAT chunks: the default image
    bool animated = false;                      // whether there is an acTL chunk
    std::vector<Frame> frames;                  // in file order, those with data only
    std::uint64_t memoryUsed = 0;               // bytes of the file and of this record
};

/// Walks the chunks of the PNG file `data`, from the signature to the end chunk; what follows that is ignored. False
/// if any chunk is damaged, misplaced or contradicts the format.
bool parse_png(std::span<const std::uint8_t> data, ParsedPng& png);

} // namespace wm::png
