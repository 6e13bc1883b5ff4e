#pragma once

// The structure of an XCF file: the picture's own fields and properties, its layers with theirs, and where their pixels
// are. Nothing is decoded here.

#include "plush/byte_reader.h"
#include "plush/xcf_format.h"
#include "plush/xcf_samples.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace wm::png::xcf {

/// What the head of a file says of the whole picture.
struct Picture {
    std::span<const std::uint8_t> file; // all of it; pointers are offsets into it
    unsigned version = 0;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t baseType = rgbBase;
    SampleFormat samples;
    std::uint8_t compression = noCompression;
    std::vector<std::array<std::uint8_t, 3>> colours; // of an indexed picture
};

/// One layer, but for its pixels.
struct Layer {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t type = rgbLayer;
    std::int64_t x = 0; // of the left edge on the canvas; may be outside
    std::int64_t y = 0; // likewise of the top
    std::uint8_t opacity = 255;
    bool visible = true;
    bool masked = true; // by its mask, if it has one
    bool isGroup = false;
    std::vector<std::uint32_t> path; // in groups: the places on the way down to it; empty outside groups
    std::uint64_t hierarchy = 0;     // offset of the structure that leads to its pixels
    std::uint64_t mask = 0;          // offset of its mask; 0 without
};

/// Reads the head of the file up to its properties' end. `reader` then stands in front of the pointers to the layers.
bool xcf_parse_head(ByteReader& reader, Picture& picture);

/// Reads the properties of the picture, up to their end mark.
bool xcf_parse_image_properties(ByteReader& reader, Picture& picture);

/// Bytes of a pointer: 4, or 8 in newer files.
std::size_t xcf_pointer_size(const Picture& picture);

/// Reads one pointer.
std::uint64_t xcf_take_pointer(ByteReader& reader, const Picture& picture);

/// A reader at an offset of the file; it has failed if that lies outside.
ByteReader xcf_reader_at(const Picture& picture, std::uint64_t offset);

/// Reads the layer at `offset`, but for its pixels.
bool xcf_parse_layer(const Picture& picture, std::uint64_t offset, Layer& layer);

/// Finds the pixels of a mask, which must have the size of its layer.
bool xcf_parse_mask(const Picture& picture, const Layer& layer, std::uint64_t& hierarchy);

/// What a pixel in a layer of this type consists of.
Channels xcf_channels(std::uint32_t layerType);

/// Bytes that a pixel with these channels has in the file.
unsigned xcf_expected_bpp(const Picture& picture, Channels channels);

} // namespace wm::png::xcf
