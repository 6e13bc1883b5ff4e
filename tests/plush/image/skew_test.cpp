// Drawing images on quadrilaterals: against the plain reference on many random cases, and each rule by itself.

#include "operation_test.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

Picture drawn(const Corners& corners, const Picture& input, const Picture& output) {
    const LiveImage from(input);
    const LiveImage to(output);
    skewImage(corners, *from, *to);
    return Picture(*to);
}

Corner cornerAtRandom(std::mt19937& random, int least, int most) {
    const int x = between(random, least, most);
    return {x, between(random, least, most)};
}

Corners cornersAtRandom(std::mt19937& random, int least, int most) {
    return {cornerAtRandom(random, least, most), cornerAtRandom(random, least, most),
            cornerAtRandom(random, least, most), cornerAtRandom(random, least, most)};
}

TEST(Skew, FollowsTheReferenceOnRandomCornersNearAndFar) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int reaches[] = {3, 20, 60, 60, 60, 1000, 4000, 5000, 100000, 1000000000};
    for (int number = 0; number < 4000; ++number) {
        const Picture input = randomPicture(random, 30, 30);
        const Picture output = randomPicture(random, 60, 60);
        const int reach = reaches[random() % std::size(reaches)];
        const Corners corners = cornersAtRandom(random, -reach / 3, reach);
        const ThreadSetting threads(between(random, 1, mostThreads));
        ASSERT_EQ(drawn(corners, input, output), referenceSkew(corners, input, output))
            << "case " << number << ": lt " << corners.leftTop.x << ", " << corners.leftTop.y << ", rt "
            << corners.rightTop.x << ", " << corners.rightTop.y << ", lb " << corners.leftBottom.x << ", "
            << corners.leftBottom.y << ", rb " << corners.rightBottom.x << ", " << corners.rightBottom.y;
    }
}

TEST(Skew, FollowsTheReferenceForThinTrianglesAcrossAWholeFrame) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Picture input = numberedPicture(20, 20);
    const Picture output(900, 40);
    for (int number = 0; number < 60; ++number) {
        const auto y = [&] { return between(random, 18, 22); };
        const Corners corners{{between(random, -1500, 100), y()},
                              {between(random, 500, 2500), y()},
                              {between(random, -1500, 900), y()},
                              {between(random, -1500, 2500), y()}};
        ASSERT_EQ(drawn(corners, input, output), referenceSkew(corners, input, output)) << "case " << number;
    }
}

TEST(Skew, AnyNumberOfThreadsGivesTheSameBytes) {
    const Picture input = numberedPicture(37, 23);
    const Picture output(211, 163);
    const Corners corners{{5, 9}, {190, 30}, {20, 150}, {205, 120}};
    const Picture expected = referenceSkew(corners, input, output);
    for (int count = -1; count <= mostThreads; ++count) {
        const ThreadSetting threads(count);
        EXPECT_EQ(drawn(corners, input, output), expected) << count << " threads";
    }
}

TEST(Skew, TheCornersShowTheCornersOfTheImage) {
    const Picture result = drawn({{0, 0}, {9, 0}, {0, 9}, {9, 9}}, numberedPicture(5, 7), Picture(12, 12));
    EXPECT_EQ(*result.at(0, 0), 1);
    EXPECT_EQ(*result.at(9, 0), 5);
    EXPECT_EQ(result.at(0, 9)[1], 7);
    EXPECT_EQ(*result.at(9, 9), 5);
    EXPECT_EQ(result.at(9, 9)[1], 7);
    EXPECT_EQ(result.at(10, 5)[3], 0) << "outside stays as it was";
}

TEST(Skew, CornersOnOneLineDrawNothing) {
    const Picture output = numberedPicture(10, 10);
    EXPECT_EQ(drawn({{1, 1}, {3, 3}, {5, 5}, {8, 8}}, Picture(4, 4), output), output);
    EXPECT_EQ(drawn({{4, 4}, {4, 4}, {4, 4}, {4, 4}}, Picture(4, 4), output), output);
}

TEST(Skew, OneDegenerateTriangleLeavesTheOther) {
    const Corners corners{{0, 0}, {8, 0}, {0, 8}, {4, 4}}; // the second half has no area
    const Picture input = numberedPicture(4, 4);
    const Picture result = drawn(corners, input, Picture(10, 10));
    EXPECT_EQ(result, referenceSkew(corners, input, Picture(10, 10)));
    EXPECT_EQ(result.at(1, 1)[3], 255);
}

TEST(Skew, AnImageDrawnOnItselfIsReadAsItWasBefore) {
    const Picture before = numberedPicture(20, 20);
    const Corners corners{{3, 0}, {19, 4}, {0, 17}, {18, 19}};
    for (const int count : {1, 5}) {
        const ThreadSetting threads(count);
        const LiveImage image(before);
        skewImage(corners, *image, *image);
        EXPECT_EQ(Picture(*image), referenceSkew(corners, before, before));
    }
}

TEST(Skew, CornersAtTheEndsOfTheIntegersAreNoHarm) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const Picture input = numberedPicture(3, 3);
    const Picture output = numberedPicture(7, 5);
    const int ends[] = {least, 0, most};
    for (int number = 0; number < 6561; ++number) { // every end for every coordinate
        int digits = number;
        const auto end = [&] {
            const int value = ends[digits % 3];
            digits /= 3;
            return value;
        };
        Corners corners;
        for (Corner* corner : {&corners.leftTop, &corners.rightTop, &corners.leftBottom, &corners.rightBottom}) {
            corner->x = end();
            corner->y = end();
        }
        ASSERT_EQ(drawn(corners, input, output), referenceSkew(corners, input, output)) << number;
    }
}

TEST(Skew, RoundingsOfFarCornersAcceptPixelsOutsideTheCorners) {
    const Corner leftTop{333045344, -154886000};
    const Corner right{4073823, -1894573};
    const Corner leftBottom{434978912, -202291216};
    const Picture result = drawn({leftTop, right, leftBottom, right}, numberedPicture(4, 4), Picture(4, 4));
    EXPECT_EQ(result.at(0, 0)[0], 3) << "u is 0.75";
    EXPECT_EQ(result.at(0, 0)[1], 1) << "v is 0.078125";
}

TEST(Skew, ImagesWithoutPixelsAreLeftAlone) {
    const Picture before = numberedPicture(4, 4);
    const LiveImage image(before);
    PlushImage empty;
    empty.width = 4;
    empty.height = 4;
    const Corners corners{{0, 0}, {3, 0}, {0, 3}, {3, 3}};
    skewImage(corners, empty, *image);
    skewImage(corners, *image, empty);
    EXPECT_EQ(Picture(*image), before);
}

} // namespace
