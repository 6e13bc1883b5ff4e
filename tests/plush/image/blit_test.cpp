// The blit: against the plain reference on many random cases, and each rule by itself.

#include "blit_reference.h"
#include "random_cases.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

float scaleAtRandom(std::mt19937& random) {
    constexpr std::array plain = {1.0F, 1.0F, 1.0F, 2.0F, 0.5F, 3.0F, 1.5F, 0.25F, -1.0F, 0.0F};
    if (random() % 2 == 0) return plain[random() % plain.size()];
    return static_cast<float>(between(random, -200, 800)) / 173.0F;
}

float rotationAtRandom(std::mt19937& random) {
    constexpr std::array plain = {0.0F, 0.0F, 0.0F, 90.0F, 180.0F, 270.0F, 360.0F, -360.0F, 45.0F, 720.0005F, -90.0F};
    if (random() % 2 == 0) return plain[random() % plain.size()];
    return static_cast<float>(between(random, -80000, 80000)) / 97.0F;
}

/// A target of one colour.
OwnedImage plainTarget(int width, int height) {
    OwnedImage target(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) std::copy_n(std::array<PixelByte, 4>{9, 9, 9, 9}.data(), 4, target.pixel(x, y));
    }
    return target;
}

/// An image whose red and green bytes are the pixel's column and row from 1, and whose alpha is opaque.
OwnedImage numberedImage(int width, int height) {
    OwnedImage image(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::array<PixelByte, 4> colour = {static_cast<PixelByte>(x + 1), static_cast<PixelByte>(y + 1), 0,
                                                     255};
            std::copy_n(colour.data(), 4, image.pixel(x, y));
        }
    }
    return image;
}

TEST(Blit, FollowsTheReferenceOnRandomImagesPlacesScalesAndRotations) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int cases = 3000;
    for (int number = 0; number < cases; ++number) {
        OwnedImage target(between(random, 1, 60), between(random, 1, 60));
        OwnedImage image(between(random, 1, 40), between(random, 1, 40));
        target.fillAtRandom(random);
        image.fillAtRandom(random);
        const int x = between(random, -50, 70);
        const int y = between(random, -50, 70);
        const Blend blend = random() % 2 == 0 ? Blend::Over : Blend::Replace;
        const float scale = scaleAtRandom(random);
        const float rotation = rotationAtRandom(random);
        const ThreadSetting threads(between(random, 1, mostThreads));

        OwnedImage expected = target;
        referenceBlit(expected.image(), image.image(), x, y, blend, scale, rotation);
        blitImage(target.image(), image.image(), x, y, blend, scale, rotation);
        ASSERT_EQ(target.bytes(), expected.bytes())
            << "case " << number << ": " << image.image().width << "x" << image.image().height << " on "
            << target.image().width << "x" << target.image().height << " at " << x << ", " << y << ", scale " << scale
            << ", rotation " << rotation << ", blend " << static_cast<int>(blend);
    }
}

TEST(Blit, AnImageAsWideAsTheTargetIsDrawnAtAnyHeight) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int tallest = 12;
    for (const int width : {1, 7, 640}) {
        for (int y = -tallest; y <= tallest; ++y) {
            OwnedImage image(width, between(random, 1, tallest));
            OwnedImage target(width, between(random, 1, tallest));
            image.fillAtRandom(random);
            target.fillAtRandom(random);
            for (const int x : {-1, 0, 1}) {
                for (const Blend blend : {Blend::Replace, Blend::Over}) {
                    OwnedImage drawn = target;
                    OwnedImage expected = target;
                    blitImage(drawn.image(), image.image(), x, y, blend, 1.0F, 0.0F);
                    referenceBlit(expected.image(), image.image(), x, y, blend, 1.0F, 0.0F);
                    ASSERT_EQ(drawn.bytes(), expected.bytes()) << width << " wide, at " << x << ", " << y;
                }
            }
        }
    }
}

