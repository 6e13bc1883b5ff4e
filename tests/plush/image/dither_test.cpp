// The noise: against the plain reference on many random cases, and each rule by itself.

#include "operation_test.h"
#include "plush/dither.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int mostAmount = std::numeric_limits<int>::max();

Picture dithered(const Picture& picture, int amount, bool pixelate) {
    const LiveImage image(picture);
    EXPECT_TRUE(ditherImage(*image, amount, pixelate));
    return Picture(*image);
}

TEST(Dither, FollowsTheReferenceOnRandomImagesAndAmounts) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int amounts[] = {1, 2, 5, 16, 127, 128, 254, 255, 256, 1000, 65535, 1 << 30, mostAmount - 1, mostAmount};
    for (int number = 0; number < 2000; ++number) {
        const Picture picture = randomPicture(random, number % 10 == 0 ? 600 : 50, 40);
        const int amount = random() % 2 == 0 ? amounts[random() % std::size(amounts)] : between(random, -3, 300);
        const bool pixelate = random() % 2 == 0;
        const ThreadSetting threads(between(random, 1, mostThreads));
        ASSERT_EQ(dithered(picture, amount, pixelate), referenceDither(picture, amount, pixelate))
            << "case " << number << ": " << picture.width << "x" << picture.height << ", amount " << amount;
    }
}

TEST(Dither, EveryAmountFollowsTheReference) {
    const Picture picture = numberedPicture(64, 32);
    for (int amount = 1; amount <= 1000; ++amount) {
        ASSERT_EQ(dithered(picture, amount, false), referenceDither(picture, amount, false)) << amount;
    }
}

TEST(Dither, AnyNumberOfThreadsGivesTheSameNoise) {
    const Picture picture = numberedPicture(111, 97);
    const Picture expected = referenceDither(picture, 20, false);
    for (int count = -1; count <= mostThreads; ++count) {
        const ThreadSetting threads(count);
        EXPECT_EQ(dithered(picture, 20, false), expected) << count << " threads";
    }
}

TEST(Dither, TheAlphaGetsTheSameNoiseAsTheColours) {
    Picture picture(8, 8);
    std::fill(picture.bytes.begin(), picture.bytes.end(), PixelByte{128});
    const Picture result = dithered(picture, 30, false);
    EXPECT_NE(result, picture);
    for (std::size_t at = 0; at < result.bytes.size(); ++at) {
        EXPECT_EQ(result.bytes[at], result.bytes[at / bytesPerPixel * bytesPerPixel]);
    }
}

TEST(Dither, AnAmountBelowOneOnlyDoubles) {
    const Picture picture = numberedPicture(3, 2);
    for (const int amount : {0, -1, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(dithered(picture, amount, false), picture);
        const Picture doubled = dithered(picture, amount, true);
        EXPECT_EQ(doubled.width, 6);
        EXPECT_EQ(doubled.height, 4);
        EXPECT_EQ(*doubled.at(5, 3), 3);
        EXPECT_EQ(*doubled.at(1, 0), 1);
    }
}

TEST(Dither, WhatWouldBecomeTooLargeStaysAsItIs) {
    PixelByte pixel[bytesPerPixel] = {};
    PlushImage image; // never read beyond its record
    image.width = 1 << 14;
    image.height = (1 << 12) + 1;
    image.pixels = pixel;
    EXPECT_FALSE(ditherImage(image, 0, true));
    EXPECT_EQ(image.width, 1 << 14);
    EXPECT_EQ(image.pixels, pixel);
}

TEST(Dither, AnImageWithoutPixelsIsLeftAlone) {
    PlushImage empty;
    empty.width = 4;
    empty.height = 4;
    EXPECT_TRUE(ditherImage(empty, 5, true));
    EXPECT_EQ(empty.width, 4);
    EXPECT_EQ(empty.pixels, nullptr);
}

} // namespace
