// Samples under masks.

#include "plush/masked_sample.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using wm::png::MaskedSample;
using wm::png::scale_masked_sample;

TEST(MaskedSample, IsScaledToEightBitsAndRounded) {
    for (unsigned bits = 1; bits <= 12; ++bits) {
        const std::uint32_t largest = (1U << bits) - 1;
        for (std::uint32_t sample = 0; sample <= largest; ++sample)
            ASSERT_EQ(scale_masked_sample(sample, largest), std::lround(sample * 255.0 / largest)) << bits;
    }
}

TEST(MaskedSample, OfFiveBitsIsScaledBy255Over31) {
    EXPECT_EQ(scale_masked_sample(1, 31), 8);
    EXPECT_EQ(scale_masked_sample(16, 31), 132);
    EXPECT_EQ(scale_masked_sample(31, 31), 255);
}

TEST(MaskedSample, OfAllBitsIsScaledWithoutOverflow) {
    EXPECT_EQ(MaskedSample(0xFFFFFFFF).of(0xFFFFFFFF), 255);
    EXPECT_EQ(MaskedSample(0xFFFFFFFF).of(0x80000000), 128);
    EXPECT_EQ(MaskedSample(0xFFFFFFFF).of(0), 0);
}

TEST(MaskedSample, IsTakenFromAnyPlace) {
    for (unsigned bits = 1; bits <= 16; ++bits) {
        for (unsigned shift = 0; shift + bits <= 32; ++shift) {
            const std::uint32_t largest = (1U << bits) - 1;
            const MaskedSample sample(largest << shift);
            for (const std::uint32_t value : {0U, 1U, largest / 2, largest}) {
                const std::uint32_t others = ~(largest << shift);
                ASSERT_EQ(sample.of(value << shift | others), scale_masked_sample(value, largest))
                    << bits << ' ' << shift;
            }
        }
    }
}

TEST(MaskedSample, WithoutBitsIsZero) { EXPECT_EQ(MaskedSample(0).of(0xFFFFFFFF), 0); }

} // namespace
