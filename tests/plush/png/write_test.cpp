// The writer, byte by byte.

#include "plush/byte_reader.h"
#include "plush/png.h"
#include "plush/png_write.h"
#include "png_maker.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace {

using namespace png_test;

/// The file that the writer makes of the pixels.
Bytes written(const Bytes& pixels, std::int32_t width, std::int32_t height) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture.png");
    EXPECT_TRUE(wm::png::save_png_rgba8_file(path, pixels.data(), width, height));
    return readFile(path);
}

Bytes randomPixels(Random& random, std::size_t width, std::size_t height) {
    Bytes pixels(width * height * 4);
    const unsigned range = 1 + random() % 256;
    std::ranges::generate(pixels, [&] { return static_cast<std::uint8_t>(random() % range); });
    return pixels;
}

struct Chunk {
    std::string type;
    Bytes data;
};

/// The chunks of a file, whose checksums must be right.
std::vector<Chunk> chunksOf(const Bytes& file) {
    ByteReader reader(file);
    reader.skip(8);
    std::vector<Chunk> chunks;
    while (reader.remaining() > 0) {
        const std::uint32_t length = reader.u32be();
        const auto type = reader.bytes(4);
        const auto data = reader.bytes(length);
        chunks.push_back({std::string(type.begin(), type.end()), Bytes(data.begin(), data.end())});
        const Bytes content = Bytes(type.begin(), type.end()) + chunks.back().data;
        EXPECT_EQ(reader.u32be(), plainCrc(content)) << chunks.back().type;
    }
    EXPECT_FALSE(reader.failed());
    return chunks;
}

/// All compressed data of a file.
Bytes imageData(const std::vector<Chunk>& chunks) {
    Bytes data;
    for (const Chunk& chunk : chunks)
        if (chunk.type == "IDAT") data.insert(data.end(), chunk.data.begin(), chunk.data.end());
    return data;
}

TEST(PngWrite, ASinglePixelIsExactlyThisFile) {
    EXPECT_EQ(written({1, 2, 3, 4}, 1, 1),
              (Bytes{0x89, 'P',  'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A,                                    // signature
                     0,    0,    0,   13,  'I',  'H',  'D',  'R',  0,    0,    0,    1,   0, 0, 0, 1, // size
                     8,    6,    0,   0,   0,    0x1F, 0x15, 0xC4, 0x89,                              // kind, CRC
                     0,    0,    0,   16,  'I',  'D',  'A',  'T',                                     //
                     0x78, 0x01, 1,   5,   0,    0xFA, 0xFF,       // zlib, one stored block
                     0,    1,    2,   3,   4,                      // filter and pixel
                     0,    25,   0,   11,  0xB9, 0xB0, 0xE3, 0xEB, // Adler-32, CRC
                     0,    0,    0,   0,   'I',  'E',  'N',  'D',  0xAE, 0x42, 0x60, 0x82}));
}

TEST(PngWrite, TheHeaderIsEightBitRgba) {
    const auto chunks = chunksOf(written(Bytes(300 * 2 * 4), 300, 2));
    ASSERT_FALSE(chunks.empty());
    EXPECT_EQ(chunks.front().type, "IHDR");
    EXPECT_EQ(chunks.front().data, (bigEndian(300) + bigEndian(2) + Bytes{8, 6, 0, 0, 0}));
}

TEST(PngWrite, EachRowGetsTheFilterThatSuitsIt) {
    // The first row repeats its first pixel, the second repeats the first row, the third is dark noise.
    const Bytes pixels = {50, 60, 70, 255, 50, 60, 70, 255, 50, 60, 70, 255, 50, 60, 70, 255, 1, 0, 2, 1, 0, 3, 1, 0};
    const auto chunks = chunksOf(written(pixels, 2, 3));
    const Bytes rows = {1, 50, 60, 70, 255, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2, 1, 0, 3, 1, 0};
    EXPECT_EQ(imageData(chunks), storedStream(rows));
}

TEST(PngWrite, DataAreStoredInBlocksOfAtMost65535Bytes) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    // Rows of 1 + 4 * 16383 = 65533 bytes; 65535 = 5 * 13107 bytes is one pixel by 13107.
    for (const auto& [width, height] :
         std::vector<std::pair<int, int>>{{16383, 1}, {16383, 2}, {1, 13107}, {1, 13108}, {1, 26214}, {200, 300}}) {
        const Bytes pixels = randomPixels(random, static_cast<std::size_t>(width), static_cast<std::size_t>(height));
        const Bytes data = imageData(chunksOf(written(pixels, width, height)));
        const std::size_t raw = static_cast<std::size_t>((1 + 4 * width) * height);

        ByteReader reader(data);
        EXPECT_EQ(reader.u16be(), 0x7801);
        Bytes rows;
        for (bool last = false; !last;) {
            const std::uint8_t header = reader.u8();
            ASSERT_LE(header, 1); // the last bit, and a type of 0
            last = header == 1;
            const std::uint16_t length = reader.u16le();
            EXPECT_EQ(reader.u16le(), length ^ 0xFFFF);
            const std::size_t expected = std::min<std::size_t>(raw - rows.size(), 65535);
            ASSERT_EQ(length, expected);
            const auto block = reader.bytes(length);
            rows.insert(rows.end(), block.begin(), block.end());
            EXPECT_EQ(last, rows.size() == raw);
        }
        EXPECT_EQ(reader.u32be(), plainAdler(rows));
        EXPECT_EQ(reader.remaining(), 0U);
        EXPECT_FALSE(reader.failed());
    }
}

