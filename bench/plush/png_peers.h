#pragma once

// The libraries that the PNG codec is measured beside, each in its plainest use. All decode to eight-bit RGBA.

#include "png_pictures.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmaris::bench {

/// How a test file is stored.
enum class Storage { rgba, rgb, indexed, grey, rgb16, rgbaInterlaced };

/// A PNG file of the picture, made by libpng with its usual settings.
std::vector<std::uint8_t> makeFile(const Picture& picture, Storage storage);

/// The decoded pixels; null on failure. The block is fresh and not cleared beforehand.
std::unique_ptr<std::uint8_t[]> decodeWithLibspng(const std::vector<std::uint8_t>& file);
std::unique_ptr<std::uint8_t[]> decodeWithLibpng(const std::vector<std::uint8_t>& file);

/// Writes a PNG file without compression. Filters are chosen by libpng's own search over all five, or not used.
enum class Filters { searched, none };
bool saveWithLibpng(const std::string& path, const Picture& picture, Filters filters);

} // namespace velmaris::bench
