// Drawing rectangles of images: against the plain reference on many random cases, and each rule by itself.

#include "operation_test.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

Picture drawn(const Picture& target, const Picture& image, const PixelRect& rect, int x, int y, Blend blend,
              float scale) {
    const LiveImage to(target);
    const LiveImage from(image);
    blitImageRect(*to, *from, rect, x, y, blend, scale);
    return Picture(*to);
}

std::vector<int> reds(const Picture& picture) {
    std::vector<int> result;
    for (int x = 0; x < picture.width; ++x) result.push_back(*picture.at(x, 0));
    return result;
}

TEST(BlitRect, FollowsTheReferenceOnRandomRectanglesPlacesAndScales) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr std::array scales = {1.0F, 1.0F, 2.0F, 0.5F, 1.5F, 0.3F, 3.7F, 0.01F, -1.0F, -3.0F, 0.0F};
    for (int number = 0; number < 4000; ++number) {
        const Picture target = randomPicture(random, 50, 50);
        const Picture image = randomPicture(random, 40, 40);
        const PixelRect rect{between(random, -10, 45), between(random, -10, 45), between(random, -2, 60),
                             between(random, -2, 60)};
        const int x = between(random, -60, 60);
        const int y = between(random, -60, 60);
        const Blend blend = random() % 2 == 0 ? Blend::Over : Blend::Replace;
        const float scale = random() % 2 == 0 ? scales[random() % scales.size()]
                                              : static_cast<float>(between(random, -200, 800)) / 173.0F;
        const ThreadSetting threads(between(random, 1, mostThreads));
        ASSERT_EQ(drawn(target, image, rect, x, y, blend, scale),
                  referenceBlitRect(target, image, rect, x, y, blend, scale))
            << "case " << number << ": " << rect.width << "x" << rect.height << " from " << rect.x << ", " << rect.y
            << " at " << x << ", " << y << ", scale " << scale;
    }
}

TEST(BlitRect, EveryPixelOfAnEnlargedRectangleHasTheSameSize) {
    const Picture result =
        drawn(Picture(9, 1), numberedPicture(5, 1), PixelRect{1, 0, 3, 1}, 1, 0, Blend::Replace, 2.0F);
    EXPECT_EQ(reds(result), (std::vector<int>{0, 2, 2, 3, 3, 4, 4, 0, 0}));
}

TEST(BlitRect, HalfOfOnePixelIsOnePixel) {
    const Picture result =
        drawn(Picture(3, 1), numberedPicture(1, 1), PixelRect{0, 0, 1, 1}, 1, 0, Blend::Replace, 0.5F);
    EXPECT_EQ(reds(result), (std::vector<int>{0, 1, 0}));
}

TEST(BlitRect, ARectangleIsCutToTheImageBeforeItIsPlaced) {
    const Picture result =
        drawn(Picture(4, 1), numberedPicture(2, 1), PixelRect{-3, -1, 9, 9}, 1, 0, Blend::Replace, 1.0F);
    EXPECT_EQ(reds(result), (std::vector<int>{0, 1, 2, 0}));
}

TEST(BlitRect, EnormousNumbersStayInsideBothImages) {
    const Picture target = numberedPicture(4, 3);
    const Picture image = numberedPicture(3, 4);
    constexpr float largest = std::numeric_limits<float>::max();
    constexpr float smallest = std::numeric_limits<float>::denorm_min();
    for (const int from : {least, -1, 0, 2, most}) {
        for (const int size : {least, 0, 1, most}) {
            for (const int place : {least, -1, 0, most}) {
                for (const float scale : {1.0F, largest, -largest, 1e9F, 3e10F, smallest, -smallest}) {
                    const PixelRect rect{from, from, size, size};
                    EXPECT_EQ(drawn(target, image, rect, place, place, Blend::Over, scale),
                              referenceBlitRect(target, image, rect, place, place, Blend::Over, scale))
                        << from << ", " << size << ", " << place << ", " << scale;
                }
            }
        }
    }
}

TEST(BlitRect, ScalesThatAreNoNumberDrawNothing) {
    const Picture target = numberedPicture(4, 3);
    for (const float scale : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity(), 0.0F, -0.0F}) {
        EXPECT_EQ(drawn(target, Picture(2, 2), PixelRect{0, 0, 2, 2}, 0, 0, Blend::Replace, scale), target) << scale;
    }
}

TEST(BlitRect, AnImageDrawnOnItselfIsReadAsItWasBefore) {
    const Picture before = numberedPicture(8, 6);
    for (const float scale : {1.0F, 1.5F}) {
        const LiveImage image(before);
        blitImageRect(*image, *image, PixelRect{0, 0, 6, 5}, 1, 1, Blend::Replace, scale);
        EXPECT_EQ(Picture(*image),
                  referenceBlitRect(before, before, PixelRect{0, 0, 6, 5}, 1, 1, Blend::Replace, scale));
    }
}

TEST(BlitRect, ImagesWithoutPixelsAreLeftAlone) {
    const Picture before = numberedPicture(2, 2);
    const LiveImage image(before);
    PlushImage empty;
    empty.width = 2;
    empty.height = 2;
    blitImageRect(empty, *image, PixelRect{0, 0, 2, 2}, 0, 0, Blend::Over, 1.0F);
    blitImageRect(*image, empty, PixelRect{0, 0, 2, 2}, 0, 0, Blend::Over, 1.0F);
    EXPECT_EQ(Picture(*image), before);
}

} // namespace
