// The writers: headers byte for byte, and pictures that come back as they were.

#include "picture_files.h"
#include "plush/png_entry.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace formats_test;

using Writer = bool (*)(const char* path, const std::uint8_t* pixels, int width, int height);

struct Format {
    const char* extension;
    int detected;
    Writer write;
};

constexpr Format formats[] = {{".bmp", wm::png::bmpFormat, &wm_save_bmp},
                              {".tga", wm::png::tgaFormat, &wm_save_tga},
                              {".xcf", wm::png::xcfFormat, &wm_save_xcf}};

Bytes written(Writer write, const Bytes& pixels, int width, int height) {
    const TemporaryDirectory directory;
    if (!write(directory.path("a").c_str(), pixels.data(), width, height)) return {};
    return readFile(directory.path("a"));
}

/// Noise with stretches that are the same, so that runs of all lengths occur.
Bytes randomPixels(std::mt19937& random, int width, int height) {
    Bytes pixels(static_cast<std::size_t>(width * height) * wm::png::rgbaSize);
    std::size_t at = 0;
    while (at < pixels.size()) {
        const std::size_t stretch = random() % 3 == 0 ? 1 + random() % 900 : 1;
        std::uint8_t colour[wm::png::rgbaSize];
        for (std::uint8_t& byte : colour) byte = static_cast<std::uint8_t>(random() % 4 == 0 ? 0 : random());
        for (std::size_t i = 0; i < stretch * wm::png::rgbaSize && at < pixels.size(); ++i)
            pixels[at++] = colour[i % wm::png::rgbaSize];
    }
    return pixels;
}

TEST(PictureWriters, PicturesComeBackAsTheyWere) {
    const auto seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (const Format& format : formats) {
        for (int i = 0; i < 40; ++i) {
            const int width = static_cast<int>(1 + random() % (i % 4 == 0 ? 200 : 70));
            const int height = static_cast<int>(1 + random() % 140);
            const Bytes pixels = randomPixels(random, width, height);
            const Bytes file = written(format.write, pixels, width, height);
            EXPECT_EQ(wm::png::detect_format(file.data(), file.size()), format.detected);
            wm::png::Image image;
            ASSERT_TRUE(wm::png::load_memory(file.data(), file.size(), image)) << format.extension;
            ASSERT_EQ(image.width, width);
            ASSERT_EQ(image.height, height);
            ASSERT_TRUE(image.pixels == pixels) << format.extension << ' ' << width << 'x' << height;
        }
    }
}

TEST(PictureWriters, TransparentPixelsKeepTheirColours) {
    const Bytes pixels = {1, 2, 3, 0, 4, 5, 6, 0};
    for (const Format& format : formats) {
        const Bytes file = written(format.write, pixels, 2, 1);
        EXPECT_EQ(loadedPixels(file, format.extension), pixels) << format.extension;
    }
}

TEST(PictureEntry, LoadsEveryFormatIntoABlockThatTheCallerFrees) {
    const TemporaryDirectory directory;
    const Bytes pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    for (const Format& format : formats) {
        const std::string path = directory.path("a"); // what it holds is told by its content
        ASSERT_TRUE(format.write(path.c_str(), pixels.data(), 1, 2));
        int width = 0;
        int height = 0;
        const std::unique_ptr<std::uint8_t[]> block(wm_load_png(path.c_str(), &width, &height));
        ASSERT_NE(block, nullptr) << format.extension;
        EXPECT_EQ(width, 1);
        EXPECT_EQ(height, 2);
        EXPECT_EQ(Bytes(block.get(), block.get() + pixels.size()), pixels) << format.extension;
    }
}

TEST(PictureWriters, FilesCutAnywhereInThePictureFail) {
    std::mt19937 random(3);
    constexpr std::size_t tgaFooter = 26; // without it a file is a whole one of the format's first version
    for (const Format& format : formats) {
        const Bytes file = written(format.write, randomPixels(random, 9, 8), 9, 8);
        ASSERT_FALSE(file.empty());
        const std::size_t end = file.size() - (format.detected == wm::png::tgaFormat ? tgaFooter : 0);
        for (std::size_t size = 0; size < end; ++size) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            ASSERT_FALSE(loadedPixels(cut, format.extension)) << format.extension << ' ' << size;
        }
    }
}

