// Still pictures: every colour type, depth, filter, interlacing and transparency, and what is wrong with picture data.

#include "plush/png.h"
#include "plush/png_decode.h"
#include "plush/png_expand.h"
#include "png_maker.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace png_test;

std::string nameOf(const Samples& samples) {
    return "colour type " + std::to_string(samples.colourType) + ", " + std::to_string(samples.depth) + " bits, " +
           std::to_string(samples.width) + " by " + std::to_string(samples.height);
}

// ---- whole pictures ----

TEST(PngDecode, EveryKindAtEverySmallSizeBothWaysOfInterlacing) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (const Kind kind : allKinds)
        for (std::uint32_t width = 1; width <= 10; ++width)
            for (std::uint32_t height = 1; height <= 10; ++height) {
                const Samples samples = randomSamples(random, width, height, kind.colourType, kind.depth);
                const Bytes expected = expectedPixels(samples);
                ASSERT_EQ(loadedPixels(pngFile(samples, false, RowFilter::mixed, random)), expected) << nameOf(samples);
                ASSERT_EQ(loadedPixels(pngFile(samples, true, RowFilter::mixed, random)), expected) << nameOf(samples);
            }
}

TEST(PngDecode, EveryKindWithEveryFilter) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (const Kind kind : allKinds)
        for (const RowFilter filter :
             {RowFilter::none, RowFilter::sub, RowFilter::up, RowFilter::average, RowFilter::paeth})
            for (const bool interlaced : {false, true}) {
                const Samples samples = randomSamples(random, 37, 21, kind.colourType, kind.depth);
                ASSERT_EQ(loadedPixels(pngFile(samples, interlaced, filter, random)), expectedPixels(samples))
                    << nameOf(samples) << ", filter " << static_cast<int>(filter);
            }
}

TEST(PngDecode, APictureMuchLargerThanTheWindow) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (const bool interlaced : {false, true}) {
        const Samples samples = randomSamples(random, 501, 403, 6, 8);
        wm::png::Image image;
        const Bytes file = pngFile(samples, interlaced, RowFilter::mixed, random);
        ASSERT_TRUE(wm::png::load_memory(file.data(), file.size(), image));
        EXPECT_EQ(image.width, 501);
        EXPECT_EQ(image.height, 403);
        const Bytes plain(samples.values.begin(), samples.values.end());
        EXPECT_TRUE(image.pixels == plain);
    }
}

TEST(PngDecode, AVeryWideAndAVeryHighPicture) {
    Random random(1);
    const Samples wide = randomSamples(random, 90000, 2, 2, 16);
    const Samples high = randomSamples(random, 2, 3000, 2, 16);
    for (const Samples* samples : {&wide, &high}) {
        wm::png::Image image;
        const Bytes file = pngFile(*samples, false, RowFilter::mixed, random);
        ASSERT_TRUE(wm::png::load_memory(file.data(), file.size(), image));
        for (std::size_t i = 0; i < image.pixels.size() / 4; ++i)
            ASSERT_EQ(image.pixels[i * 4 + 1], (samples->values[i * 3 + 1] * 255U + 32767U) / 65535U) << i;
    }
}

// ---- samples ----

TEST(PngDecode, EverySixteenBitSampleIsRounded) {
    for (std::uint32_t sample = 0; sample < 65536; ++sample)
        ASSERT_EQ(wm::png::reduce_sample(sample), (sample * 255 + 32767) / 65535) << sample;
}

TEST(PngDecode, SixteenBitsAreNotCutToTheirUpperByte) {
    Samples samples{2, 1, 16, 0, {0x00FF, 0x0080}, {}, {}};
    Random random(1);
    const Bytes expected = {1, 1, 1, 255, 0, 0, 0, 255};
    EXPECT_EQ(loadedPixels(pngFile(samples, false, RowFilter::none, random)), expected);
}

