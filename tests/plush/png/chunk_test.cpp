// The chunk walk: what each chunk must look like, where it may stand, and what becomes of a file that is cut or
// damaged.

#include "plush/png.h"
#include "plush/png_chunks.h"
#include "png_maker.h"

#include <gtest/gtest.h>

namespace {

using namespace png_test;

const Bytes onePixel = {9, 8, 7, 6};
const Bytes oneGreyRow = {0, 200};

FileMaker rgbaHeader() { return FileMaker().header(1, 1, 8, 6); }
Bytes rgbaData() { return rgbaStream(1, 1, onePixel); }

bool loads(const FileMaker& maker) { return loadedPixels(maker.file()).has_value(); }

bool parses(const Bytes& file) {
    wm::png::ParsedPng png;
    return wm::png::parse_png(file, png);
}

/// A file of one grey or palette pixel, with chunks between header and data.
FileMaker pixelWith(std::uint8_t colourType, const std::vector<std::pair<std::string, Bytes>>& chunks) {
    FileMaker maker;
    maker.header(1, 1, 8, colourType);
    for (const auto& [type, data] : chunks) maker.chunk(type, data);
    const Bytes row = colourType == 2 ? Bytes{0, 1, 2, 3} : colourType == 4 ? Bytes{0, 1, 2} : Bytes{0, 0};
    maker.chunk("IDAT", colourType == 6 ? rgbaData() : storedStream(row)).end();
    return maker;
}

// ---- signature and chain ----

TEST(PngChunks, TheSmallestFileLoads) {
    EXPECT_EQ(loadedPixels(rgbaHeader().chunk("IDAT", rgbaData()).end().file()), onePixel);
}

TEST(PngChunks, AWrongSignatureFails) {
    const Bytes file = rgbaFile(1, 1, onePixel);
    for (std::size_t at = 0; at < 8; ++at) {
        Bytes wrong = file;
        wrong[at] ^= 0x20;
        EXPECT_FALSE(loadedPixels(wrong)) << at;
    }
}

TEST(PngChunks, FewerThanTwentyBytesFail) {
    Bytes file = FileMaker().file();
    while (file.size() < 20) {
        EXPECT_FALSE(parses(file)) << file.size();
        file.push_back(0);
    }
}

TEST(PngChunks, AWrongCrcFailsInEveryChunkEvenASkippedOne) {
    const auto file = [](const std::string& wrong) {
        FileMaker maker;
        const auto add = [&](const std::string& type, const Bytes& data) {
            maker.badChunk(type, data, type == wrong ? 0x00010000U : 0);
        };
        add("IHDR", bigEndian(1) + bigEndian(1) + Bytes{8, 3, 0, 0, 0});
        add("PLTE", {1, 2, 3});
        add("tRNS", {4});
        add("tEXt", {5, 6});
        add("acTL", bigEndian(1) + bigEndian(0));
        add("fcTL", bigEndian(0) + bigEndian(1) + bigEndian(1) + bigEndian(0) + bigEndian(0) + Bytes(6));
        add("IDAT", storedStream({0, 0}));
        add("fdAT", bigEndian(0));
        add("IEND", {});
        return maker;
    };
    EXPECT_TRUE(loads(file("none")));
    for (const char* type : {"IHDR", "PLTE", "tRNS", "tEXt", "acTL", "fcTL", "IDAT", "fdAT", "IEND"})
        EXPECT_FALSE(loads(file(type))) << type;
}

TEST(PngChunks, AFileCutAnywhereFails) {
    const Bytes file = pixelWith(3, {{"PLTE", {1, 2, 3}}, {"tRNS", {4}}, {"tEXt", {5, 6}}}).file();
    ASSERT_TRUE(loadedPixels(file));
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_FALSE(loadedPixels(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)))) << size;
}

TEST(PngChunks, AnyChangedByteFails) {
    const Bytes file = pixelWith(3, {{"PLTE", {1, 2, 3}}, {"tRNS", {4}}, {"tEXt", {5, 6}}}).file();
    for (std::size_t at = 0; at < file.size(); ++at)
        for (const unsigned change : {0x01U, 0x20U, 0x80U, 0xFFU}) {
            Bytes wrong = file;
            wrong[at] = static_cast<std::uint8_t>(wrong[at] ^ change);
            EXPECT_FALSE(loadedPixels(wrong)) << at;
        }
}

