// Animated files become one picture: all frames on one canvas, in order, never cleared.

#include "plush/png_decode.h"
#include "png_maker.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace png_test;

constexpr std::uint8_t source = 0;
constexpr std::uint8_t over = 1;

/// `width * height` pixels of one colour.
Bytes area(std::uint32_t width, std::uint32_t height, const Bytes& pixel) {
    Bytes pixels;
    for (std::uint32_t i = 0; i < width * height; ++i) pixels = pixels + pixel;
    return pixels;
}

Bytes areaStream(std::uint32_t width, std::uint32_t height, const Bytes& pixel) {
    return rgbaStream(width, height, area(width, height, pixel));
}

const Bytes red = {255, 0, 0, 255};
const Bytes green = {0, 255, 0, 255};
const Bytes blue = {0, 0, 255, 255};
const Bytes clear = {9, 9, 9, 0};

/// The pixel of a canvas two pixels wide.
Bytes pixelAt(const Bytes& pixels, std::size_t x, std::size_t y, std::size_t width = 2) {
    const auto begin = pixels.begin() + static_cast<std::ptrdiff_t>((y * width + x) * 4);
    return Bytes(begin, begin + 4);
}

/// One pixel laid over another with the given operation.
Bytes laid(const Bytes& canvas, const Bytes& frame, std::uint8_t blend) {
    const auto pixels = loadedPixels(FileMaker()
                                         .header(1, 1, 8, 6)
                                         .animation(2)
                                         .frame(1, 1, 0, 0, source)
                                         .chunk("IDAT", rgbaStream(1, 1, canvas))
                                         .frame(1, 1, 0, 0, blend)
                                         .frameData(rgbaStream(1, 1, frame))
                                         .end()
                                         .file());
    EXPECT_TRUE(pixels);
    return pixels.value_or(Bytes{});
}

TEST(PngAnimation, FramesAreLaidAtTheirOffsetsInFileOrder) {
    const auto pixels = loadedPixels(FileMaker()
                                         .header(2, 2, 8, 6)
                                         .animation(3)
                                         .frame(2, 2, 0, 0, source)
                                         .chunk("IDAT", areaStream(2, 2, red))
                                         .frame(2, 1, 0, 1, source)
                                         .frameData(areaStream(2, 1, green))
                                         .frame(1, 1, 1, 1, source)
                                         .frameData(areaStream(1, 1, blue))
                                         .end()
                                         .file());
    EXPECT_EQ(pixels, red + red + green + blue);
}

TEST(PngAnimation, TheResultHasTheSizeOfTheCanvas) {
    const auto pixels = loadedPixels(FileMaker()
                                         .header(3, 2, 8, 6)
                                         .animation(1)
                                         .chunk("IDAT", areaStream(3, 2, red))
                                         .frame(1, 1, 2, 1, source)
                                         .frameData(areaStream(1, 1, blue))
                                         .end()
                                         .file());
    EXPECT_EQ(pixels, red + red + red + red + red + blue);
}

TEST(PngAnimation, TheDefaultImageLiesUnderTheFramesUnlessItIsOneOfThem) {
    const auto file = [](bool defaultIsFrame) {
        FileMaker maker;
        maker.header(2, 1, 8, 6).animation(1);
        if (defaultIsFrame) maker.frame(2, 1, 0, 0, over);
        maker.chunk("IDAT", areaStream(2, 1, red));
        return maker.frame(1, 1, 0, 0, source).frameData(areaStream(1, 1, clear)).end().file();
    };
    EXPECT_EQ(loadedPixels(file(false)), clear + red);
    EXPECT_EQ(loadedPixels(file(true)), clear + red);
}

TEST(PngAnimation, WithoutADefaultImageTheCanvasIsZeros) {
    // The only frame is the default image, and covers one pixel of two.
    const auto pixels = loadedPixels(FileMaker()
                                         .header(2, 1, 8, 6)
                                         .animation(1)
                                         .frame(1, 1, 1, 0, source)
                                         .chunk("IDAT", areaStream(1, 1, blue))
                                         .end()
                                         .file());
    EXPECT_EQ(pixels, Bytes({0, 0, 0, 0}) + blue);
}

TEST(PngAnimation, TheCanvasIsClearedWhateverItsMemoryHeld) {
    const Bytes file = FileMaker()
                           .header(2, 1, 8, 6)
                           .animation(1)
                           .frame(1, 1, 1, 0, over)
                           .chunk("IDAT", areaStream(1, 1, {7, 8, 9, 0}))
                           .end()
                           .file();
    wm::png::ParsedPng png;
    ASSERT_TRUE(wm::png::parse_png(file, png));
    Bytes canvas(8, 0xCC);
    ASSERT_TRUE(wm::png::decode_apng_squashed(png, canvas.data()));
    EXPECT_EQ(canvas, (Bytes{0, 0, 0, 0, 7, 8, 9, 0}));
}

