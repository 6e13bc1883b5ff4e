// The two bilinear filters: against the plain references on many random cases, and each rule by itself.

#include "operation_test.h"
#include "plush/grid_fill.h"
#include "plush/upscale.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();

/// Sets the distance of the grid for the length of a test.
class StepSetting {
public:
    explicit StepSetting(int step) : before_(samplingStep) { samplingStep = step; }
    StepSetting(const StepSetting&) = delete;
    StepSetting& operator=(const StepSetting&) = delete;
    ~StepSetting() { samplingStep = before_; }

private:
    int before_;
};

Picture upscaled(const Picture& picture, float factor) {
    const LiveImage image(picture);
    EXPECT_TRUE(upscalePlushImage(*image, factor));
    return Picture(*image);
}

Picture filled(const Picture& picture, int step) {
    const StepSetting setting(step);
    const LiveImage image(picture);
    bilinearInPlace(*image);
    return Picture(*image);
}

TEST(Upscale, FollowsTheReferenceOnRandomImagesAndFactors) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr float factors[] = {1.5F, 2.0F, 3.0F, 4.0F, 1.0001F, 1.25F};
    for (int number = 0; number < 1500; ++number) {
        const Picture picture = randomPicture(random, number % 20 == 0 ? 400 : 30, 30);
        const float factor = random() % 2 == 0 ? factors[random() % std::size(factors)]
                                               : static_cast<float>(between(random, 100, 900)) / 123.0F;
        const ThreadSetting threads(between(random, 1, mostThreads));
        ASSERT_EQ(upscaled(picture, factor), referenceUpscale(picture, factor))
            << "case " << number << ": " << picture.width << "x" << picture.height << ", factor " << factor;
    }
}

TEST(Upscale, AnyNumberOfThreadsGivesTheSameBytes) {
    const Picture picture = numberedPicture(131, 77);
    const Picture expected = referenceUpscale(picture, 2.3F);
    for (int count = -1; count <= mostThreads; ++count) {
        const ThreadSetting threads(count);
        EXPECT_EQ(upscaled(picture, 2.3F), expected) << count << " threads";
    }
}

TEST(Upscale, FactorsOfOneAndBelowChangeNothing) {
    const Picture picture = numberedPicture(3, 3);
    for (const float factor : {1.0F, 0.5F, 0.0F, -2.0F, -infinite, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(upscaled(picture, factor), picture) << factor;
    }
}

TEST(Upscale, TheSizeIsRoundedDown) {
    const Picture result = upscaled(numberedPicture(3, 3), 1.5F);
    EXPECT_EQ(result.width, 4);
    EXPECT_EQ(result.height, 4);
}

TEST(Upscale, TheFirstColumnGoesOnInAStraightLineAndMayOvershoot) {
    // The first column of two lies at -0.25: 1.25 times the left pixel less a quarter of the right one.
    Picture picture(2, 1);
    picture.bytes = {100, 0, 255, 255, 200, 40, 0, 255};
    const Picture result = upscaled(picture, 2.0F);
    EXPECT_EQ(result.at(0, 0)[0], 75);
    EXPECT_EQ(result.at(0, 0)[1], 256 - 10) << "below 0 the low 8 bits stay";
    EXPECT_EQ(result.at(0, 0)[2], 318 - 256) << "above 255 too";
}

TEST(Upscale, WhatWouldBecomeTooLargeStaysAsItIs) {
    const Picture picture = numberedPicture(3, 3);
    const LiveImage image(picture);
    for (const float factor : {1e4F, 1e9F, 1e20F, std::numeric_limits<float>::max(), infinite}) {
        EXPECT_FALSE(upscalePlushImage(*image, factor)) << factor;
        EXPECT_EQ(Picture(*image), picture);
    }
}

TEST(Upscale, TheReflectionMapStays) {
    const LiveImage image(numberedPicture(2, 2));
    image->reflectPixels = new PixelByte[bytesPerPixel]{1, 2, 3, 4};
    image->reflectWidth = 1;
    image->reflectHeight = 1;
    EXPECT_TRUE(upscalePlushImage(*image, 2.0F));
    EXPECT_EQ(image->reflectWidth, 1);
    EXPECT_EQ(image->reflectPixels[2], 3);
}

TEST(Upscale, AnImageWithoutPixelsIsLeftAlone) {
    PlushImage empty;
    empty.width = 4;
    empty.height = 4;
    EXPECT_TRUE(upscalePlushImage(empty, 2.0F));
    EXPECT_EQ(empty.width, 4);
}

TEST(GridFill, FollowsTheReferenceOnRandomImagesAndSteps) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int number = 0; number < 2000; ++number) {
        const Picture picture = randomPicture(random, number % 20 == 0 ? 700 : 50, 50);
        const int step = random() % 10 == 0 ? between(random, 1, 100) : between(random, 1, 9);
        const ThreadSetting threads(between(random, 1, mostThreads));
        ASSERT_EQ(filled(picture, step), referenceGridFill(picture, step))
            << "case " << number << ": " << picture.width << "x" << picture.height << ", step " << step;
    }
}

TEST(GridFill, AnyNumberOfThreadsGivesTheSameBytes) {
    const Picture picture = numberedPicture(133, 71);
    const Picture expected = referenceGridFill(picture, 4);
    for (int count = 1; count <= mostThreads; ++count) {
        const ThreadSetting threads(count);
        EXPECT_EQ(filled(picture, 4), expected) << count << " threads";
    }
}

TEST(GridFill, BetweenTwoGridPixelsTheColourChangesEvenly) {
    Picture picture(5, 1);
    picture.bytes.assign(20, 77);
    for (int channel = 0; channel < bytesPerPixel; ++channel) {
        picture.at(0, 0)[channel] = 0;
        picture.at(4, 0)[channel] = 200;
    }
    const Picture result = filled(picture, 4);
    for (int x = 0; x < 5; ++x) EXPECT_EQ(*result.at(x, 0), 50 * x);
}

TEST(GridFill, EveryPixelBehindTheLastGridLinesRepeatsThem) {
    const Picture picture = numberedPicture(3, 3);
    const Picture result = filled(picture, std::numeric_limits<int>::max());
    for (int at = 0; at < 9; ++at) EXPECT_EQ(*result.at(at % 3, at / 3), 1);
}

TEST(GridFill, NothingHappensWithoutThreadsWithoutAStepAndOnAGridOfEveryPixel) {
    Picture picture = numberedPicture(9, 9);
    picture.at(1, 1)[0] = 200; // which a fill would change
    ASSERT_NE(filled(picture, 4), picture);
    for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
        const ThreadSetting none(count);
        EXPECT_EQ(filled(picture, 4), picture) << count << " threads";
    }
    EXPECT_EQ(filled(picture, 0), picture);
    EXPECT_EQ(filled(picture, -4), picture);
    EXPECT_EQ(filled(picture, 1), picture);
    PlushImage empty;
    empty.width = 9;
    empty.height = 9;
    bilinearInPlace(empty);
    EXPECT_EQ(empty.pixels, nullptr);
}

} // namespace