TEST(PngDecode, AGreyKeyMakesItsGreyTransparent) {
    Random random(1);
    for (const unsigned depth : {1U, 2U, 4U, 8U, 16U})
        for (const bool interlaced : {false, true}) {
            Samples samples = randomSamples(random, 19, 11, 0, depth);
            const std::uint16_t key = samples.values[7];
            samples.transparency = Bytes{static_cast<std::uint8_t>(key >> 8), static_cast<std::uint8_t>(key)};
            const auto pixels = loadedPixels(pngFile(samples, interlaced, RowFilter::mixed, random));
            ASSERT_EQ(pixels, expectedPixels(samples)) << nameOf(samples);
            EXPECT_EQ((*pixels)[7 * 4 + 3], 0);
        }
}

TEST(PngDecode, AnRgbKeyMakesItsColourTransparent) {
    Random random(1);
    for (const unsigned depth : {8U, 16U}) {
        Samples samples = randomSamples(random, 19, 11, 2, depth);
        Bytes key;
        for (unsigned channel = 0; channel < 3; ++channel) {
            key.push_back(static_cast<std::uint8_t>(samples.at(5, 3, channel) >> 8));
            key.push_back(static_cast<std::uint8_t>(samples.at(5, 3, channel)));
        }
        samples.transparency = key;
        const auto pixels = loadedPixels(pngFile(samples, false, RowFilter::mixed, random));
        ASSERT_EQ(pixels, expectedPixels(samples)) << nameOf(samples);
        EXPECT_EQ((*pixels)[(3 * 19 + 5) * 4 + 3], 0);
    }
}

TEST(PngDecode, AKeyIsComparedInAllChannelsAndAllSixteenBits) {
    Random random(1);
    Samples samples{4, 1, 16, 2, {}, {}, {}};
    samples.values = {0x0102, 0x0304, 0x0506, 0x0103, 0x0304, 0x0506, 0x0102, 0x0305, 0x0506, 0x0102, 0x0304, 0x0507};
    samples.transparency = Bytes{1, 2, 3, 4, 5, 6};
    const auto pixels = loadedPixels(pngFile(samples, false, RowFilter::none, random));
    ASSERT_TRUE(pixels);
    const Bytes alphas = {(*pixels)[3], (*pixels)[7], (*pixels)[11], (*pixels)[15]};
    EXPECT_EQ(alphas, (Bytes{0, 255, 255, 255}));
}

TEST(PngDecode, OfAKeyOnlyTheBitsOfASampleCount) {
    Random random(1);
    Samples samples{2, 1, 8, 0, {0x34, 0x12}, {}, {}};
    samples.transparency = Bytes{0x12, 0x34};
    EXPECT_EQ(loadedPixels(pngFile(samples, false, RowFilter::none, random)),
              (Bytes{0x34, 0x34, 0x34, 0, 0x12, 0x12, 0x12, 255}));
}

TEST(PngDecode, APaletteTakesItsAlphasFromAsManyEntriesAsThereAre) {
    Random random(1);
    for (const unsigned depth : {1U, 2U, 4U, 8U}) {
        Samples samples = randomSamples(random, 23, 9, 3, depth);
        for (std::size_t count = 0; count <= samples.palette.size(); ++count) {
            samples.transparency = Bytes(count);
            for (std::uint8_t& alpha : *samples.transparency) alpha = static_cast<std::uint8_t>(random());
            ASSERT_EQ(loadedPixels(pngFile(samples, false, RowFilter::mixed, random)), expectedPixels(samples))
                << nameOf(samples) << ", " << count << " alphas";
        }
    }
}

TEST(PngDecode, AnIndexBeyondThePaletteIsOpaqueBlack) {
    const Bytes rows = {0, 0x0F, 0x12};
    const Bytes file = FileMaker()
                           .header(4, 1, 4, 3)
                           .chunk("PLTE", {10, 20, 30, 40, 50, 60})
                           .chunk("tRNS", {7})
                           .chunk("IDAT", storedStream(rows))
                           .end()
                           .file();
    EXPECT_EQ(loadedPixels(file), (Bytes{10, 20, 30, 7, 0, 0, 0, 255, 40, 50, 60, 255, 0, 0, 0, 255}));
}