TEST(Blit, LargeBlitsGiveTheSameBytesWithAnyNumberOfThreads) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    OwnedImage image(601, 307); // more pixels than the threshold for threads
    OwnedImage target(601, 480);
    image.fillAtRandom(random);
    target.fillAtRandom(random);
    struct Way {
        int x;
        int y;
        float scale;
        float rotation;
    };
    for (const Way& way : {Way{3, 5, 1.0F, 0.0F}, Way{-20, -7, 1.0F, 0.0F}, Way{0, -3, 1.0F, 0.0F},
                           Way{2, 1, 1.7F, 0.0F}, Way{10, 10, 1.1F, 33.0F}}) {
        for (const Blend blend : {Blend::Replace, Blend::Over}) {
            OwnedImage expected = target;
            referenceBlit(expected.image(), image.image(), way.x, way.y, blend, way.scale, way.rotation);
            for (int count = 1; count <= mostThreads; ++count) {
                const ThreadSetting threads(count);
                OwnedImage drawn = target;
                blitImage(drawn.image(), image.image(), way.x, way.y, blend, way.scale, way.rotation);
                ASSERT_EQ(drawn.bytes(), expected.bytes()) << count << " threads, scale " << way.scale;
            }
        }
    }
}

TEST(Blit, AThreadCountBelowOneIsOneWorker) {
    const OwnedImage image = numberedImage(500, 400);
    for (const int count : {0, -1, -7, std::numeric_limits<int>::min()}) {
        const ThreadSetting threads(count);
        OwnedImage target = plainTarget(500, 400);
        blitImage(target.image(), image.image(), 0, 0, Blend::Over, 1.0F, 0.0F);
        EXPECT_EQ(target.bytes(), image.bytes()) << count << " threads";
    }
}

TEST(Blit, AnAbsurdThreadCountIsNoHarm) {
    const ThreadSetting threads(std::numeric_limits<int>::max());
    const OwnedImage image = numberedImage(10, 20000);
    OwnedImage target = plainTarget(10, 20000);
    blitImage(target.image(), image.image(), 0, 0, Blend::Over, 1.0F, 0.0F);
    EXPECT_EQ(target.bytes(), image.bytes());
}

TEST(Blit, ATransparentPixelReplacesWithoutBlendingAndVanishesWithIt) {
    OwnedImage image(1, 1);
    OwnedImage replaced = plainTarget(1, 1);
    OwnedImage over = plainTarget(1, 1);
    blitImage(replaced.image(), image.image(), 0, 0, Blend::Replace, 1.0F, 0.0F);
    blitImage(over.image(), image.image(), 0, 0, Blend::Over, 1.0F, 0.0F);
    EXPECT_EQ(replaced.bytes(), (std::vector<PixelByte>{0, 0, 0, 0}));
    EXPECT_EQ(over.bytes(), (std::vector<PixelByte>{9, 9, 9, 9}));
}

TEST(Blit, AScaleOfZeroDrawsNothing) {
    const OwnedImage image = numberedImage(3, 3);
    OwnedImage target = plainTarget(3, 3);
    const OwnedImage before = target;
    blitImage(target.image(), image.image(), 0, 0, Blend::Replace, 0.0F, 0.0F);
    blitImage(target.image(), image.image(), 0, 0, Blend::Replace, -0.0F, 45.0F);
    EXPECT_EQ(target.bytes(), before.bytes());
}

TEST(Blit, ANegativeScaleDrawsNothingStraightAndAHalfTurnedPictureTurned) {
    const OwnedImage image = numberedImage(4, 4);
    OwnedImage straight = plainTarget(8, 8);
    const OwnedImage before = straight;
    blitImage(straight.image(), image.image(), 4, 4, Blend::Replace, -1.0F, 0.0F);
    EXPECT_EQ(straight.bytes(), before.bytes());

    OwnedImage turned = plainTarget(8, 8);
    blitImage(turned.image(), image.image(), 4, 4, Blend::Replace, -1.0F, 180.0F);
    EXPECT_NE(turned.bytes(), before.bytes());
}

TEST(Blit, WholeTurnsTakeTheUnrotatedWay) {
    const OwnedImage image = numberedImage(3, 2);
    OwnedImage expected = plainTarget(6, 6);
    blitImage(expected.image(), image.image(), 1, 1, Blend::Replace, 1.0F, 0.0F);
    for (const float rotation : {360.0F, -360.0F, 720.0F, 359.9995F, -0.0005F, 0.000005F}) {
        OwnedImage target = plainTarget(6, 6);
        blitImage(target.image(), image.image(), 1, 1, Blend::Replace, 1.0F, rotation);
        EXPECT_EQ(target.bytes(), expected.bytes()) << rotation;
    }
}

