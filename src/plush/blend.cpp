// Drawing pixels over others, one at a time, and in rows with the widest vectors that this processor has.

#include "plush/blend.h"

#include "plush/row_blender.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr unsigned opaque = 255;

/// Four pixels, which every processor can handle at once or the compiler makes loops of.
struct FourPixels {
    using Pixels = std::uint32_t __attribute__((vector_size(16)));
    using Halves = std::uint16_t __attribute__((vector_size(16)));
};

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

void blendRowByFours(PixelByte* target, const PixelByte* source, std::size_t count) {
    for (std::size_t at = RowBlender<FourPixels>::blendVectors(target, source, count); at < count; ++at) {
        blendPixel(target + at * bytesPerPixel, source + at * bytesPerPixel);
    }
}

void blendRow(PixelByte* target, const PixelByte* source, std::size_t count) {
    static BlendRow* const widest = widestBlendRow();
    widest(target, source, count);
}
