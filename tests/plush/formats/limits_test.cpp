// Small files that ask for much.

#include "picture_files.h"

#include <gtest/gtest.h>

namespace {

using namespace formats_test;

void put32(Bytes& file, std::size_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) file.push_back(static_cast<std::uint8_t>(value >> shift));
}

void addTo(Bytes& file, std::size_t at, std::size_t more) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | file[at + i];
    value += more;
    for (std::size_t i = 4; i > 0; --i, value >>= 8) file[at + i - 1] = static_cast<std::uint8_t>(value);
}

/// A file of one pixel whose only layer is listed `count` times.
Bytes withLayerListed(std::size_t count) {
    constexpr std::size_t pointer = 43;                // to the layer
    constexpr std::size_t further[] = {125, 145, 161}; // from layer to hierarchy, level and tile
    const TemporaryDirectory directory;
    const Bytes pixel = {1, 2, 3, 4};
    if (!wm::png::save_xcf_rgba8_file(directory.path("a"), pixel.data(), 1, 1)) return {};
    Bytes one = readFile(directory.path("a"));
    const std::size_t more = 4 * (count - 1);
    for (const std::size_t at : further) addTo(one, at, more);
    Bytes file(one.begin(), one.begin() + pointer);
    for (std::size_t i = 0; i < count; ++i) put32(file, pointer + 12 + more);
    file.insert(file.end(), one.begin() + pointer + 4, one.end());
    return file;
}

TEST(XcfLimits, LayersMayShareTheirTilesWithinBounds) {
    EXPECT_TRUE(loadedPixels(withLayerListed(1), ".xcf"));
    EXPECT_TRUE(loadedPixels(withLayerListed(1000), ".xcf"));
    EXPECT_FALSE(loadedPixels(withLayerListed(70000), ".xcf"));
}

TEST(BmpLimits, APictureBeyondTheMemoryLimitIsRefused) {
    Bytes file = readFile(corpus / "good" / "info-rle8-empty.bmp");
    const auto setSize = [&file](std::uint32_t width, std::uint32_t height) {
        for (std::size_t i = 0; i < 4; ++i) {
            file[18 + i] = static_cast<std::uint8_t>(width >> (8 * i));
            file[22 + i] = static_cast<std::uint8_t>(height >> (8 * i));
        }
    };
    setSize(2000, 3);
    EXPECT_TRUE(loadedPixels(file, ".bmp"));
    setSize(16384, 16384); // 1 GiB of pixels, and the file beside them
    EXPECT_FALSE(loadedPixels(file, ".bmp"));
    setSize(0x7FFFFFFF, 0x7FFFFFFF);
    EXPECT_FALSE(loadedPixels(file, ".bmp"));
}

} // namespace
