// Small pictures whose results were worked out away from this code, number by number.
//
// The tests beside this one compare with references in the same arithmetic and by the same hands; these hold the
// results themselves fast, so that a change of formula or compiler that moves both is noticed.

#include "operation_test.h"
#include "plush/dither.h"
#include "plush/grid_fill.h"
#include "plush/upscale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

/// Red bytes that count up from 1 in steps of `step`, row by row; opaque.
Picture counted(int width, int height, int step = 1) {
    Picture picture(width, height);
    int red = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            picture.at(x, y)[0] = static_cast<PixelByte>(red += step);
            picture.at(x, y)[3] = 255;
        }
    }
    return picture;
}

/// The red bytes, a line for each row, with a line break in front.
std::string reds(const PlushImage& image) {
    const Picture picture(image);
    std::string text;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            text += (x == 0 ? "\n" : " ") + std::to_string(int{*picture.at(x, y)});
        }
    }
    return text;
}

std::string blitted(int x, int y, float scale, float rotation) {
    const LiveImage target(Picture(9, 8));
    const LiveImage image(counted(4, 3));
    blitImage(*target, *image, x, y, Blend::Replace, scale, rotation);
    return reds(*target);
}

TEST(KnownPictures, AnEnlargedBlitCutOffAtTheLeft) {
    EXPECT_EQ(blitted(-1, 1, 1.5F, 0.0F), R"(
0 0 0 0 0 0 0 0 0
2 2 3 4 4 0 0 0 0
6 6 7 8 8 0 0 0 0
6 6 7 8 8 0 0 0 0
10 10 11 12 12 0 0 0 0
0 0 0 0 0 0 0 0 0
0 0 0 0 0 0 0 0 0
0 0 0 0 0 0 0 0 0)");
}

TEST(KnownPictures, AnEnlargedAndTurnedBlit) {
    EXPECT_EQ(blitted(2, 2, 1.5F, 30.0F), R"(
0 0 0 0 0 0 0 0 0
0 0 0 1 1 2 0 0 0
0 0 5 5 6 2 3 3 0
0 0 9 5 6 7 3 4 4
0 0 9 10 10 7 7 8 0
0 0 0 0 11 11 12 8 0
0 0 0 0 0 0 12 0 0
0 0 0 0 0 0 0 0 0)");
}

TEST(KnownPictures, ABlitTurnedVeryOftenWithTheRoundingOfTheWholeAngle) {
    EXPECT_EQ(blitted(2, 2, 1.5F, 1e7F), R"(
0 0 0 0 0 0 0 0 0
0 0 0 0 0 0 0 0 0
0 0 0 4 8 8 0 0 0
0 0 0 4 8 8 12 0 0
0 0 3 3 7 7 11 0 0
0 0 2 2 6 11 11 0 0
0 0 2 2 6 10 10 0 0
0 0 1 1 5 9 9 0 0)");
}

TEST(KnownPictures, ATurnedBlitWithANegativeScale) {
    EXPECT_EQ(blitted(7, 6, -1.5F, 200.0F), R"(
0 0 1 0 0 0 0 0 0
0 0 1 2 2 3 0 0 0
0 5 5 6 3 3 4 4 0
0 9 6 6 7 7 8 0 0
0 9 10 10 11 8 8 0 0
0 0 0 0 11 12 0 0 0
0 0 0 0 0 0 0 0 0
0 0 0 0 0 0 0 0 0)");
}

TEST(KnownPictures, AnEnlargedRectangleCutOffAtTheTop) {
    const LiveImage target(Picture(7, 5));
    const LiveImage image(counted(5, 4));
    blitImageRect(*target, *image, PixelRect{1, 1, 3, 2}, 1, -1, Blend::Replace, 1.7F);
    EXPECT_EQ(reds(*target), R"(
0 7 7 8 8 9 0
0 12 12 13 13 14 0
0 0 0 0 0 0 0
0 0 0 0 0 0 0
0 0 0 0 0 0 0)");
}

TEST(KnownPictures, ASkew) {
    const LiveImage output(Picture(8, 7));
    const LiveImage input(counted(4, 4));
    skewImage({{1, 0}, {7, 1}, {0, 5}, {6, 6}}, *input, *output);
    EXPECT_EQ(reds(*output), R"(
0 1 0 0 0 0 0 0
0 5 2 2 3 3 4 4
0 5 6 6 7 7 8 0
0 9 10 10 7 7 8 0
0 9 10 10 11 11 12 0
13 13 14 14 15 15 12 0
0 0 0 0 0 0 16 0)");
}

TEST(KnownPictures, ADither) {
    Picture grey(8, 2);
    std::fill(grey.bytes.begin(), grey.bytes.end(), PixelByte{128});
    const LiveImage image(grey);
    EXPECT_TRUE(ditherImage(*image, 20, false));
    EXPECT_EQ(reds(*image), R"(
120 145 129 113 142 126 110 135
140 142 119 122 120 115 115 108)");
}

TEST(KnownPictures, AnUpscale) {
    const LiveImage image(counted(3, 2, 40));
    EXPECT_TRUE(upscalePlushImage(*image, 1.7F));
    EXPECT_EQ(reds(*image), R"(
7 30 54 77 95
77 101 124 148 165
148 171 195 218 236)");
}

TEST(KnownPictures, AnUpscaleByTheLeastFactorAboveOneDropsFractions) {
    Picture row(4, 1);
    row.bytes = {100, 0, 255, 255, 255, 40, 0, 255, 3, 255, 100, 255, 50, 60, 70, 255};
    const LiveImage image(row);
    EXPECT_TRUE(upscalePlushImage(*image, std::nextafter(1.0F, 2.0F)));
    EXPECT_EQ(Picture(*image).bytes,
              (std::vector<PixelByte>{99, 0, 254, 254, 254, 39, 0, 254, 3, 254, 99, 254, 49, 60, 70, 254}));
}

TEST(KnownPictures, AGridOfEveryThirdPixelFilledIn) {
    Picture picture(8, 5);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 8; ++x) *picture.at(x, y) = static_cast<PixelByte>(x * 37 + y * 59);
    }
    const LiveImage image(picture);
    const int before = samplingStep;
    samplingStep = 3;
    bilinearInPlace(*image);
    samplingStep = before;
    EXPECT_EQ(reds(*image), R"(
0 37 74 111 148 185 222 222
59 68 76 85 122 159 196 196
118 98 78 58 95 132 169 169
177 129 80 32 69 106 143 143
177 129 80 32 69 106 143 143)");
}

} // namespace
