#pragma once

// How an XCF file stores the samples of its pixels, and what they are in eight bits.

#include <cstddef>
#include <cstdint>

namespace wm::png::xcf {

/// The form of one sample.
struct SampleFormat {
    unsigned bytes = 1;    // 1, 2, 4 or 8
    bool isReal = false;   // a number of 0 to 1 with a fraction, else a whole one of as many as the bytes can tell
    bool isLinear = false; // in proportion to light, which eight-bit colours aren't; alpha is so in any case
    bool isLittleEndian = false;

    /// Whether samples are as we want them.
    bool isPlain() const { return bytes == 1 && !isLinear; }
};

/// The samples of a pixel: first those of its colour, then alpha, if it has any. A mask has alpha alone.
struct Channels {
    unsigned colours = 0;
    unsigned alphas = 0;

    unsigned count() const { return colours + alphas; }
};

/// The form that the field of a file of this version means. False if it means none.
bool xcf_sample_format(std::uint32_t precision, unsigned version, SampleFormat& format);

/// Rounds the samples of pixels to eight bits. What lies outside 0 to 1 becomes the nearer of them.
/// @param stored  `count` pixels in the format
/// @param target  receives a byte for each sample, in the same order
void xcf_reduce_samples(const SampleFormat& format, Channels channels, const std::uint8_t* stored, std::size_t count,
                        std::uint8_t* target);

} // namespace wm::png::xcf