TEST(PngAnimation, AMissingDefaultImageUnderTheFramesFails) {
    EXPECT_FALSE(loadedPixels(FileMaker()
                                  .header(1, 1, 8, 6)
                                  .animation(1)
                                  .frame(1, 1, 0, 0, source)
                                  .frameData(areaStream(1, 1, red))
                                  .end()
                                  .file()));
}

TEST(PngAnimation, ADefaultImageOfAnotherSizeFails) {
    EXPECT_FALSE(loadedPixels(FileMaker()
                                  .header(2, 1, 8, 6)
                                  .animation(1)
                                  .chunk("IDAT", areaStream(1, 1, red))
                                  .frame(1, 1, 0, 0, source)
                                  .frameData(areaStream(1, 1, red))
                                  .end()
                                  .file()));
}

TEST(PngAnimation, WithoutUsableFramesTheDefaultImageIsTheResult) {
    const Bytes data = areaStream(1, 1, green);
    EXPECT_EQ(loadedPixels(FileMaker().header(1, 1, 8, 6).animation(0).chunk("IDAT", data).end().file()), green);
    EXPECT_EQ(loadedPixels(FileMaker()
                               .header(1, 1, 8, 6)
                               .animation(2)
                               .chunk("IDAT", data)
                               .frame(1, 1, 0, 0, source)
                               .frame(1, 1, 0, 0, source)
                               .frameData({})
                               .end()
                               .file()),
              green);
}

TEST(PngAnimation, FramesWithoutAnAnimationChunkAreNotLaid) {
    EXPECT_EQ(loadedPixels(FileMaker()
                               .header(1, 1, 8, 6)
                               .chunk("IDAT", areaStream(1, 1, red))
                               .frame(1, 1, 0, 0, source)
                               .frameData(areaStream(1, 1, blue))
                               .end()
                               .file()),
              red);
}

TEST(PngAnimation, DisposeOperationsAreIgnored) {
    for (const std::uint8_t dispose : {std::uint8_t{0}, std::uint8_t{1}, std::uint8_t{2}}) {
        const auto pixels = loadedPixels(FileMaker()
                                             .header(2, 1, 8, 6)
                                             .animation(3)
                                             .frame(2, 1, 0, 0, source, dispose)
                                             .chunk("IDAT", areaStream(2, 1, red))
                                             .frame(1, 1, 0, 0, source, dispose)
                                             .frameData(areaStream(1, 1, green))
                                             .frame(1, 1, 0, 0, over, dispose)
                                             .frameData(areaStream(1, 1, clear))
                                             .end()
                                             .file());
        EXPECT_EQ(pixels, green + red) << int{dispose};
    }
}

TEST(PngAnimation, FrameDataCanBeCutIntoManyChunks) {
    const Bytes stream = areaStream(2, 2, blue);
    FileMaker maker;
    maker.header(2, 2, 8, 6).animation(2).frame(2, 2, 0, 0, source).chunk("IDAT", areaStream(2, 2, red));
    maker.frame(2, 2, 0, 0, source);
    for (const std::uint8_t byte : stream) maker.frameData({byte});
    EXPECT_EQ(loadedPixels(maker.end().file()), area(2, 2, blue));
}

TEST(PngAnimation, ADamagedFrameFailsTheWholeFile) {
    Bytes stream = areaStream(1, 1, blue);
    stream.back() ^= 1;
    EXPECT_FALSE(loadedPixels(FileMaker()
                                  .header(1, 1, 8, 6)
                                  .animation(2)
                                  .frame(1, 1, 0, 0, source)
                                  .chunk("IDAT", areaStream(1, 1, red))
                                  .frame(1, 1, 0, 0, source)
                                  .frameData(stream)
                                  .end()
                                  .file()));
}

TEST(PngAnimation, AFrameOfAnotherSizeThanItsDataFails) {
    EXPECT_FALSE(loadedPixels(FileMaker()
                                  .header(2, 2, 8, 6)
                                  .animation(2)
                                  .frame(2, 2, 0, 0, source)
                                  .chunk("IDAT", areaStream(2, 2, red))
                                  .frame(2, 1, 0, 0, source)
                                  .frameData(areaStream(1, 1, blue))
                                  .end()
                                  .file()));
}

