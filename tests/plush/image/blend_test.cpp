// The blend, for every combination of a source byte, a target byte and an alpha.

#include "blit_reference.h"
#include "plush/blend.h"
#include "random_cases.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

constexpr int byteValues = 256;

using Pixel = std::array<PixelByte, bytesPerPixel>;

Pixel blended(Pixel target, const Pixel& source) {
    blendPixel(target.data(), source.data());
    return target;
}

TEST(Blend, ATransparentSourceLeavesTheTarget) {
    EXPECT_EQ(blended({1, 2, 3, 4}, {200, 201, 202, 0}), (Pixel{1, 2, 3, 4}));
}

TEST(Blend, AnOpaqueSourceIsCopied) {
    EXPECT_EQ(blended({1, 2, 3, 4}, {200, 201, 202, 255}), (Pixel{200, 201, 202, 255}));
}

TEST(Blend, EveryDivisionDropsItsRemainder) {
    // (128 * 255 + 127 * 0) / 255 = 128; (128 * 100 + 127 * 50) / 255 = 75.1; (128 * 1) / 255 = 0.5;
    // 100 + 128 - 100 * 128 / 255 = 228 - 50.2
    EXPECT_EQ(blended({0, 50, 0, 100}, {255, 100, 1, 128}), (Pixel{128, 75, 0, 178}));
}

struct Way {
    const char* name;
    BlendRow* blend;
};

/// Every way of blending a row that this processor has.
std::vector<Way> waysHere() {
    return {{"blendRow", blendRow}, {"by fours", blendRowByFours}, {"widest", widestBlendRow()}};
}

TEST(Blend, SinglePixelsAndRowsFollowTheFormulaForEveryByte) {
    std::vector<PixelByte> source(byteValues * bytesPerPixel);
    std::vector<PixelByte> start(byteValues * bytesPerPixel);
    for (int alpha = 0; alpha < byteValues; ++alpha) {
        for (int colour = 0; colour < byteValues; ++colour) {
            for (int under = 0; under < byteValues; ++under) {
                const std::size_t at = static_cast<std::size_t>(under) * bytesPerPixel;
                const Pixel above = {static_cast<PixelByte>(colour), static_cast<PixelByte>(255 - colour),
                                     static_cast<PixelByte>(colour ^ under), static_cast<PixelByte>(alpha)};
                const Pixel below = {static_cast<PixelByte>(under), static_cast<PixelByte>(255 - under),
                                     static_cast<PixelByte>(under), static_cast<PixelByte>(under)};
                std::copy(above.begin(), above.end(), source.begin() + static_cast<std::ptrdiff_t>(at));
                std::copy(below.begin(), below.end(), start.begin() + static_cast<std::ptrdiff_t>(at));
            }
            std::vector<PixelByte> expected = start;
            std::vector<PixelByte> single = start;
            for (std::size_t at = 0; at < expected.size(); at += bytesPerPixel) {
                referenceBlend(&expected[at], &source[at]);
                blendPixel(&single[at], &source[at]);
            }
            ASSERT_EQ(single, expected) << "alpha " << alpha << ", colour " << colour;
            for (const Way& way : waysHere()) {
                std::vector<PixelByte> row = start;
                way.blend(row.data(), source.data(), byteValues);
                ASSERT_EQ(row, expected) << way.name << ", alpha " << alpha << ", colour " << colour;
            }
        }
    }
}

TEST(Blend, OpaqueAndTransparentStretchesOfAnyLengthFollowTheFormula) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int cases = 4000;
    constexpr int longestRow = 150;    // pixels
    constexpr int longestStretch = 40; // pixels
    constexpr std::array alphas = {0, 255, 1, 254, 128};
    for (int number = 0; number < cases; ++number) {
        const auto count = static_cast<std::size_t>(between(random, 0, longestRow));
        std::vector<PixelByte> source(count * bytesPerPixel);
        std::vector<PixelByte> start(count * bytesPerPixel);
        for (PixelByte& byte : source) byte = static_cast<PixelByte>(random());
        for (PixelByte& byte : start) byte = static_cast<PixelByte>(random());
        int left = 0;
        PixelByte alpha = 0;
        for (std::size_t at = 3; at < source.size(); at += bytesPerPixel, --left) {
            if (left == 0) {
                left = between(random, 1, longestStretch);
                alpha = static_cast<PixelByte>(alphas[random() % alphas.size()]);
            }
            source[at] = alpha;
        }
        std::vector<PixelByte> expected = start;
        for (std::size_t at = 0; at < expected.size(); at += bytesPerPixel) referenceBlend(&expected[at], &source[at]);
        for (const Way& way : waysHere()) {
            std::vector<PixelByte> row = start;
            way.blend(row.data(), source.data(), count);
            ASSERT_EQ(row, expected) << way.name << ", case " << number << ", " << count << " pixels";
        }
    }
}

TEST(Blend, ARowOfAnyLengthTouchesNothingBehindItsEnd) {
    constexpr std::size_t longest = 35;
    for (std::size_t count = 0; count <= longest; ++count) {
        const std::vector<PixelByte> source((longest + 1) * bytesPerPixel, 100);
        const std::vector<PixelByte> start((longest + 1) * bytesPerPixel, 7);
        std::vector<PixelByte> expected = start;
        for (std::size_t at = 0; at < count * bytesPerPixel; at += bytesPerPixel) {
            referenceBlend(&expected[at], &source[at]);
        }
        for (const Way& way : waysHere()) {
            std::vector<PixelByte> target = start;
            way.blend(target.data(), source.data(), count);
            EXPECT_EQ(target, expected) << way.name << ", " << count << " pixels";
        }
    }
}

} // namespace
