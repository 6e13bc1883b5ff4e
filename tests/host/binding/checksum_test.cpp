// The checksum of saved games.

#include "host/checksum.h"

#include <gtest/gtest.h>

namespace {

TEST(Checksum, NothingIsZeroAndOneByteIsItself) {
    EXPECT_EQ(textChecksum(""), 0U);
    EXPECT_EQ(textChecksum("a"), 97U);
    EXPECT_EQ(textChecksum("\xFF"), 255U);
    EXPECT_EQ(textChecksum(std::string_view("\0", 1)), 0U);
}

TEST(Checksum, EachByteIsWeightedAndTheSumTurned) {
    EXPECT_EQ(textChecksum("ab"), 97U * 8 + 2 * 98);
    EXPECT_EQ(textChecksum("abc"), (97U * 8 + 2 * 98) * 8 + 3 * 99);
}

TEST(Checksum, BitsThatLeaveAtTheTopComeBackAtTheBottom) {
    // Eleven bytes turn the first one's bits past the top: 122 * 8 ^ 10 and its kin, each by itself modulo 2 ^ 32.
    std::uint32_t expected = 0;
    for (std::uint32_t position = 1; position <= 11; ++position) {
        expected = ((expected << 3) | (expected >> 29)) + position * 122;
    }
    EXPECT_EQ(textChecksum("zzzzzzzzzzz"), expected);
    EXPECT_GT(expected, 1U << 31);
}

} // namespace