TEST(PngDecode, UnusedBitsAtTheEndOfARowDoNotMatter) {
    const auto load = [](std::uint8_t lastByte) {
        return loadedPixels(FileMaker().header(3, 1, 1, 0).chunk("IDAT", storedStream({0, lastByte})).end().file());
    };
    EXPECT_EQ(load(0xBF), load(0xA0));
    EXPECT_EQ(load(0xA0), (Bytes{255, 255, 255, 255, 0, 0, 0, 255, 255, 255, 255, 255}));
}

// ---- picture data ----

constexpr std::uint32_t side = 3;
const Bytes rowsOfThree = {0, 1, 2, 3, 1, 4, 5, 6, 2, 7, 8, 9}; // grey, filters none, sub, up

Bytes greyFile(const Bytes& stream) { return FileMaker().header(side, side, 8, 0).chunk("IDAT", stream).end().file(); }

TEST(PngDecode, DataCutIntoManyChunksAreReadAsOne) {
    const Bytes stream = storedStream(rowsOfThree);
    const auto whole = loadedPixels(greyFile(stream));
    ASSERT_TRUE(whole);
    for (std::size_t size = 1; size <= stream.size(); ++size) {
        FileMaker maker;
        maker.header(side, side, 8, 0);
        for (std::size_t at = 0; at < stream.size(); at += size) {
            const auto begin = stream.begin() + static_cast<std::ptrdiff_t>(at);
            const std::size_t part = std::min(size, stream.size() - at);
            maker.chunk("IDAT", Bytes(begin, begin + static_cast<std::ptrdiff_t>(part))).chunk("IDAT", {});
        }
        ASSERT_EQ(loadedPixels(maker.end().file()), whole) << size;
    }
}

TEST(PngDecode, AnUnknownFilterFails) {
    for (unsigned filter = 0; filter < 8; ++filter) {
        Bytes rows = rowsOfThree;
        rows[4] = static_cast<std::uint8_t>(filter);
        EXPECT_EQ(loadedPixels(greyFile(storedStream(rows))).has_value(), filter <= 4) << filter;
    }
}

TEST(PngDecode, ARowTooManyOrTooFewFails) {
    Bytes rows = rowsOfThree;
    rows.resize(8);
    EXPECT_FALSE(loadedPixels(greyFile(storedStream(rows))));
    rows.resize(16);
    EXPECT_FALSE(loadedPixels(greyFile(storedStream(rows))));
    rows.resize(12);
    EXPECT_TRUE(loadedPixels(greyFile(storedStream(rows))));
    rows.resize(11);
    EXPECT_FALSE(loadedPixels(greyFile(storedStream(rows))));
    rows.resize(13);
    EXPECT_FALSE(loadedPixels(greyFile(storedStream(rows))));
}

TEST(PngDecode, AWrongAdlerFails) {
    Bytes stream = storedStream(rowsOfThree);
    ASSERT_TRUE(loadedPixels(greyFile(stream)));
    stream.back() ^= 1;
    EXPECT_FALSE(loadedPixels(greyFile(stream)));
}

TEST(PngDecode, AMissingAdlerFails) {
    Bytes stream = storedStream(rowsOfThree);
    for (int missing = 1; missing <= 4; ++missing) {
        stream.pop_back();
        EXPECT_FALSE(loadedPixels(greyFile(stream))) << missing;
    }
}

TEST(PngDecode, BytesBehindTheCompressedDataAreIgnored) {
    Bytes stream = storedStream(rowsOfThree);
    const auto whole = loadedPixels(greyFile(stream));
    stream.resize(stream.size() + 3);
    EXPECT_EQ(loadedPixels(greyFile(stream)), whole);
}