TEST(Blit, ARotationJustBeyondTheToleranceIsARotation) {
    // The turned way draws from the rounded centre and so leaves other edge pixels than the straight one.
    const OwnedImage image = numberedImage(3, 3);
    OwnedImage straight = plainTarget(8, 8);
    OwnedImage turned = plainTarget(8, 8);
    blitImage(straight.image(), image.image(), 2, 2, Blend::Replace, 2.0F, 0.0F);
    blitImage(turned.image(), image.image(), 2, 2, Blend::Replace, 2.0F, 720.0005F);
    OwnedImage expected = plainTarget(8, 8);
    referenceBlit(expected.image(), image.image(), 2, 2, Blend::Replace, 2.0F, 720.0005F);
    EXPECT_EQ(turned.bytes(), expected.bytes());
    EXPECT_NE(turned.bytes(), straight.bytes());
}

TEST(Blit, TheToleranceForWholeTurnsEndsAtItsLimits) {
    const OwnedImage image = numberedImage(3, 3);
    const auto drawn = [&image](float rotation) {
        OwnedImage target = plainTarget(8, 8);
        blitImage(target.image(), image.image(), 2, 2, Blend::Replace, 2.0F, rotation);
        return target.bytes();
    };
    const auto straight = drawn(0.0F);
    for (const float none : {0.9e-5F, 359.9991F, -0.0008F, 719.9992F}) EXPECT_EQ(drawn(none), straight) << none;
    for (const float some : {1.1e-5F, 359.9989F, -0.0012F, 719.9988F}) EXPECT_NE(drawn(some), straight) << some;
}

TEST(Blit, DoublingRoundsToTheNearestSourcePixel) {
    // Columns 0 to 5 of the drawn rectangle ask for 0, 0.5, 1, 1.5, 2, 2.5; halves round up and 3 is outside.
    const OwnedImage image = numberedImage(3, 1);
    OwnedImage target = plainTarget(7, 1);
    blitImage(target.image(), image.image(), 0, 0, Blend::Replace, 2.0F, 0.0F);
    std::vector<int> reds;
    for (int x = 0; x < 7; ++x) reds.push_back(*target.pixel(x, 0));
    EXPECT_EQ(reds, (std::vector<int>{1, 2, 2, 3, 3, 9, 9}));
}

TEST(Blit, AQuarterTurnTurnsTheColumnsIntoRows) {
    const OwnedImage image = numberedImage(3, 3);
    OwnedImage target = plainTarget(5, 5);
    blitImage(target.image(), image.image(), 1, 1, Blend::Replace, 1.0F, 90.0F);
    OwnedImage expected = plainTarget(5, 5);
    referenceBlit(expected.image(), image.image(), 1, 1, Blend::Replace, 1.0F, 90.0F);
    EXPECT_EQ(target.bytes(), expected.bytes());
    EXPECT_EQ(*target.pixel(2, 1), 1) << "going down the target goes along the source's row";
}

TEST(Blit, WhatFallsOutsideIsCutOffOnEverySide) {
    const OwnedImage image = numberedImage(4, 4);
    for (const auto& [x, y] : {std::pair{-2, -2}, std::pair{2, -2}, std::pair{-2, 2}, std::pair{2, 2}}) {
        OwnedImage target = plainTarget(4, 4);
        blitImage(target.image(), image.image(), x, y, Blend::Replace, 1.0F, 0.0F);
        for (int py = 0; py < 4; ++py) {
            for (int px = 0; px < 4; ++px) {
                const bool covered = px >= x && px < x + 4 && py >= y && py < y + 4;
                EXPECT_EQ(*target.pixel(px, py), covered ? px - x + 1 : 9) << px << ", " << py;
            }
        }
    }
}

