// The blend, for every combination of a source byte, a target byte and an alpha.

#include "blit_reference.h"
#include "plush/blend.h"

#include <gtest/gtest.h>

#include <array>
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
            std::vector<PixelByte> row = start;
            for (std::size_t at = 0; at < expected.size(); at += bytesPerPixel) {
                referenceBlend(&expected[at], &source[at]);
                blendPixel(&single[at], &source[at]);
            }
            blendRow(row.data(), source.data(), byteValues);
            ASSERT_EQ(single, expected) << "alpha " << alpha << ", colour " << colour;
            ASSERT_EQ(row, expected) << "alpha " << alpha << ", colour " << colour;
        }
    }
}

TEST(Blend, ARowOfAnyLengthTouchesNothingBehindItsEnd) {
    constexpr std::size_t longest = 19;
    for (std::size_t count = 0; count <= longest; ++count) {
        const std::vector<PixelByte> source((longest + 1) * bytesPerPixel, 100);
        std::vector<PixelByte> target((longest + 1) * bytesPerPixel, 7);
        std::vector<PixelByte> expected = target;
        for (std::size_t at = 0; at < count * bytesPerPixel; at += bytesPerPixel) {
            referenceBlend(&expected[at], &source[at]);
        }
        blendRow(target.data(), source.data(), count);
        EXPECT_EQ(target, expected) << count << " pixels";
    }
}

} // namespace
