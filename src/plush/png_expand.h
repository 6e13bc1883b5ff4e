#pragma once

// From samples to pixels: every colour type and depth of PNG becomes eight-bit RGBA.

#include "plush/png_chunks.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace wm::png {

/// Samples in a pixel of `colourType`.
constexpr unsigned channel_count(std::uint8_t colourType) {
    switch (colourType) {
    case rgb: return 3;
    case greyAlpha: return 2;
    case rgba: return 4;
    default: return 1;
    }
}

/// A 16-bit sample as 8 bits, rounded: the exact value of (s * 255 + 32767) / 65535 without the division.
constexpr std::uint8_t reduce_sample(std::uint32_t sample) {
    return static_cast<std::uint8_t>((sample * 255U + 32895U) >> 16);
}

/// Expands the rows of one picture. What is the same for all rows is prepared once: where a pixel is one sample of at
/// most eight bits, a table of all possible pixels.
class RowExpander {
public:
    explicit RowExpander(const ParsedPng& png);

    /// Whether unfiltered rows are RGBA pixels as they stand.
    bool isPlainCopy() const { return colourType_ == rgba && bitDepth_ == 8; }

    /// Writes `width` RGBA pixels at `target` from an unfiltered row.
    /// @param row  followed by at least one readable byte
    void expand(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const;

private:
    using Pixel = std::uint32_t; // four bytes in memory order

    void prepareGreys();
    void preparePalette(const ParsedPng& png);
    void expandIndices(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const;
    void expandRgb8(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const;
    void expandWide(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const;

    std::uint8_t colourType_;
    std::uint8_t bitDepth_;
    bool keyed_ = false;                 // whether one colour is transparent
    std::array<std::uint32_t, 3> key_{}; // its samples, as many as the colour type has
    std::array<Pixel, 256> table_{};
};

} // namespace wm::png
