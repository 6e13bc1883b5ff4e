// Samples of more than eight bits, or in proportion to light, become the eight bits that a screen shows.
//
// Whole numbers are scaled and rounded. Linear ones need a power function, but there are only 256 results: so a sample
// is looked up among the 255 places where one result ends and the next begins, which is exact and needs no table for
// each width of samples.

#include "plush/xcf_samples.h"

#include "plush/masked_sample.h"
#include "plush/xcf_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace wm::png::xcf {

namespace {

constexpr double largestByte = 255;

// The field is a kind times 100 and a curve.
enum Kind : std::uint32_t { whole8 = 1, whole16 = 2, whole32 = 3, half = 5, single = 6, twofold = 7 };
enum Curve : std::uint32_t { linear = 0, gamma = 50, perceptual = 75 };

// Between the fourth version, which counts forms from 0, and this one there was no gap in front of `half`.
constexpr unsigned firstWithGap = 7;

/// The field as it has been since `firstWithGap`; 0 if it means nothing.
std::uint32_t presentPrecision(std::uint32_t precision, unsigned version) {
    if (version == firstWithPrecision) {
        constexpr std::uint32_t forms[] = {150, 250, 300, 500, 600};
        return precision < std::size(forms) ? forms[precision] : 0;
    }
    if (version >= firstWithGap) return precision;
    constexpr std::uint32_t end = 600;
    if (precision >= end || precision % 100 == perceptual) return 0;
    return precision < 400 ? precision : precision + 100;
}

/// A number of 16 bits: a sign, five bits of exponent, ten of fraction.
double halfValue(std::uint32_t bits) {
    const int exponent = static_cast<int>(bits >> 10 & 31);
    const double fraction = bits & 1023;
    if (exponent == 31) return fraction > 0 || bits >> 15 != 0 ? 0 : 1; // infinite, or no number
    const double value = exponent == 0 ? std::ldexp(fraction, -24) : std::ldexp(fraction + 1024, exponent - 25);
    return bits >> 15 != 0 ? -value : value;
}

double realValue(std::uint64_t bits, unsigned bytes) {
    if (bytes == 2) return halfValue(static_cast<std::uint32_t>(bits));
    if (bytes == 4) return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    return std::bit_cast<double>(bits);
}

/// Light as a part of the most there is, for a byte that may have a fraction.
double lightOf(double byte) {
    const double part = byte / largestByte;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

std::uint8_t fromLight(double light) {
    static const std::array<double, 255> ends = [] {
        std::array<double, 255> between;
        for (std::size_t byte = 0; byte < between.size(); ++byte)
            between[byte] = lightOf(static_cast<double>(byte) + 0.5);
        return between;
    }();
    return static_cast<std::uint8_t>(std::ranges::upper_bound(ends, light) - ends.begin());
}

std::uint8_t reduced(const SampleFormat& format, bool isLinear, std::uint64_t bits) {
    const std::uint64_t largest = std::numeric_limits<std::uint64_t>::max() >> (64 - 8 * format.bytes);
    if (!format.isReal && !isLinear)
        return scale_masked_sample(static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(largest));
    const double value =
        format.isReal ? realValue(bits, format.bytes) : static_cast<double>(bits) / static_cast<double>(largest);
    const double part = value > 0 ? std::min(value, 1.0) : 0; // what is no number is 0, too
    return isLinear ? fromLight(part) : static_cast<std::uint8_t>(std::lround(part * largestByte));
}

std::uint64_t bitsOf(const SampleFormat& format, const std::uint8_t* sample) {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < format.bytes; ++i)
        bits = bits << 8 | sample[format.isLittleEndian ? format.bytes - 1 - i : i];
    return bits;
}

} // namespace

bool xcf_sample_format(std::uint32_t precision, unsigned version, SampleFormat& format) {
    precision = presentPrecision(precision, version);
    const std::uint32_t curve = precision % 100;
    if (curve != linear && curve != gamma && curve != perceptual) return false;
    const std::uint32_t kind = precision / 100;
    switch (kind) {
    case whole8: format.bytes = 1; break;
    case whole16:
    case half: format.bytes = 2; break;
    case whole32:
    case single: format.bytes = 4; break;
    case twofold: format.bytes = 8; break;
    default: return false;
    }
    format.isReal = kind >= half;
    format.isLinear = curve == linear;
    format.isLittleEndian = version < firstWithBigSamples;
    return true;
}

void xcf_reduce_samples(const SampleFormat& format, Channels channels, const std::uint8_t* stored, std::size_t count,
                        std::uint8_t* target) {
    if (format.isPlain()) {
        std::memcpy(target, stored, count * channels.count());
        return;
    }
    for (std::size_t pixel = 0; pixel < count; ++pixel) {
        for (unsigned channel = 0; channel < channels.count(); ++channel, stored += format.bytes) {
            const bool isLinear = format.isLinear && channel < channels.colours;
            *target++ = reduced(format, isLinear, bitsOf(format, stored));
        }
    }
}

} // namespace wm::png::xcf