TEST(PngAnimation, FramesShareThePaletteAndTheInterlacingOfTheFile) {
    Random random(1);
    Samples canvas = randomSamples(random, 9, 9, 3, 2);
    Samples frame = canvas;
    frame.width = 5;
    frame.height = 3;
    frame.values.resize(15);
    std::ranges::reverse(frame.values);
    Bytes palette;
    for (const auto& colour : canvas.palette) palette.insert(palette.end(), colour.begin(), colour.end());
    const auto stream = [&](const Samples& samples) {
        return storedStream(filteredRows(samples, true, RowFilter::mixed, random));
    };
    const auto pixels = loadedPixels(FileMaker()
                                         .header(9, 9, 2, 3, 1)
                                         .chunk("PLTE", palette)
                                         .animation(1)
                                         .chunk("IDAT", stream(canvas))
                                         .frame(5, 3, 4, 6, source)
                                         .frameData(stream(frame))
                                         .end()
                                         .file());
    ASSERT_TRUE(pixels);
    const Bytes under = expectedPixels(canvas);
    const Bytes top = expectedPixels(frame);
    for (std::size_t y = 0; y < 9; ++y)
        for (std::size_t x = 0; x < 9; ++x) {
            const bool covered = x >= 4 && y >= 6;
            EXPECT_EQ(pixelAt(*pixels, x, y, 9), covered ? pixelAt(top, x - 4, y - 6, 5) : pixelAt(under, x, y, 9))
                << x << ' ' << y;
        }
}

// ---- blending ----

TEST(PngAnimation, TheSourceOperationCopiesAllFourBytes) {
    EXPECT_EQ(laid(red, clear, source), clear);
    EXPECT_EQ(laid(red, {1, 2, 3, 128}, source), (Bytes{1, 2, 3, 128}));
}

TEST(PngAnimation, AnOpaquePixelOverAnythingIsCopied) { EXPECT_EQ(laid({1, 2, 3, 77}, green, over), green); }

TEST(PngAnimation, AnythingOverATransparentPixelIsCopied) {
    EXPECT_EQ(laid({1, 2, 3, 0}, {7, 8, 9, 100}, over), (Bytes{7, 8, 9, 100}));
    EXPECT_EQ(laid({1, 2, 3, 0}, {7, 8, 9, 0}, over), (Bytes{7, 8, 9, 0}));
}

TEST(PngAnimation, ATransparentPixelOverAnyVisibleOneLeavesIt) {
    EXPECT_EQ(laid({1, 2, 3, 1}, {7, 8, 9, 0}, over), (Bytes{1, 2, 3, 1}));
}

TEST(PngAnimation, TranslucentPixelsMixByTheirAlphas) {
    // w = 127 * 255, A = 128 + 127 = 255; (127 + 200 * 128 + (127 + w * 100) / 255) / 255 = 150
    EXPECT_EQ(laid({100, 0, 255, 255}, {200, 255, 0, 128}, over), (Bytes{150, 128, 127, 255}));
    // w = 155 * 50 = 7750, A = 100 + 7877 / 255 = 130; (65 + 10 * 100 + (127 + w * 200) / 255) / 130 = 54
    EXPECT_EQ(laid({200, 0, 255, 50}, {10, 20, 30, 100}, over), (Bytes{54, 15, 83, 130}));
}

TEST(PngAnimation, EveryPairOfAlphasFollowsTheFormula) {
    // A canvas of all 256 by 256 alphas.
    constexpr unsigned side = 256;
    Random random(1);
    Bytes under;
    Bytes top;
    for (unsigned y = 0; y < side; ++y)
        for (unsigned x = 0; x < side; ++x)
            for (unsigned channel = 0; channel < 4; ++channel) {
                under.push_back(static_cast<std::uint8_t>(channel == 3 ? x : random()));
                top.push_back(static_cast<std::uint8_t>(channel == 3 ? y : random()));
            }
    const auto pixels = loadedPixels(FileMaker()
                                         .header(side, side, 8, 6)
                                         .animation(1)
                                         .chunk("IDAT", rgbaStream(side, side, under))
                                         .frame(side, side, 0, 0, over)
                                         .frameData(rgbaStream(side, side, top))
                                         .end()
                                         .file());
    ASSERT_TRUE(pixels);
    for (std::size_t at = 0; at < under.size(); at += 4) {
        const unsigned sa = top[at + 3];
        const unsigned da = under[at + 3];
        for (std::size_t channel = 0; channel < 4; ++channel) {
            const unsigned s = top[at + channel];
            const unsigned d = under[at + channel];
            const unsigned w = (255 - sa) * da;
            const unsigned A = sa + (w + 127) / 255;
            unsigned expected = 0;
            if (sa == 255 || da == 0) {
                expected = s;
            } else if (sa == 0) {
                expected = d;
            } else {
                expected = channel == 3 ? A : std::min(255U, (A / 2 + s * sa + (127 + w * d) / 255) / A);
            }
            ASSERT_EQ((*pixels)[at + channel], expected) << sa << " over " << da;
        }
    }
}

TEST(PngAnimation, WhiteOverWhiteStaysWhite) {
    // Here the formula gives 256.
    EXPECT_EQ(laid({255, 255, 255, 128}, {255, 255, 255, 1}, over), (Bytes{255, 255, 255, 128}));
}

} // namespace
