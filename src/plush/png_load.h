#pragma once

// What the loaders of picture files share: reading a file whole, and allocating for a picture once.

#include "plush/picture_block.h"
#include "plush/png_chunks.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace wm::png {

/// A file's bytes.
struct FileBytes {
    std::unique_ptr<std::uint8_t[]> data;
    std::size_t size = 0;

    std::span<const std::uint8_t> span() const { return {data.get(), size}; }
};

/// Reads the file `path` whole. False if that is not possible or it is larger than `memoryLimit`.
bool read_picture_file(const std::string& path, FileBytes& bytes);

/// Walks a PNG file and makes sure that it can be decoded within bounds: all that is to be known before its pixels are
/// allocated.
bool open_png(std::span<const std::uint8_t> data, ParsedPng& png);

/// Decodes the picture file `data`, of whichever format, into a block that `allocate` gives. False on any fault.
bool decode_picture(std::span<const std::uint8_t> data, const PixelAllocator& allocate);

} // namespace wm::png