TEST(PictureWriters, RefuseNothing) {
    const TemporaryDirectory directory;
    const Bytes pixels(4);
    for (const Format& format : formats) {
        EXPECT_FALSE(format.write(nullptr, pixels.data(), 1, 1));
        EXPECT_FALSE(format.write(directory.path("a").c_str(), nullptr, 1, 1));
        EXPECT_FALSE(format.write(directory.path("a").c_str(), pixels.data(), 0, 1));
        EXPECT_FALSE(format.write(directory.path("a").c_str(), pixels.data(), 1, 0));
        EXPECT_FALSE(format.write(directory.path("a").c_str(), pixels.data(), -1, 1));
        EXPECT_FALSE(format.write(directory.path("a").c_str(), pixels.data(), 1, -1));
        EXPECT_FALSE(fs::exists(directory.path("a")));
        EXPECT_FALSE(format.write(directory.path("missing/a").c_str(), pixels.data(), 1, 1));
    }
}

TEST(PictureWriters, RefuseSizesThatTheFieldsCannotHold) {
    const TemporaryDirectory directory;
    const Bytes pixel(4); // never read
    const std::string path = directory.path("a");
    EXPECT_FALSE(wm_save_tga(path.c_str(), pixel.data(), 65536, 1));
    EXPECT_FALSE(wm_save_tga(path.c_str(), pixel.data(), 1, 65536));
    EXPECT_FALSE(wm_save_bmp(path.c_str(), pixel.data(), 32768, 32768));
    EXPECT_FALSE(fs::exists(path));
}

TEST(BmpWriter, WritesAHeaderOf122Bytes) {
    const Bytes file = written(&wm_save_bmp, {1, 2, 3, 4, 5, 6, 7, 8}, 1, 2);
    Bytes expected = {'B', 'M', 130, 0, 0, 0, 0, 0, 0, 0, 122, 0, 0, 0};
    const Bytes info = {108, 0, 0,   0, 1,    0,   0, 0, 254,  255, 255, 255, 1, 0, 32, 0,   3,   0,   0,   0,
                        8,   0, 0,   0, 0x13, 11,  0, 0, 0x13, 11,  0,   0,   0, 0, 0,  0,   0,   0,   0,   0,
                        0,   0, 255, 0, 0,    255, 0, 0, 255,  0,   0,   0,   0, 0, 0,  255, 'B', 'G', 'R', 's'};
    expected.insert(expected.end(), info.begin(), info.end());
    expected.resize(122);
    const Bytes pixels = {3, 2, 1, 4, 7, 6, 5, 8};
    expected.insert(expected.end(), pixels.begin(), pixels.end());
    EXPECT_EQ(file, expected);
}

TEST(TgaWriter, WritesHeaderPixelsAndFooter) {
    const Bytes file = written(&wm_save_tga, {1, 2, 3, 4, 5, 6, 7, 8}, 2, 1);
    Bytes expected = {0,    0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 1, 0, 32,
                      0x28, 3, 2, 1, 4, 7, 6, 5, 8, 0, 0, 0, 0, 0, 0, 0, 0};
    const std::string signature = "TRUEVISION-XFILE.";
    expected.insert(expected.end(), signature.begin(), signature.end());
    expected.push_back(0);
    EXPECT_EQ(file, expected);
}

TEST(XcfWriter, WritesOneLayerOfTheFirstVersion) {
    const Bytes file = written(&wm_save_xcf, {1, 2, 3, 4}, 1, 1);
    const std::string start("gimp xcf v00\0\0\0\0\0\1\0\0\0\1\0\0\0\0", 26);
    ASSERT_GT(file.size(), start.size());
    EXPECT_EQ(std::string(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(start.size())), start);
    const std::string name("\0\0\0\6Layer\0", 10);
    EXPECT_NE(std::string(file.begin(), file.end()).find(name), std::string::npos);
    const Bytes runs = {255, 1, 255, 2, 255, 3, 255, 4};
    EXPECT_TRUE(std::equal(runs.rbegin(), runs.rend(), file.rbegin()));
}

} // namespace