TEST(Blit, TheTestForMissingTheTargetIsMadeAtTheImagesOwnSize) {
    const OwnedImage image = numberedImage(2, 2);
    OwnedImage target = plainTarget(8, 8);
    const OwnedImage before = target;
    blitImage(target.image(), image.image(), -2, 0, Blend::Replace, 4.0F, 0.0F); // scaled it would reach
    EXPECT_EQ(target.bytes(), before.bytes());
    EXPECT_FALSE(touches(target.image(), image.image(), -2, 0));
    EXPECT_TRUE(touches(target.image(), image.image(), -1, -1));
    EXPECT_TRUE(touches(target.image(), image.image(), 7, 7));
    EXPECT_FALSE(touches(target.image(), image.image(), 8, 0));
    EXPECT_FALSE(touches(target.image(), image.image(), 0, 8));
}

TEST(Blit, PositionsAtTheEndsOfTheIntegersMiss) {
    const OwnedImage image = numberedImage(2, 2);
    OwnedImage target = plainTarget(4, 4);
    const OwnedImage before = target;
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    for (const int x : {least, 0, most}) {
        for (const int y : {least, 0, most}) {
            if (x == 0 && y == 0) continue;
            for (const float rotation : {0.0F, 30.0F}) {
                blitImage(target.image(), image.image(), x, y, Blend::Over, 2.0F, rotation);
            }
        }
    }
    EXPECT_EQ(target.bytes(), before.bytes());
}

TEST(Blit, NumbersThatAreNoneAndInfinitiesDrawNothing) {
    const OwnedImage image = numberedImage(2, 2);
    OwnedImage target = plainTarget(4, 4);
    const OwnedImage before = target;
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinite = std::numeric_limits<float>::infinity();
    for (const float odd : {nan, infinite, -infinite}) {
        blitImage(target.image(), image.image(), 0, 0, Blend::Over, odd, 0.0F);
        blitImage(target.image(), image.image(), 0, 0, Blend::Over, odd, 45.0F);
        blitImage(target.image(), image.image(), 0, 0, Blend::Over, 1.0F, odd);
        blitImage(target.image(), image.image(), 0, 0, Blend::Over, 2.0F, odd);
    }
    EXPECT_EQ(target.bytes(), before.bytes());
}

TEST(Blit, EnormousAndTinyScalesAndRotationsStayInsideTheTarget) {
    constexpr float largest = std::numeric_limits<float>::max();
    constexpr float smallest = std::numeric_limits<float>::denorm_min();
    OwnedImage image = numberedImage(5, 3);
    for (const float scale : {largest, -largest, 0.3F * largest, 1e30F, 1e9F, 3e7F, smallest, -smallest, 1e-30F}) {
        for (const float rotation : {0.0F, 45.0F, 90.0F, 180.0F, largest, -largest, 1e9F, smallest}) {
            for (const int position : {-2, 0, 3}) {
                OwnedImage target = plainTarget(4, 4);
                OwnedImage expected = target;
                blitImage(target.image(), image.image(), position, position, Blend::Over, scale, rotation);
                referenceBlit(expected.image(), image.image(), position, position, Blend::Over, scale, rotation);
                EXPECT_EQ(target.bytes(), expected.bytes()) << "scale " << scale << ", rotation " << rotation;
            }
        }
    }
}

TEST(Blit, AnImageDrawnOnItselfIsReadAsItWasBefore) {
    OwnedImage image = numberedImage(6, 6);
    const OwnedImage source = image;
    OwnedImage expected = image;
    referenceBlit(expected.image(), source.image(), 1, 2, Blend::Replace, 1.0F, 0.0F);
    blitImage(image.image(), image.image(), 1, 2, Blend::Replace, 1.0F, 0.0F);
    EXPECT_EQ(image.bytes(), expected.bytes());
}

TEST(Blit, ImagesWithoutPixelsAreLeftAlone) {
    OwnedImage image = numberedImage(2, 2);
    PlushImage empty;
    empty.width = 2;
    empty.height = 2;
    const OwnedImage before = image;
    blitImage(empty, image.image(), 0, 0, Blend::Over, 1.0F, 0.0F);
    blitImage(image.image(), empty, 0, 0, Blend::Over, 1.0F, 0.0F);
    EXPECT_EQ(image.bytes(), before.bytes());
}

} // namespace
