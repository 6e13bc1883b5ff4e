// Telling formats apart, files on disk, and the flat entry points.

#include "plush/png.h"
#include "plush/png_entry.h"
#include "png_maker.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace png_test;

int formatOf(const Bytes& bytes) { return wm::png::detect_format(bytes.data(), bytes.size()); }

Bytes text(const std::string& letters) { return Bytes(letters.begin(), letters.end()); }

// ---- formats ----

TEST(PictureFormat, NothingIsUnknown) {
    EXPECT_EQ(wm::png::detect_format(nullptr, 0), 0);
    EXPECT_EQ(wm::png::detect_format(nullptr, 100), 0);
    const Bytes byte(1);
    EXPECT_EQ(wm::png::detect_format(byte.data(), 0), 0);
}

TEST(PictureFormat, PngByItsWholeSignature) {
    Bytes signature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
    EXPECT_EQ(formatOf(signature), 1);
    signature[7] = 0x0D;
    EXPECT_EQ(formatOf(signature), 0);
    signature.resize(7);
    EXPECT_EQ(formatOf(signature), 0);
}

TEST(PictureFormat, BmpByTwoLetters) {
    EXPECT_EQ(formatOf(text("BM")), 2);
    EXPECT_EQ(formatOf(text("BMxyz")), 2);
    EXPECT_EQ(formatOf(text("B")), 0);
}

TEST(PictureFormat, XcfByItsMagicInFourteenBytes) {
    EXPECT_EQ(formatOf(text("gimp xcf file") + Bytes{0}), 4);
    EXPECT_EQ(formatOf(text("gimp xcf v011") + Bytes{0}), 4);
    EXPECT_EQ(formatOf(text("gimp xcf file")), 0);
    EXPECT_EQ(formatOf(text("gimp xcx file") + Bytes{0}), 0);
}

/// A TGA header.
struct Tga {
    std::uint8_t mapKind = 0;
    std::uint8_t type = 2;
    std::uint8_t mapLength = 0;
    std::uint8_t mapDepth = 0;
    std::uint8_t width = 1;
    std::uint8_t height = 1;
    std::uint8_t depth = 32;

    Bytes bytes() const {
        return {0, mapKind, type, 0, 0, mapLength, 0, mapDepth, 0, 0, 0, 0, width, 0, height, 0, depth, 0};
    }
};

TEST(PictureFormat, TgaByAHeaderThatMakesSense) {
    for (const std::uint8_t runLength : {std::uint8_t{0}, std::uint8_t{8}}) {
        const auto type = [runLength](int kind) { return static_cast<std::uint8_t>(kind + runLength); };
        for (const std::uint8_t depth : {std::uint8_t{15}, std::uint8_t{16}, std::uint8_t{24}, std::uint8_t{32}})
            EXPECT_EQ(formatOf(Tga{.type = type(2), .depth = depth}.bytes()), 3) << int{depth};
        EXPECT_EQ(formatOf(Tga{.type = type(3), .depth = 8}.bytes()), 3);
        EXPECT_EQ(formatOf(Tga{1, type(1), 16, 24, 1, 1, 8}.bytes()), 3);
        EXPECT_EQ(formatOf(Tga{1, type(2), 16, 24, 1, 1, 24}.bytes()), 3); // a colour map that nobody needs
    }
}

TEST(PictureFormat, TgaHeadersThatMakeNoSenseAreUnknown) {
    for (const int type : {0, 4, 8, 12, 32, 33, 255})
        EXPECT_EQ(formatOf(Tga{.type = static_cast<std::uint8_t>(type)}.bytes()), 0) << type;
    EXPECT_EQ(formatOf(Tga{.mapKind = 2}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{.width = 0}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{.height = 0}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{.depth = 8}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{.depth = 17}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{.type = 3, .depth = 24}.bytes()), 0);
    EXPECT_EQ(formatOf(Tga{0, 1, 16, 24, 1, 1, 8}.bytes()), 0); // mapped, without a map
    EXPECT_EQ(formatOf(Tga{1, 1, 0, 24, 1, 1, 8}.bytes()), 0);  // a map without colours
    EXPECT_EQ(formatOf(Tga{1, 1, 16, 8, 1, 1, 8}.bytes()), 0);  // a map of no colours
    EXPECT_EQ(formatOf(Tga{1, 1, 16, 24, 1, 1, 24}.bytes()), 0);
    Bytes cut = Tga{}.bytes();
    cut.pop_back();
    EXPECT_EQ(formatOf(cut), 0);
}