TEST(PngDecode, NoDataFail) {
    EXPECT_FALSE(loadedPixels(FileMaker().header(side, side, 8, 0).end().file()));
    EXPECT_FALSE(loadedPixels(greyFile({})));
}

// ---- sizes ----

wm::png::Header headerOf(std::uint8_t colourType, std::uint8_t depth, std::uint8_t interlace) {
    wm::png::Header header;
    header.colourType = colourType;
    header.bitDepth = depth;
    header.interlaceMethod = interlace;
    return header;
}

TEST(PngDecode, TheRawSizeIsThatOfAllRowsAndTheirFilterBytes) {
    EXPECT_EQ(wm::png::raw_size(headerOf(6, 8, 0), 10, 7), 7U * 41);
    EXPECT_EQ(wm::png::raw_size(headerOf(2, 16, 0), 10, 7), 7U * 61);
    EXPECT_EQ(wm::png::raw_size(headerOf(0, 1, 0), 9, 7), 7U * 3);
}

TEST(PngDecode, TheRawSizeOfAnInterlacedPictureIsThatOfItsPasses) {
    EXPECT_EQ(wm::png::raw_size(headerOf(0, 8, 1), 1, 1), 2U); // one pass of one pixel
    EXPECT_EQ(wm::png::raw_size(headerOf(0, 8, 1), 8, 8), 64U + 1 + 1 + 1 + 2 + 2 + 4 + 4);
    EXPECT_EQ(wm::png::raw_size(headerOf(0, 1, 1), 8, 8), 15U * 2); // fifteen rows of one byte
}

TEST(PngDecode, ARawSizeBeyondTheLimitIsZero) {
    EXPECT_NE(wm::png::raw_size(headerOf(6, 8, 0), 16384, 16384), 0U);
    EXPECT_EQ(wm::png::raw_size(headerOf(6, 8, 0), 16384, 16385), 0U);
    EXPECT_EQ(wm::png::raw_size(headerOf(6, 16, 1), 0x7FFFFFFF, 0x7FFFFFFF), 0U);
}

TEST(PngDecode, APictureBeyondTheMemoryLimitIsRefusedBeforeItIsAllocated) {
    // All these would take terabytes or at least more than a GiB; none may take noticeable time or memory.
    for (const auto& [width, height] : std::vector<std::pair<std::uint32_t, std::uint32_t>>{
             {0x7FFFFFFF, 0x7FFFFFFF}, {0x7FFFFFFF, 1}, {1, 0x7FFFFFFF}, {40000, 40000}, {16384, 16384}})
        for (const std::uint8_t interlace : {std::uint8_t{0}, std::uint8_t{1}})
            for (const Kind kind : {Kind{0, 1}, Kind{6, 16}}) {
                FileMaker maker;
                maker.header(width, height, static_cast<std::uint8_t>(kind.depth), kind.colourType, interlace);
                EXPECT_FALSE(loadedPixels(maker.chunk("IDAT", storedStream(Bytes(100000))).end().file()));
            }
}

TEST(PngDecode, DataTooShortForThePictureAreRefusedBeforeItIsAllocated) {
    wm::png::ParsedPng png;
    png.header = headerOf(6, 8, 0);
    png.header.width = png.header.height = 8192;
    png.imageData.size = 8192U * (1 + 4 * 8192U) / 1032;
    EXPECT_TRUE(wm::png::is_decodable(png));
    png.imageData.size -= 1;
    EXPECT_FALSE(wm::png::is_decodable(png));
}

TEST(PngDecode, TheMemoryOfTheFileCountsToo) {
    wm::png::ParsedPng png;
    png.header = headerOf(6, 8, 0);
    png.header.width = png.header.height = 15000;
    png.imageData.size = 1U << 30;
    EXPECT_TRUE(wm::png::is_decodable(png));
    png.memoryUsed = 200U << 20;
    EXPECT_FALSE(wm::png::is_decodable(png));
}

} // namespace
