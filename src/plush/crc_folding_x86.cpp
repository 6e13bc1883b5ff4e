// CRC-32 by the carry-less multiplication of x86 processors.
//
// To a CRC the data are one long polynomial, and what counts is its remainder. Sixteen bytes that stand n bits in front
// of others may be replaced by their product with the remainder of x^n, added to those others: the whole has the same
// remainder and is sixteen bytes shorter. Four blocks are folded side by side over the 64 bytes that follow them, since
// a multiplication takes several cycles but a new one can begin in each; at the end the four become one, and the tables
// of png_checksums.cpp see to the last sixteen bytes.
//
// Bits are in reverse order, the highest power in the lowest bit, as PNG's CRC has them. The product of two reversed
// polynomials comes out one power too high, so each factor is stored one power too low, which is a shift to the left.

#include "plush/crc_folding.h"

#include <immintrin.h>

namespace wm::png {

namespace {

constexpr std::size_t lanes = 4; // blocks that are folded side by side
constexpr std::size_t stride = lanes * foldedSize;

/// The remainder of x^power, reversed and one power too low.
constexpr std::uint64_t factor(unsigned power) {
    std::uint32_t remainder = 0x80000000U; // x^0
    for (; power > 0; --power) remainder = (remainder & 1U) != 0 ? remainder >> 1 ^ crcPolynomial : remainder >> 1;
    return std::uint64_t{remainder} << 1;
}

/// The two factors that carry a block over `bytes` bytes. Its first eight bytes lie 64 powers above its last; and a
/// factor of 32 bits that is multiplied as if it had 64 counts for 32 powers more than it is.
template <std::size_t bytes> __m128i factorsOver() {
    constexpr std::uint64_t first = factor(8 * bytes + 32);
    constexpr std::uint64_t last = factor(8 * bytes - 32);
    return _mm_set_epi64x(static_cast<std::int64_t>(last), static_cast<std::int64_t>(first));
}

__m128i load(const std::uint8_t* from) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from)); }

/// `block` folded onto `next`.
[[gnu::target("pclmul")]] inline __m128i fold(__m128i block, __m128i factors, __m128i next) {
    const __m128i first = _mm_clmulepi64_si128(block, factors, 0x00);
    const __m128i last = _mm_clmulepi64_si128(block, factors, 0x11);
    return _mm_xor_si128(_mm_xor_si128(first, last), next);
}

[[gnu::target("pclmul")]] void foldStrides(const std::uint8_t* data, std::size_t size, std::uint32_t remainder,
                                           std::uint8_t* folded) {
    __m128i blocks[lanes];
    for (std::size_t lane = 0; lane < lanes; ++lane) blocks[lane] = load(data + lane * foldedSize);
    blocks[0] = _mm_xor_si128(blocks[0], _mm_cvtsi32_si128(static_cast<int>(remainder)));
    const __m128i overStride = factorsOver<stride>();
    for (std::size_t at = stride; at < size; at += stride)
        for (std::size_t lane = 0; lane < lanes; ++lane)
            blocks[lane] = fold(blocks[lane], overStride, load(data + at + lane * foldedSize));
    const __m128i overBlock = factorsOver<foldedSize>();
    for (std::size_t lane = 1; lane < lanes; ++lane) blocks[lane] = fold(blocks[lane - 1], overBlock, blocks[lane]);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(folded), blocks[lanes - 1]);
}

} // namespace

std::size_t foldForCrc(const std::uint8_t* data, std::size_t size, std::uint32_t remainder, std::uint8_t* folded) {
    static const bool hasMultiplication = __builtin_cpu_supports("pclmul") != 0;
    if (!hasMultiplication || size < stride) return 0;
    const std::size_t foldable = size / stride * stride;
    foldStrides(data, foldable, remainder, folded);
    return foldable;
}

} // namespace wm::png