TEST(PictureFormat, ASingleByteIsNoPicture) {
    wm::png::Image image;
    for (unsigned byte = 0; byte < 256; ++byte) {
        const Bytes file = {static_cast<std::uint8_t>(byte)};
        EXPECT_FALSE(wm::png::load_memory(file.data(), file.size(), image)) << byte;
    }
    EXPECT_FALSE(wm::png::load_memory(nullptr, 0, image));
}

// ---- files ----

TEST(PictureFile, LoadsWhatIsInTheFile) {
    const TemporaryDirectory directory;
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    writeFile(directory.path("picture"), rgbaFile(1, 2, pixels));
    wm::png::Image image;
    ASSERT_TRUE(wm::png::load_file(directory.path("picture"), image));
    EXPECT_EQ(image.width, 1);
    EXPECT_EQ(image.height, 2);
    EXPECT_EQ(image.pixels, pixels);
}

TEST(PictureFile, APathIsAStringOfBytes) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("p\xC3\xA4th with blanks");
    const Bytes pixels = {1, 2, 3, 4};
    ASSERT_TRUE(wm::png::save_rgba8_file(path, pixels.data(), 1, 1));
    wm::png::Image image;
    ASSERT_TRUE(wm::png::load_file(path, image));
    EXPECT_EQ(image.pixels, pixels);
}

TEST(PictureFile, WhatIsNoFileFails) {
    const TemporaryDirectory directory;
    wm::png::Image image;
    EXPECT_FALSE(wm::png::load_file(directory.path("missing"), image));
    EXPECT_FALSE(wm::png::load_file(directory.path(""), image)); // the directory itself
    EXPECT_FALSE(wm::png::load_file("", image));
    writeFile(directory.path("empty"), {});
    EXPECT_FALSE(wm::png::load_file(directory.path("empty"), image));
    EXPECT_FALSE(wm::png::load_file("/dev/zero", image)); // a device without an end, or again no file
}

TEST(PictureFile, AFileBeyondTheMemoryLimitIsNotRead) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("large");
    writeFile(path, rgbaFile(1, 1, {1, 2, 3, 4}));
    std::filesystem::resize_file(path, wm::png::memoryLimit + 1); // takes no room on the disk
    wm::png::Image image;
    EXPECT_FALSE(wm::png::load_file(path, image));
}

// ---- entry points ----

TEST(PictureEntry, LoadsABlockThatTheCallerFrees) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture");
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    writeFile(path, rgbaFile(2, 1, pixels));
    int width = 0;
    int height = 0;
    const std::unique_ptr<std::uint8_t[]> block(wm_load_png(path.c_str(), &width, &height));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(height, 1);
    EXPECT_EQ(Bytes(block.get(), block.get() + pixels.size()), pixels);
}

TEST(PictureEntry, AFailureIsNullAndLeavesTheSize) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture");
    int width = 11;
    int height = 22;
    EXPECT_EQ(wm_load_png(nullptr, &width, &height), nullptr);
    EXPECT_EQ(wm_load_png(path.c_str(), &width, &height), nullptr);
    Bytes file = rgbaFile(1, 1, {1, 2, 3, 4});
    writeFile(path, file);
    EXPECT_EQ(wm_load_png(path.c_str(), nullptr, &height), nullptr);
    EXPECT_EQ(wm_load_png(path.c_str(), &width, nullptr), nullptr);
    file[45] ^= 1; // in the picture data
    writeFile(path, file);
    EXPECT_EQ(wm_load_png(path.c_str(), &width, &height), nullptr);
    writeFile(path, text("BM and no more"));
    EXPECT_EQ(wm_load_png(path.c_str(), &width, &height), nullptr);
    EXPECT_EQ(width, 11);
    EXPECT_EQ(height, 22);
}

TEST(PictureEntry, SavesWhatItLoadsAgain) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("picture");
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 0};
    ASSERT_TRUE(wm_save_png(path.c_str(), pixels.data(), 1, 2));
    int width = 0;
    int height = 0;
    const std::unique_ptr<std::uint8_t[]> block(wm_load_png(path.c_str(), &width, &height));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(Bytes(block.get(), block.get() + pixels.size()), pixels);
}

TEST(PictureEntry, SavingNothingFails) {
    const TemporaryDirectory directory;
    const Bytes pixels(4);
    EXPECT_FALSE(wm_save_png(nullptr, pixels.data(), 1, 1));
    EXPECT_FALSE(wm_save_png(directory.path("a").c_str(), nullptr, 1, 1));
    EXPECT_FALSE(wm_save_png(directory.path("a").c_str(), pixels.data(), 0, 1));
}

TEST(PictureEntry, LoadedPixelsNeedNoFurtherPass) { EXPECT_FALSE(wm_png_requires_postprocess()); }

} // namespace
