// Drawing pixels over others, one at a time and four at a time.
//
// The formula has special cases, divisions and a minimum, and none of them is left in the loop over whole rows:
//
//   - With v below 65535, v / 255 is (v + 1 + v / 256) / 256.
//   - The alpha channel is a colour channel in disguise. t + a - t * a / 255, with the division rounded down, is
//     (a * 255 + (255 - a) * t + 254) / 255: the source's alpha read as 255, and 254 added before dividing, because
//     what is subtracted rounded down is kept rounded up. It never exceeds 255, so the minimum falls away.
//   - Alphas of 0 and 255 come out of the formula as the exact copy that they stand for.
//
// So all four channels are one expression on 16-bit numbers that never overflows, and a vector holds two pixels.

#include "plush/blend.h"

#include "plush/byte_vectors.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace {

constexpr unsigned opaque = 255;
constexpr std::size_t pixelsPerVector = 4;
constexpr std::size_t vectorBytes = pixelsPerVector * bytesPerPixel;

using Alphas = std::uint32_t __attribute__((vector_size(vectorBytes))); // one number for each of four pixels

constexpr Bytes16 opaqueAlphas = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255};
constexpr Words8 roundAlphaUp = {0, 0, 0, 254, 0, 0, 0, 254};

/// Sixteen words below 256 as bytes.
Bytes16 narrow(Words8 first, Words8 last) {
    const auto low = reinterpret_cast<Bytes16>(first);
    const auto high = reinterpret_cast<Bytes16>(last);
    if constexpr (std::endian::native == std::endian::little)
        return __builtin_shufflevector(low, high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    else
        return __builtin_shufflevector(low, high, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
}

/// Two pixels by the formula. The source's alpha reads 255; `alpha` holds the real one in all four channels.
Words8 blendChannels(Words8 source, Words8 target, Words8 alpha) {
    const Words8 sum = alpha * source + (255 - alpha) * target + roundAlphaUp;
    return (sum + 1 + (sum >> 8)) >> 8;
}

/// Four pixels by the formula.
void blendVector(PixelByte* target, const PixelByte* source) {
    const Bytes16 sourceBytes = loadBytes16(source);
    const Bytes16 targetBytes = loadBytes16(target);

    Alphas alphas = reinterpret_cast<Alphas>(sourceBytes);
    if constexpr (std::endian::native == std::endian::little) alphas >>= 24;
    alphas &= opaque;
    alphas |= alphas << 16; // two words for each pixel
    const auto pairs = reinterpret_cast<Words8>(alphas);
    const Words8 firstAlphas = __builtin_shufflevector(pairs, pairs, 0, 1, 0, 1, 2, 3, 2, 3);
    const Words8 lastAlphas = __builtin_shufflevector(pairs, pairs, 4, 5, 4, 5, 6, 7, 6, 7);

    const Bytes16 colours = sourceBytes | opaqueAlphas;
    const Words8 first = blendChannels(widenLow(colours), widenLow(targetBytes), firstAlphas);
    const Words8 last = blendChannels(widenHigh(colours), widenHigh(targetBytes), lastAlphas);
    storeBytes16(target, narrow(first, last));
}

} // namespace

void blendPixel(PixelByte* target, const PixelByte* source) {
    const unsigned a = source[3];
    if (a == 0) return;
    if (a == opaque) {
        std::memcpy(target, source, bytesPerPixel);
        return;
    }
    for (int channel = 0; channel < 3; ++channel) {
        target[channel] = static_cast<PixelByte>((a * source[channel] + (opaque - a) * target[channel]) / opaque);
    }
    const unsigned targetAlpha = target[3];
    target[3] = static_cast<PixelByte>(std::min(targetAlpha + a - targetAlpha * a / opaque, opaque));
}

void blendRow(PixelByte* target, const PixelByte* source, std::size_t count) {
    std::size_t left = count;
    for (; left >= pixelsPerVector; left -= pixelsPerVector, target += vectorBytes, source += vectorBytes) {
        blendVector(target, source);
    }
    for (; left > 0; --left, target += bytesPerPixel, source += bytesPerPixel) blendPixel(target, source);
}
