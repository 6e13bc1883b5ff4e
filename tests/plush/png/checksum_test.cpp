// The checksums, against bit-by-bit definitions and known values.

#include "plush/png_checksums.h"
#include "png_maker.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace png_test;

Bytes randomBytes(Random& random, std::size_t size) {
    Bytes bytes(size);
    std::ranges::generate(bytes, [&] { return static_cast<std::uint8_t>(random()); });
    return bytes;
}

Bytes text(const std::string& letters) { return Bytes(letters.begin(), letters.end()); }

TEST(Checksums, TheCrcOfTheNineDigitsIsTheWellKnownOne) {
    const Bytes digits = text("123456789");
    EXPECT_EQ(wm::png::crc32(digits.data(), digits.size()), 0xCBF43926U);
}

TEST(Checksums, TheCrcOfAnEmptyEndChunkIsTheOneInEveryFile) {
    const Bytes type = text("IEND");
    EXPECT_EQ(wm::png::crc32(type.data(), type.size()), 0xAE426082U);
}

TEST(Checksums, TheAdlerOfWikipediaIsTheWellKnownOne) {
    const Bytes name = text("Wikipedia");
    EXPECT_EQ(wm::png::adler32(name.data(), name.size()), 0x11E60398U);
}

TEST(Checksums, NothingHasTheCrcZeroAndTheAdlerOne) {
    EXPECT_EQ(wm::png::crc32(nullptr, 0), 0U);
    EXPECT_EQ(wm::png::adler32(nullptr, 0), 1U);
}

TEST(Checksums, EverySizeAndAlignmentGivesWhatTheDefinitionGives) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (std::size_t size = 0; size < 600; ++size) {
        const std::size_t offset = random() % 17;
        const Bytes bytes = randomBytes(random, offset + size);
        const Bytes part(bytes.begin() + static_cast<std::ptrdiff_t>(offset), bytes.end());
        ASSERT_EQ(wm::png::crc32(bytes.data() + offset, size), plainCrc(part)) << size;
        ASSERT_EQ(wm::png::adler32(bytes.data() + offset, size), plainAdler(part)) << size;
    }
}

TEST(Checksums, TheLargestBytesOverflowNoSum) {
    const Bytes bytes(200000, 255);
    EXPECT_EQ(wm::png::adler32(bytes.data(), bytes.size()), plainAdler(bytes));
}

TEST(Checksums, PartsTooShortForAnyShortCutGiveTheSameCrc) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    const Bytes bytes = randomBytes(random, 3000);
    for (const std::size_t longest : {1U, 15U, 16U, 40U, 63U}) {
        std::uint32_t crc = 0;
        for (std::size_t at = 0; at < bytes.size(); at += longest)
            crc = wm::png::crc32(bytes.data() + at, std::min(longest, bytes.size() - at), crc);
        EXPECT_EQ(crc, plainCrc(bytes)) << longest;
    }
}

TEST(Checksums, ARunCanBeSummedInParts) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    const Bytes bytes = randomBytes(random, 20000);
    std::uint32_t crc = 0;
    std::uint32_t adler = wm::png::adlerOfNothing;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t part = std::min<std::size_t>(random() % 3000, bytes.size() - at);
        crc = wm::png::crc32(bytes.data() + at, part, crc);
        adler = wm::png::adler32(bytes.data() + at, part, adler);
        at += part;
    }
    EXPECT_EQ(crc, plainCrc(bytes));
    EXPECT_EQ(adler, plainAdler(bytes));
}

} // namespace
