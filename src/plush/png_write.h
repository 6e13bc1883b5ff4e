#pragma once

// The pieces of the PNG writer that stand alone.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace wm::png {

/// Writes one chunk: length, type, data and checksum. False if any of it could not be written.
/// @param type  the four letters of the chunk's type
bool write_chunk(std::FILE* file, std::string_view type, const std::uint8_t* data, std::size_t size);

/// Bytes of compressed data in every IDAT chunk but the last, which holds the rest.
constexpr std::size_t imageDataBatch = 65536;

} // namespace wm::png
