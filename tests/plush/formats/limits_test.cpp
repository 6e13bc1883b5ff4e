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

std::size_t get32(const Bytes& file, std::size_t at) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | file[at + i];
    return value;
}

void set32(Bytes& file, std::size_t at, std::size_t value) { addTo(file, at, value - get32(file, at)); }

/// A file of the corpus whose picture has another size; its layers stay as they are.
Bytes withPictureSize(const char* name, std::size_t width, std::size_t height) {
    Bytes file = readFile(corpus / "good" / name);
    set32(file, 14, width);
    set32(file, 18, height);
    return file;
}

/// Where the pointers to the layers begin: behind the head and the properties.
std::size_t layersIn(const Bytes& file) {
    std::size_t at = 26;
    while (get32(file, at) != 0) at += 8 + get32(file, at + 4);
    return at + 8;
}

/// Makes the first layer stand at the places of all others as well.
void repeatFirstLayer(Bytes& file) {
    const std::size_t first = layersIn(file);
    for (std::size_t at = first; get32(file, at) != 0; at += 4) set32(file, at, get32(file, first));
}

/// Whether a picture is found right up to where its pixels are to be allocated. They aren't.
bool asksForPixels(const Bytes& file) {
    bool asked = false;
    wm::png::decode_picture(file, [&asked](std::int32_t, std::int32_t) -> std::uint8_t* {
        asked = true;
        throw std::bad_alloc();
    });
    return asked;
}

TEST(XcfLimits, ACanvasOfAGroupCountsAgainstTheMemoryLimit) {
    EXPECT_TRUE(asksForPixels(withPictureSize("group-that-is-opaque.xcf", 16384, 8192)));
    EXPECT_TRUE(asksForPixels(withPictureSize("group-of-opacity.xcf", 16384, 8191)));
    EXPECT_FALSE(asksForPixels(withPictureSize("group-of-opacity.xcf", 16384, 8192)));
    EXPECT_TRUE(asksForPixels(withPictureSize("groups-apart-in-each-other.xcf", 16384, 5461)));
    EXPECT_FALSE(asksForPixels(withPictureSize("groups-apart-in-each-other.xcf", 16384, 5462)));
}

TEST(XcfLimits, ALayerWhoseTilesTheFileCannotNameIsRefusedBeforeAnythingIsAllocated) {
    Bytes file = readFile(corpus / "good" / "rgb.xcf");
    const std::size_t layer = get32(file, layersIn(file));
    EXPECT_TRUE(asksForPixels(file));
    set32(file, layer, 8192);
    set32(file, layer + 4, 8192);
    EXPECT_FALSE(asksForPixels(file));
}

TEST(XcfLimits, CanvasesOfGroupsAreFilledWithinBounds) {
    Bytes file = withPictureSize("groups.xcf", 11000, 11000);
    EXPECT_TRUE(asksForPixels(file));
    repeatFirstLayer(file);
    EXPECT_FALSE(asksForPixels(file));
    set32(file, 14, 4000);
    EXPECT_TRUE(asksForPixels(file));
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
