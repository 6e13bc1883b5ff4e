#pragma once

// Four numbers at a time, and pixels as numbers.
//
// Interpolation works on four pixels at once: a vector holds one channel of each. A pixel is read as one 32-bit word,
// so taking the channels apart and putting them together again is a matter of shifts, the same for each channel, and
// it does not matter which channel a byte of the word stands for.

#include "plush/image.h"

#include <array>
#include <cstdint>
#include <cstring>

using Floats4 = float __attribute__((vector_size(16)));
using Ints4 = std::int32_t __attribute__((vector_size(16)));
using Pixels4 = std::uint32_t __attribute__((vector_size(16)));

constexpr int pixelsAtOnce = 4;
constexpr int bitsPerChannel = 8;

/// Four pixels as their channels.
using Channels = std::array<Floats4, bytesPerPixel>;

inline std::uint32_t loadPixel(const PixelByte* from) {
    std::uint32_t pixel;
    std::memcpy(&pixel, from, sizeof pixel);
    return pixel;
}

/// Four of the pixels from `pixels` on, by their numbers.
inline Pixels4 gatheredPixels(const PixelByte* pixels, Ints4 numbers) {
    const auto pixel = [&](int at) {
        return loadPixel(pixels + static_cast<std::ptrdiff_t>(numbers[at]) * bytesPerPixel);
    };
    return Pixels4{pixel(0), pixel(1), pixel(2), pixel(3)};
}

/// The pixels of a row at four columns.
inline Pixels4 gatheredPixels(const PixelByte* row, const int* columns) {
    Pixels4 pixels = {};
    for (int at = 0; at < pixelsAtOnce; ++at) {
        pixels[at] = loadPixel(row + static_cast<std::size_t>(columns[at]) * bytesPerPixel);
    }
    return pixels;
}

/// The four numbers at `from`, which need no alignment.
inline Floats4 loadFloats4(const float* from) {
    Floats4 numbers;
    std::memcpy(&numbers, from, sizeof numbers);
    return numbers;
}

/// One channel of four pixels, from 0 to 255.
inline Floats4 channelOf(Pixels4 pixels, int channel) {
    return __builtin_convertvector(reinterpret_cast<Ints4>((pixels >> (channel * bitsPerChannel)) & 0xFFU), Floats4);
}

/// Four pixels with the low 8 bits of a number in one channel, and nothing in the others.
inline Pixels4 inChannel(Ints4 numbers, int channel) {
    return (reinterpret_cast<Pixels4>(numbers) & 0xFFU) << (channel * bitsPerChannel);
}

/// The numbers without their fractions. Each must fit an integer.
inline Ints4 truncated(Floats4 numbers) { return __builtin_convertvector(numbers, Ints4); }

/// The numbers rounded half away from zero. None may be negative or beyond an integer.
inline Ints4 roundedPositive(Floats4 numbers) {
    const Ints4 whole = truncated(numbers);
    const Floats4 fraction = numbers - __builtin_convertvector(whole, Floats4);
    return whole - (fraction >= 0.5F); // a comparison that holds is -1
}