TEST(PngWrite, EachBatchIsOneChunk) {
    const int width = 333;
    const int height = 400;
    const auto chunks = chunksOf(written(Bytes(width * height * 4, 77), width, height));
    std::vector<std::size_t> sizes;
    std::string types;
    for (const Chunk& chunk : chunks) {
        types += chunk.type + " ";
        if (chunk.type == "IDAT") sizes.push_back(chunk.data.size());
    }
    const std::size_t raw = (1 + 4 * width) * height;
    const std::size_t total = 2 + raw + (raw + 65534) / 65535 * 5 + 4;
    ASSERT_EQ(sizes.size(), (total + wm::png::imageDataBatch - 1) / wm::png::imageDataBatch);
    ASSERT_GT(sizes.size(), 3U);
    for (std::size_t i = 0; i + 1 < sizes.size(); ++i) EXPECT_EQ(sizes[i], wm::png::imageDataBatch);
    EXPECT_EQ(sizes.back(), total - (sizes.size() - 1) * wm::png::imageDataBatch);
    EXPECT_EQ(types.substr(0, 10), "IHDR IDAT ");
    EXPECT_EQ(types.substr(types.size() - 10), "IDAT IEND ");
}

TEST(PngWrite, AStreamThatFillsItsBatchesExactlyHasNoEmptyChunk) {
    // 2 + 5 + raw + 4 = 65536 bytes for raw = 65525 = (1 + 4 * 655) * 25.
    const auto chunks = chunksOf(written(Bytes(655 * 25 * 4), 655, 25));
    ASSERT_EQ(chunks.size(), 3U);
    EXPECT_EQ(chunks[1].data.size(), wm::png::imageDataBatch);
}

TEST(PngWrite, WhatIsSavedIsLoadedAgain) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    for (int round = 0; round < 100; ++round) {
        const std::size_t width = 1 + random() % 90;
        const std::size_t height = 1 + random() % 90;
        const Bytes pixels = randomPixels(random, width, height);
        const Bytes file = written(pixels, static_cast<std::int32_t>(width), static_cast<std::int32_t>(height));
        ASSERT_EQ(loadedPixels(file), pixels) << width << ' ' << height;
    }
}

TEST(PngWrite, BothNamesWriteTheSame) {
    const TemporaryDirectory directory;
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_TRUE(wm::png::save_png_rgba8_file(directory.path("a"), pixels.data(), 2, 1));
    EXPECT_TRUE(wm::png::save_rgba8_file(directory.path("b"), pixels.data(), 2, 1));
    EXPECT_EQ(readFile(directory.path("a")), readFile(directory.path("b")));
}

TEST(PngWrite, NothingToWriteFailsAndLeavesNoFile) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture.png");
    const Bytes pixels(16);
    EXPECT_FALSE(wm::png::save_png_rgba8_file(path, nullptr, 2, 2));
    EXPECT_FALSE(wm::png::save_png_rgba8_file(path, pixels.data(), 0, 2));
    EXPECT_FALSE(wm::png::save_png_rgba8_file(path, pixels.data(), 2, 0));
    EXPECT_FALSE(wm::png::save_png_rgba8_file(path, pixels.data(), -1, 2));
    EXPECT_FALSE(wm::png::save_png_rgba8_file(path, pixels.data(), 2, -1));
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(PngWrite, AnUnreachablePathFails) {
    const TemporaryDirectory directory;
    const Bytes pixels(4);
    EXPECT_FALSE(wm::png::save_png_rgba8_file(directory.path("missing/picture.png"), pixels.data(), 1, 1));
    EXPECT_FALSE(wm::png::save_png_rgba8_file(directory.path(""), pixels.data(), 1, 1));
}

TEST(PngWrite, AFullDiskFails) {
    ASSERT_TRUE(std::filesystem::exists("/dev/full")); // a device on which nothing fits
    const Bytes pixels(500 * 500 * 4);
    EXPECT_FALSE(wm::png::save_png_rgba8_file("/dev/full", pixels.data(), 500, 500));
    EXPECT_FALSE(wm::png::save_png_rgba8_file("/dev/full", pixels.data(), 1, 1)); // noticed only when it is closed
}

TEST(PngWrite, AChunkIsLengthTypeDataAndChecksum) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("chunk");
    const Bytes data = {1, 2, 3};
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(wm::png::write_chunk(file, "abCD", data.data(), data.size()));
    EXPECT_TRUE(wm::png::write_chunk(file, "EFgh", nullptr, 0));
    std::fclose(file);
    const Bytes first = Bytes{'a', 'b', 'C', 'D'} + data;
    const Bytes second = {'E', 'F', 'g', 'h'};
    EXPECT_EQ(readFile(path),
              bigEndian(3) + first + bigEndian(plainCrc(first)) + bigEndian(0) + second + bigEndian(plainCrc(second)));
}

TEST(PngWrite, AShortWriteOfAChunkFails) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("chunk");
    writeFile(path, {});
    const Bytes data(3);
    std::FILE* file = std::fopen(path.c_str(), "rb"); // where nothing can be written
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(wm::png::write_chunk(file, "abCD", data.data(), data.size()));
    std::fclose(file);
}

} // namespace
