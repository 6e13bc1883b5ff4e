// Any bytes given to the BMP reader. Pictures that claim to be large are left alone: they are right, but slow.

#include "plush/bmp_read.h"

#include <cstdlib>
#include <new>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::int64_t mostPixels = 1 << 16;
    std::vector<std::uint8_t> pixels;
    const auto allocate = [&pixels](std::int32_t width, std::int32_t height) {
        if (width < 1 || height < 1) std::abort();
        if (std::int64_t{width} * height > mostPixels) throw std::bad_alloc();
        pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * wm::png::rgbaSize);
        return pixels.data();
    };
    try {
        wm::png::decode_bmp({data, size}, allocate);
    } catch (const std::bad_alloc&) {
    }
    return 0;
}
