#pragma once

// The pictures that the PNG codec is measured with: made up, but with the statistics of what games draw.

#include <cstdint>
#include <vector>

namespace velmaris::bench {

/// RGBA pixels, top row first.
struct Picture {
    std::uint32_t width;
    std::uint32_t height;
    std::vector<std::uint8_t> pixels;
};

/// Smooth shapes at all scales with a little noise of the sensor, opaque: what a photograph or a painting compresses
/// like.
Picture photo(std::uint32_t width, std::uint32_t height);

/// Panels, borders and lines of text in few colours over a gradient, partly transparent: an interface or a sprite
/// sheet.
Picture flat(std::uint32_t width, std::uint32_t height);

} // namespace velmaris::bench
