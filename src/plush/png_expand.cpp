// Expansion of unfiltered rows.
//
// Grey levels and palette indices of up to eight bits are looked up in one table, in which depth, palette and
// transparency are already settled. Three or four samples of eight bits only need their bytes moved. Samples of sixteen
// bits are rounded one by one; they are rare, and plain code serves them all.

#include "plush/png_expand.h"

#include "plush/byte_reader.h"
#include "plush/png.h"

#include <bit>
#include <cstring>

namespace wm::png {

namespace {

constexpr std::uint8_t opaque = 255;

constexpr std::uint32_t pixelOf(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha) {
    return std::bit_cast<std::uint32_t>(std::array<std::uint8_t, rgbaSize>{red, green, blue, alpha});
}

constexpr std::uint32_t opaqueBits = pixelOf(0, 0, 0, opaque);

inline void storePixel(std::uint8_t* target, std::uint32_t pixel) { std::memcpy(target, &pixel, sizeof pixel); }

inline std::uint32_t sample16(const std::uint8_t* row) { return std::uint32_t{row[0]} << 8 | row[1]; }

} // namespace

RowExpander::RowExpander(const ParsedPng& png) : colourType_(png.header.colourType), bitDepth_(png.header.bitDepth) {
    const bool keyPossible = colourType_ == grey || colourType_ == rgb;
    if (keyPossible && !png.transparency.empty()) {
        keyed_ = true;
        ByteReader reader(png.transparency);
        const std::uint32_t sampleBits = (1U << bitDepth_) - 1; // only these of the 16 have a meaning
        for (unsigned channel = 0; channel < channel_count(colourType_); ++channel)
            key_[channel] = reader.u16be() & sampleBits;
    }
    if (colourType_ == palette) preparePalette(png);
    if (colourType_ == grey && bitDepth_ <= 8) prepareGreys();
}

void RowExpander::prepareGreys() {
    const std::uint32_t brightest = (1U << bitDepth_) - 1;
    for (std::uint32_t level = 0; level <= brightest; ++level) {
        const auto byte = static_cast<std::uint8_t>(level * 255 / brightest);
        table_[level] = pixelOf(byte, byte, byte, keyed_ && level == key_[0] ? 0 : opaque);
    }
}

/// Indices beyond the palette are opaque black.
void RowExpander::preparePalette(const ParsedPng& png) {
    table_.fill(opaqueBits);
    const std::uint8_t* colour = png.palette.data();
    for (std::size_t i = 0; i < png.palette.size() / 3; ++i, colour += 3) {
        const std::uint8_t alpha = i < png.transparency.size() ? png.transparency[i] : opaque;
        table_[i] = pixelOf(colour[0], colour[1], colour[2], alpha);
    }
}

void RowExpander::expand(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const {
    if (isPlainCopy()) {
        std::memcpy(target, row, width * rgbaSize);
    } else if (bitDepth_ == 16) {
        expandWide(target, row, width);
    } else if (colourType_ == rgb) {
        expandRgb8(target, row, width);
    } else if (colourType_ == greyAlpha) {
        for (std::size_t x = 0; x < width; ++x, target += rgbaSize, row += 2)
            storePixel(target, pixelOf(row[0], row[0], row[0], row[1]));
    } else {
        expandIndices(target, row, width);
    }
}

void RowExpander::expandIndices(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const {
    if (bitDepth_ == 8) {
        for (std::size_t x = 0; x < width; ++x) storePixel(target + x * rgbaSize, table_[row[x]]);
        return;
    }
    const unsigned perByte = 8U / bitDepth_;
    const unsigned mask = (1U << bitDepth_) - 1;
    for (std::size_t x = 0; x < width; x += perByte, ++row) {
        unsigned shift = 8; // the leftmost pixel has the highest bits
        for (std::size_t at = x; at < width && shift > 0; ++at) {
            shift -= bitDepth_;
            storePixel(target + at * rgbaSize, table_[*row >> shift & mask]);
        }
    }
}

void RowExpander::expandRgb8(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const {
    const std::uint32_t key = pixelOf(static_cast<std::uint8_t>(key_[0]), static_cast<std::uint8_t>(key_[1]),
                                      static_cast<std::uint8_t>(key_[2]), opaque);
    for (std::size_t x = 0; x < width; ++x, target += rgbaSize, row += 3) {
        std::uint32_t pixel; // with the next pixel's first byte, which the alpha replaces
        std::memcpy(&pixel, row, sizeof pixel);
        pixel |= opaqueBits;
        storePixel(target, keyed_ && pixel == key ? pixel & ~opaqueBits : pixel);
    }
}

void RowExpander::expandWide(std::uint8_t* target, const std::uint8_t* row, std::size_t width) const {
    const unsigned channels = channel_count(colourType_);
    const bool coloured = colourType_ == rgb || colourType_ == rgba;
    const bool hasAlpha = colourType_ == greyAlpha || colourType_ == rgba;
    for (std::size_t x = 0; x < width; ++x, target += rgbaSize, row += 2 * channels) {
        std::array<std::uint32_t, 4> samples{};
        for (unsigned channel = 0; channel < channels; ++channel) samples[channel] = sample16(row + 2 * channel);
        target[0] = reduce_sample(samples[0]);
        target[1] = coloured ? reduce_sample(samples[1]) : target[0];
        target[2] = coloured ? reduce_sample(samples[2]) : target[0];
        if (hasAlpha) {
            target[3] = reduce_sample(samples[channels - 1]);
        } else {
            const bool isKey =
                keyed_ && samples[0] == key_[0] && (!coloured || (samples[1] == key_[1] && samples[2] == key_[2]));
            target[3] = isKey ? 0 : opaque;
        }
    }
}

} // namespace wm::png
