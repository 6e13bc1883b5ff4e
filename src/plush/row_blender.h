#pragma once

// Blending rows of pixels, a vector at a time, with vectors of whatever width the includer names.
//
// The formula has special cases, divisions and a minimum, and none of them is left in the arithmetic:
//
//   - With v from 1 to 65280, (v - 1) / 255 is (v + v / 256) / 256.
//   - The alpha channel is a colour channel in disguise. t + a - t * a / 255, with the division rounded down, is
//     (a * 255 + (255 - a) * t + 254) / 255: the source's alpha read as 255, and 254 added before dividing, because
//     what is subtracted rounded down is kept rounded up. It never exceeds 255, so the minimum falls away.
//   - Alphas of 0 and 255 come out of the formula as the exact copy that they stand for.
//
// So all four channels are one expression on 16-bit numbers that never overflows. A pixel is two such numbers, each
// with a channel in its low byte and another in its high one. Masking gives the first, shifting the second, and both
// find their alpha in the same place: nothing has to be moved about in the vector.
//
// Pictures are opaque or transparent in large areas, and there the formula is spared. Whether a vector is wholly one of
// these is asked with ordinary words, for which processors have units of their own. What is neither is blended, vector
// after vector, until one begins with a pixel that may begin such an area again.
//
// This is a template for the sake of a source file that is compiled for a processor with wider vectors. Such a file
// must not leave behind any function that others share, so what is used here is all in the class.

#include "plush/image.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// @tparam Vectors  names two vector types of the same size: `Pixels` of 32-bit lanes and `Halves` of 16-bit lanes
template <typename Vectors> class RowBlender {
    using Pixels = typename Vectors::Pixels;
    using Halves = typename Vectors::Halves;

public:
    /// Draws as many pixels over others as fill whole vectors. Returns their number, which is at most `count`.
    static std::size_t blendVectors(PixelByte* target, const PixelByte* source, std::size_t count) {
        const std::size_t whole = count - count % pixelsPerVector;
        const std::size_t end = whole * bytesPerPixel;
        for (std::size_t at = 0; at < end;) {
            while (at < end && isTransparent(source + at)) at += vectorBytes;
            for (; at < end && isOpaque(source + at); at += vectorBytes) {
                std::memcpy(target + at, source + at, vectorBytes);
            }
            while (at < end) {
                blendVector(target + at, source + at);
                at += vectorBytes;
                if (at < end && isTransparentOrOpaque(source + at)) break;
            }
        }
        return whole;
    }

private:
    static constexpr std::size_t vectorBytes = sizeof(Pixels);
    static constexpr std::size_t pixelsPerVector = vectorBytes / bytesPerPixel;
    static constexpr std::size_t wordBytes = sizeof(std::uint64_t);
    static constexpr bool alphaIsHighest = std::endian::native == std::endian::little; // in a pixel read as a number
    static constexpr std::uint32_t alphaMask = alphaIsHighest ? 0xFF000000 : 0x000000FF;
    static constexpr std::uint64_t alphaMasks = std::uint64_t{alphaMask} << 32 | alphaMask;
    // What both halves of a pixel get added: 1 for the division, and 254 more for alpha.
    static constexpr std::uint32_t addedToLow = alphaIsHighest ? 0x00010001 : 0x000100FF;
    static constexpr std::uint32_t addedToHigh = alphaIsHighest ? 0x00FF0001 : 0x00010001;

    static std::uint64_t wordAt(const PixelByte* source, std::size_t at) {
        std::uint64_t word;
        std::memcpy(&word, source + at, sizeof word);
        return word;
    }

    static bool isTransparentOrOpaque(const PixelByte* pixel) { return pixel[3] == 0 || pixel[3] == 255; }

    /// Whether all pixels of a vector are.
    static bool isTransparent(const PixelByte* source) {
        std::uint64_t any = 0;
        for (std::size_t at = 0; at < vectorBytes; at += wordBytes) any |= wordAt(source, at);
        return (any & alphaMasks) == 0;
    }

    /// Whether all pixels of a vector are.
    static bool isOpaque(const PixelByte* source) {
        std::uint64_t all = alphaMasks;
        for (std::size_t at = 0; at < vectorBytes; at += wordBytes) all &= wordAt(source, at);
        return all == alphaMasks;
    }

    static Pixels load(const PixelByte* from) {
        Pixels pixels;
        std::memcpy(&pixels, from, sizeof pixels);
        return pixels;
    }

    /// Each half-pixel's alpha.
    static Halves alphaOf(Pixels pixels) {
        Pixels alpha = pixels;
        if constexpr (alphaIsHighest) {
            alpha >>= 24;
        } else {
            alpha &= alphaMask;
        }
        return reinterpret_cast<Halves>(alpha | alpha << 16);
    }

    /// One channel of each half-pixel by the formula; the result is in the high byte.
    static Halves blended(Halves source, Halves target, Halves alpha, std::uint32_t added) {
        const auto addend = reinterpret_cast<Halves>(Pixels{} + added);
        const Halves sum = alpha * source + (255 - alpha) * target + addend;
        return sum + (sum >> 8);
    }

    static void blendVector(PixelByte* target, const PixelByte* source) {
        const Pixels pixels = load(source);
        const Halves alpha = alphaOf(pixels);
        const auto over = reinterpret_cast<Halves>(pixels | alphaMask);
        const auto under = reinterpret_cast<Halves>(load(target));
        const Halves low = blended(over & 0x00FF, under & 0x00FF, alpha, addedToLow) >> 8;
        const Halves high = blended(over >> 8, under >> 8, alpha, addedToHigh) & 0xFF00;
        const Halves result = low | high;
        std::memcpy(target, &result, sizeof result);
    }
};
