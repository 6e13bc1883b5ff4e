// Drawing rows of pixels over others, eight at a time. The whole file is compiled for processors with AVX2, so nothing
// in it may run, or be shared with other files, before `widestBlendRow` has asked for one.

#include "plush/blend_avx2.h"

#include "plush/row_blender.h"

namespace {

struct EightPixels {
    using Pixels = std::uint32_t __attribute__((vector_size(32)));
    using Halves = std::uint16_t __attribute__((vector_size(32)));
};

} // namespace

void blendRowByEights(PixelByte* target, const PixelByte* source, std::size_t count) {
    const std::size_t done = RowBlender<EightPixels>::blendVectors(target, source, count);
    blendRowByFours(target + done * bytesPerPixel, source + done * bytesPerPixel, count - done);
}