TEST(PngChunks, AChunkRunningPastTheEndFails) {
    for (const std::uint32_t length : {1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        Bytes file = rgbaHeader().chunk("IDAT", rgbaData()).file();
        file = file + bigEndian(length) + Bytes{'I', 'E', 'N', 'D'} + bigEndian(0xAE426082U);
        EXPECT_FALSE(loadedPixels(file)) << length;
    }
}

TEST(PngChunks, AFileWithoutItsEndFails) { EXPECT_FALSE(loads(rgbaHeader().chunk("IDAT", rgbaData()))); }

TEST(PngChunks, WhatFollowsTheEndIsIgnored) {
    EXPECT_TRUE(loads(rgbaHeader().chunk("IDAT", rgbaData()).end().bytes({1, 2, 3}).header(5, 5, 5, 5)));
}

TEST(PngChunks, UnknownChunksAreSkipped) {
    EXPECT_TRUE(loads(pixelWith(6, {{"tEXt", {1, 2}}, {"ABCD", {}}, {"gAMA", Bytes(4)}})));
}

// ---- IHDR ----

TEST(PngChunks, TheHeaderMustComeFirst) {
    EXPECT_FALSE(loads(FileMaker().chunk("tEXt", {}).header(1, 1, 8, 6).chunk("IDAT", rgbaData()).end()));
    EXPECT_FALSE(loads(FileMaker().chunk("IDAT", rgbaData()).end()));
    EXPECT_FALSE(parses(FileMaker().end().bytes(Bytes(20)).file()));
}

TEST(PngChunks, TheHeaderMustHaveThirteenBytes) {
    for (const std::size_t size : {0U, 12U, 14U}) {
        Bytes header = bigEndian(1) + bigEndian(1) + Bytes{8, 6, 0, 0, 0};
        header.resize(size);
        EXPECT_FALSE(loads(FileMaker().chunk("IHDR", header).chunk("IDAT", rgbaData()).end())) << size;
    }
}

TEST(PngChunks, ASecondHeaderFails) {
    EXPECT_FALSE(loads(rgbaHeader().header(1, 1, 8, 6).chunk("IDAT", rgbaData()).end()));
}

TEST(PngChunks, ASizeOfZeroFails) {
    EXPECT_FALSE(loads(FileMaker().header(0, 1, 8, 6).chunk("IDAT", storedStream({0})).end()));
    EXPECT_FALSE(loads(FileMaker().header(1, 0, 8, 6).chunk("IDAT", storedStream({})).end()));
    EXPECT_FALSE(loads(FileMaker().header(0, 0, 8, 6).chunk("IDAT", storedStream({})).end()));
}

TEST(PngChunks, ASizeBeyondWhatTheFormatKnowsFails) {
    EXPECT_TRUE(parses(FileMaker().header(0x7FFFFFFFU, 1, 8, 6).end().file()));
    EXPECT_FALSE(parses(FileMaker().header(0x80000000U, 1, 8, 6).end().file()));
    EXPECT_FALSE(parses(FileMaker().header(1, 0x80000000U, 8, 6).end().file()));
}

TEST(PngChunks, OnlyTheColourTypesAndDepthsOfTheFormatAreTaken) {
    for (unsigned colourType = 0; colourType < 256; ++colourType)
        for (unsigned depth = 0; depth < 40; ++depth) {
            bool known = false;
            for (const Kind kind : allKinds) known = known || (kind.colourType == colourType && kind.depth == depth);
            FileMaker maker;
            maker.header(1, 1, static_cast<std::uint8_t>(depth), static_cast<std::uint8_t>(colourType));
            EXPECT_EQ(parses(maker.chunk("PLTE", {1, 2, 3}).end().file()), known) << colourType << ' ' << depth;
        }
}

TEST(PngChunks, OnlyTheMethodsOfTheFormatAreTaken) {
    const auto parsesWith = [](std::uint8_t compression, std::uint8_t filter, std::uint8_t interlace) {
        const Bytes header = bigEndian(1) + bigEndian(1) + Bytes{8, 6, compression, filter, interlace};
        return parses(FileMaker().chunk("IHDR", header).end().file());
    };
    EXPECT_TRUE(parsesWith(0, 0, 0));
    EXPECT_TRUE(parsesWith(0, 0, 1));
    EXPECT_FALSE(parsesWith(1, 0, 0));
    EXPECT_FALSE(parsesWith(0, 1, 0));
    EXPECT_FALSE(parsesWith(0, 0, 2));
    EXPECT_FALSE(parsesWith(0, 0, 255));
}

// ---- PLTE ----

TEST(PngChunks, APaletteHasOneTo256WholeColours) {
    for (const std::size_t size : {3U, 6U, 768U}) EXPECT_TRUE(loads(pixelWith(3, {{"PLTE", Bytes(size)}}))) << size;
    for (const std::size_t size : {0U, 1U, 2U, 4U, 767U, 769U, 771U})
        EXPECT_FALSE(loads(pixelWith(3, {{"PLTE", Bytes(size)}}))) << size;
}

TEST(PngChunks, APaletteMustBeThereForIndicesAndOnlyOnce) {
    EXPECT_FALSE(loads(pixelWith(3, {})));
    EXPECT_FALSE(loads(pixelWith(3, {{"PLTE", Bytes(3)}, {"PLTE", Bytes(3)}})));
}

TEST(PngChunks, APaletteOfAnotherColourTypeIsSkipped) {
    for (const std::uint8_t colourType : {std::uint8_t{0}, std::uint8_t{2}, std::uint8_t{4}, std::uint8_t{6}})
        for (const std::size_t size : {0U, 3U, 4U, 1000U})
            EXPECT_TRUE(loads(pixelWith(colourType, {{"PLTE", Bytes(size)}}))) << int{colourType} << ' ' << size;
}

// ---- tRNS ----

TEST(PngChunks, TransparencyHasTheLengthOfItsColourType) {
    for (std::size_t size = 0; size < 10; ++size) {
        EXPECT_EQ(loads(pixelWith(0, {{"tRNS", Bytes(size)}})), size == 2) << size;
        EXPECT_EQ(loads(pixelWith(2, {{"tRNS", Bytes(size)}})), size == 6) << size;
        EXPECT_EQ(loads(pixelWith(3, {{"PLTE", Bytes(12)}, {"tRNS", Bytes(size)}})), size <= 4) << size;
    }
}

TEST(PngChunks, TransparencyBeforeThePaletteFails) {
    EXPECT_FALSE(loads(pixelWith(3, {{"tRNS", {0}}, {"PLTE", Bytes(3)}})));
}

TEST(PngChunks, TransparencyBesideAnAlphaChannelHasNoEffect) {
    EXPECT_EQ(loadedPixels(pixelWith(6, {{"tRNS", {0, 9, 0, 8, 0, 7}}}).file()), onePixel);
    EXPECT_EQ(loadedPixels(pixelWith(4, {{"tRNS", {0, 1}}}).file()), (Bytes{1, 1, 1, 2}));
}

TEST(PngChunks, TransparencyComesOnce) { EXPECT_FALSE(loads(pixelWith(0, {{"tRNS", Bytes(2)}, {"tRNS", Bytes(2)}}))); }

// ---- acTL, fcTL, fdAT ----

TEST(PngChunks, AnAnimationChunkHasEightBytesAndComesOnce) {
    for (const std::size_t size : {0U, 7U, 8U, 9U})
        EXPECT_EQ(loads(pixelWith(6, {{"acTL", Bytes(size)}})), size == 8) << size;
    EXPECT_FALSE(loads(pixelWith(6, {{"acTL", Bytes(8)}, {"acTL", Bytes(8)}})));
}

TEST(PngChunks, AFrameChunkHas26Bytes) {
    Bytes frame = bigEndian(0) + bigEndian(1) + bigEndian(1) + Bytes(14);
    ASSERT_EQ(frame.size(), 26U);
    EXPECT_TRUE(loads(pixelWith(6, {{"fcTL", frame}})));
    frame.push_back(0);
    EXPECT_FALSE(loads(pixelWith(6, {{"fcTL", frame}})));
    frame.resize(25);
    EXPECT_FALSE(loads(pixelWith(6, {{"fcTL", frame}})));
}

TEST(PngChunks, AFrameMustLieOnTheCanvasAndHaveASize) {
    const auto parsesFrame = [](std::uint32_t width, std::uint32_t height, std::uint32_t x, std::uint32_t y) {
        return parses(FileMaker().header(10, 20, 8, 6).frame(width, height, x, y, 0).end().file());
    };
    EXPECT_TRUE(parsesFrame(10, 20, 0, 0));
    EXPECT_TRUE(parsesFrame(3, 4, 7, 16));
    EXPECT_FALSE(parsesFrame(4, 4, 7, 16));
    EXPECT_FALSE(parsesFrame(3, 5, 7, 16));
    EXPECT_FALSE(parsesFrame(0, 4, 0, 0));
    EXPECT_FALSE(parsesFrame(4, 0, 0, 0));
    EXPECT_FALSE(parsesFrame(2, 2, 0xFFFFFFFFU, 0));
    EXPECT_FALSE(parsesFrame(2, 2, 0, 0xFFFFFFFFU));
    EXPECT_FALSE(parsesFrame(0xFFFFFFFFU, 1, 1, 0));
}

TEST(PngChunks, AFrameHasOneOfTwoBlendOperationsAndAnyDisposeOperation) {
    const auto parsesFrame = [](std::uint8_t blend, std::uint8_t dispose) {
        return parses(FileMaker().header(1, 1, 8, 6).frame(1, 1, 0, 0, blend, dispose).end().file());
    };
    EXPECT_TRUE(parsesFrame(0, 0));
    EXPECT_TRUE(parsesFrame(1, 2));
    EXPECT_TRUE(parsesFrame(1, 77));
    EXPECT_FALSE(parsesFrame(2, 0));
}

TEST(PngChunks, FrameDataNeedAFrameAndASequenceNumber) {
    const Bytes frame = bigEndian(0) + bigEndian(1) + bigEndian(1) + Bytes(14);
    EXPECT_FALSE(loads(pixelWith(6, {{"fdAT", Bytes(4)}})));
    EXPECT_TRUE(loads(pixelWith(6, {{"fcTL", frame}, {"fdAT", Bytes(4)}})));
    EXPECT_FALSE(loads(pixelWith(6, {{"fcTL", frame}, {"fdAT", Bytes(3)}})));
}

TEST(PngChunks, TheWalkSortsWhatItFinds) {
    const Bytes file = FileMaker()
                           .header(10, 20, 8, 3, 1)
                           .chunk("PLTE", {1, 2, 3, 4, 5, 6})
                           .chunk("tRNS", {77})
                           .animation(2)
                           .chunk("IDAT", {10, 11})
                           .frame(3, 4, 5, 6, 1, 2)
                           .frameData({20})
                           .frameData({21, 22})
                           .frame(1, 1, 0, 0, 0) // without data: no frame
                           .frame(2, 2, 1, 1, 0)
                           .chunk("IDAT", {30})
                           .end()
                           .file();
    wm::png::ParsedPng png;
    ASSERT_TRUE(wm::png::parse_png(file, png));
    EXPECT_EQ(png.header.width, 10U);
    EXPECT_EQ(png.header.height, 20U);
    EXPECT_EQ(png.header.bitDepth, 8);
    EXPECT_EQ(png.header.colourType, 3);
    EXPECT_EQ(png.header.compression, 0);
    EXPECT_EQ(png.header.filterMethod, 0);
    EXPECT_EQ(png.header.interlaceMethod, 1);
    EXPECT_EQ(png.palette, (Bytes{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Bytes(png.transparency.begin(), png.transparency.end()), Bytes{77});
    EXPECT_TRUE(png.animated);

    const auto joined = [](const wm::png::CompressedData& data) {
        Bytes all;
        for (const auto piece : data.pieces) all.insert(all.end(), piece.begin(), piece.end());
        EXPECT_EQ(all.size(), data.size);
        return all;
    };
    EXPECT_EQ(joined(png.imageData), (Bytes{10, 11, 30}));
    ASSERT_EQ(png.frames.size(), 2U);
    EXPECT_EQ(png.frames[0].width, 3U);
    EXPECT_EQ(png.frames[0].height, 4U);
    EXPECT_EQ(png.frames[0].xOffset, 5U);
    EXPECT_EQ(png.frames[0].yOffset, 6U);
    EXPECT_EQ(png.frames[0].disposeOperation, 2);
    EXPECT_EQ(png.frames[0].blendOperation, 1);
    EXPECT_FALSE(png.frames[0].takesImageData);
    EXPECT_EQ(joined(png.frames[0].data), (Bytes{20, 21, 22}));
    EXPECT_TRUE(png.frames[1].takesImageData);
    EXPECT_EQ(joined(png.frames[1].data), Bytes{30});
}

} // namespace
