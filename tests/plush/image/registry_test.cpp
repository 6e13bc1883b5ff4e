// The register of live images, and single pixels.

#include "plush/pixels.h"
#include "plush/registry.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

namespace {

using Pixel = std::array<PixelByte, bytesPerPixel>;

/// Frees an image at the end of a test.
struct KillImage {
    void operator()(PlushImage* image) const { killImage(image); }
};
using LiveImage = std::unique_ptr<PlushImage, KillImage>;

Pixel pixelOf(const PlushImage* image, int x, int y) {
    const PixelByte* bytes = getPixel(image, x, y);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

TEST(Registry, ANewImageIsLiveAndOfOneColour) {
    const LiveImage image(createSolidColourImage(3, 2, 10, 20, 30, 40));
    EXPECT_TRUE(isLiveImage(image.get()));
    EXPECT_EQ(image->width, 3);
    EXPECT_EQ(image->height, 2);
    EXPECT_EQ(image->reflectPixels, nullptr);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 3; ++x) EXPECT_EQ(pixelOf(image.get(), x, y), (Pixel{10, 20, 30, 40}));
    }
}

TEST(Registry, AnImageOfFourEqualBytesIsFilledToo) {
    const LiveImage image(createSolidColourImage(2, 2, 7, 7, 7, 7));
    EXPECT_EQ(std::vector<PixelByte>(image->pixels, image->pixels + 16), std::vector<PixelByte>(16, 7));
}

TEST(Registry, SizesBelowOneBecomeOne) {
    for (const auto& [width, height] : {std::pair{0, -5}, std::pair{-2147483647 - 1, 0}}) {
        const LiveImage image(createSolidColourImage(width, height, 1, 2, 3, 4));
        EXPECT_EQ(image->width, 1);
        EXPECT_EQ(image->height, 1);
    }
}

TEST(Registry, KillingAnImageTwiceIsHarmless) {
    PlushImage* image = createSolidColourImage(1, 1, 0, 0, 0, 0);
    killImage(image);
    EXPECT_FALSE(isLiveImage(image));
    EXPECT_FALSE(cleanImage(image));
    killImage(image);
}

TEST(Registry, AddressesThatAreNoImageAreNeitherFreedNorRead) {
    PlushImage stranger;
    auto* nowhere = reinterpret_cast<PlushImage*>(std::uintptr_t{16});
    for (PlushImage* address : {static_cast<PlushImage*>(nullptr), nowhere, &stranger}) {
        killImage(address);
        EXPECT_FALSE(isLiveImage(address));
        EXPECT_FALSE(cleanImage(address));
    }
}

TEST(Registry, KillingFreesTheReflectionMapToo) {
    PlushImage* image = createSolidColourImage(1, 1, 0, 0, 0, 0);
    image->reflectPixels = new PixelByte[bytesPerPixel];
    killImage(image); // a leak would be reported by the sanitizers
    EXPECT_FALSE(isLiveImage(image));
}

TEST(Registry, ARegisteredImageIsLiveAndNullIsIgnored) {
    auto* image = new PlushImage;
    image->width = 1;
    image->height = 1;
    image->pixels = new PixelByte[bytesPerPixel]{1, 2, 3, 4};
    registerImage(image);
    const LiveImage owner(image);
    EXPECT_TRUE(cleanImage(image));
    registerImage(nullptr);
    EXPECT_FALSE(isLiveImage(nullptr));
}

TEST(Registry, AnEmptyImageIsClean) {
    const LiveImage image(new PlushImage);
    registerImage(image.get());
    EXPECT_TRUE(cleanImage(image.get()));
}

TEST(Registry, ABrokenImageIsEmptiedAndUnusableOnce) {
    for (const auto& [width, height] : {std::pair{2, 0}, std::pair{0, 2}, std::pair{-1, 2}, std::pair{2, -1}}) {
        const LiveImage image(createSolidColourImage(2, 2, 1, 1, 1, 1));
        const std::unique_ptr<PixelByte[]> pixels(image->pixels); // what is given up stays with its owner
        image->width = width;
        image->height = height;
        EXPECT_FALSE(cleanImage(image.get())) << width << " by " << height;
        EXPECT_EQ(image->width, 0);
        EXPECT_EQ(image->height, 0);
        EXPECT_EQ(image->pixels, nullptr);
        EXPECT_TRUE(cleanImage(image.get()));
    }
}

TEST(Registry, APositiveSizeWithoutPixelsIsBroken) {
    const LiveImage image(new PlushImage);
    registerImage(image.get());
    image->width = 2;
    image->height = 3;
    EXPECT_FALSE(cleanImage(image.get()));
    EXPECT_EQ(image->width, 0);
}

TEST(Registry, AnImageMayHoldOneGibibyteAndNoMore) {
    EXPECT_TRUE(imageSizeAllowed(16384, 16384));
    EXPECT_FALSE(imageSizeAllowed(16384, 16385));
    EXPECT_TRUE(imageSizeAllowed(268435456, 1));
    EXPECT_FALSE(imageSizeAllowed(268435457, 0));
    EXPECT_FALSE(imageSizeAllowed(2147483647, 2147483647));
    EXPECT_TRUE(imageSizeAllowed(-1, -1));
}

TEST(Pixels, WritingOutsideTheImageDoesNothing) {
    const LiveImage image(createSolidColourImage(2, 2, 5, 5, 5, 5));
    for (const auto& [x, y] : {std::pair{-1, 0}, std::pair{0, -1}, std::pair{2, 0}, std::pair{0, 2}}) {
        setPixel(image.get(), x, y, 1, 2, 3, 4);
    }
    EXPECT_EQ(std::vector<PixelByte>(image->pixels, image->pixels + 16), std::vector<PixelByte>(16, 5));
    setPixel(nullptr, 0, 0, 1, 2, 3, 4);
    PlushImage empty;
    empty.width = 1;
    empty.height = 1;
    setPixel(&empty, 0, 0, 1, 2, 3, 4);
}

TEST(Pixels, WritingSetsThePixelAndNoOther) {
    const LiveImage image(createSolidColourImage(2, 2, 5, 5, 5, 5));
    setPixel(image.get(), 1, 0, 1, 2, 3, 4);
    EXPECT_EQ(pixelOf(image.get(), 0, 0), (Pixel{5, 5, 5, 5}));
    EXPECT_EQ(pixelOf(image.get(), 1, 0), (Pixel{1, 2, 3, 4}));
    EXPECT_EQ(pixelOf(image.get(), 0, 1), (Pixel{5, 5, 5, 5}));
    EXPECT_EQ(pixelOf(image.get(), 1, 1), (Pixel{5, 5, 5, 5}));
}

TEST(Pixels, ReadingOutsideTheImageGivesATransparentPixel) {
    const LiveImage image(createSolidColourImage(2, 2, 5, 5, 5, 5));
    const Pixel transparent{};
    for (const auto& [x, y] : {std::pair{-1, 0}, std::pair{0, -1}, std::pair{2, 0}, std::pair{0, 2}}) {
        EXPECT_EQ(pixelOf(image.get(), x, y), transparent);
    }
    EXPECT_EQ(pixelOf(nullptr, 0, 0), transparent);
    PlushImage empty;
    empty.width = 1;
    empty.height = 1;
    EXPECT_EQ(pixelOf(&empty, 0, 0), transparent);
}

} // namespace
