// The bounded reader.

#include "plush/byte_reader.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr std::array<std::uint8_t, 9> bytes = {1, 2, 3, 4, 5, 6, 7, 8, 9};

TEST(ByteReader, NumbersAreReadInTheOrderTheirNameSays) {
    EXPECT_EQ(ByteReader(bytes).u8(), 1);
    EXPECT_EQ(ByteReader(bytes).u16le(), 0x0201);
    EXPECT_EQ(ByteReader(bytes).u16be(), 0x0102);
    EXPECT_EQ(ByteReader(bytes).u32le(), 0x04030201U);
    EXPECT_EQ(ByteReader(bytes).u32be(), 0x01020304U);
    EXPECT_EQ(ByteReader(bytes).u64le(), 0x0807060504030201U);
    EXPECT_EQ(ByteReader(bytes).u64be(), 0x0102030405060708U);
}

TEST(ByteReader, ReadsFollowEachOther) {
    ByteReader reader(bytes);
    reader.skip(2);
    EXPECT_EQ(reader.u8(), 3);
    EXPECT_EQ(reader.bytes(5).front(), 4);
    EXPECT_EQ(reader.remaining(), 1U);
    EXPECT_EQ(reader.u8(), 9);
    EXPECT_EQ(reader.remaining(), 0U);
    EXPECT_FALSE(reader.failed());
}

TEST(ByteReader, AReadBeyondTheEndFailsAndGivesZero) {
    ByteReader reader(bytes);
    reader.skip(7);
    EXPECT_EQ(reader.u32le(), 0U);
    EXPECT_TRUE(reader.failed());
}

TEST(ByteReader, AfterAFailureEvenASmallReadFails) {
    ByteReader reader(bytes);
    EXPECT_TRUE(reader.bytes(10).empty());
    EXPECT_EQ(reader.u8(), 0);
    EXPECT_EQ(reader.remaining(), 0U);
    EXPECT_TRUE(reader.failed());
}

TEST(ByteReader, AnEnormousCountFails) {
    ByteReader reader(bytes);
    reader.skip(1);
    EXPECT_TRUE(reader.bytes(SIZE_MAX).empty());
    EXPECT_TRUE(reader.failed());
}

TEST(ByteReader, NothingCanBeReadFromTheEndWithoutFailing) {
    ByteReader reader(bytes);
    reader.skip(9);
    EXPECT_TRUE(reader.bytes(0).empty());
    EXPECT_FALSE(reader.failed());
}

} // namespace
