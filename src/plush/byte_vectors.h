#pragma once

// Sixteen bytes at a time.
//
// The compilers' own vector extension: arithmetic on whole vectors that knows no particular processor and becomes a
// loop where there is nothing better. Lane 0 is the byte at the lowest address.

#include <bit>
#include <cstdint>
#include <cstring>

using Bytes16 = std::uint8_t __attribute__((vector_size(16)));
using Words8 = std::uint16_t __attribute__((vector_size(16)));

/// The sixteen bytes at `from`, which need no alignment.
inline Bytes16 loadBytes16(const std::uint8_t* from) {
    Bytes16 bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

inline void storeBytes16(std::uint8_t* to, Bytes16 bytes) { std::memcpy(to, &bytes, sizeof bytes); }

/// The first eight bytes as words.
inline Words8 widenLow(Bytes16 bytes) {
    constexpr Bytes16 zeros{};
    if constexpr (std::endian::native == std::endian::little)
        return reinterpret_cast<Words8>(
            __builtin_shufflevector(bytes, zeros, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
    else
        return reinterpret_cast<Words8>(
            __builtin_shufflevector(bytes, zeros, 16, 0, 17, 1, 18, 2, 19, 3, 20, 4, 21, 5, 22, 6, 23, 7));
}

/// The last eight bytes as words.
inline Words8 widenHigh(Bytes16 bytes) {
    return widenLow(__builtin_shufflevector(bytes, bytes, 8, 9, 10, 11, 12, 13, 14, 15, 8, 9, 10, 11, 12, 13, 14, 15));
}
