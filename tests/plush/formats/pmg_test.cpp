// The engine's own image files: the layout byte for byte, what is refused, and images on their way through a file.

#include "picture_files.h"
#include "plush/pixels.h"
#include "plush/registry.h"
#include "plush/render_size.h"
#include "plush/runtime_file.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace formats_test;

/// A live image that dies with the test.
struct TestImage {
    PlushImage* image;

    TestImage(int width, int height) : image(createSolidColourImage(width, height, 1, 2, 3, 4)) {}
    TestImage(const TestImage&) = delete;
    TestImage& operator=(const TestImage&) = delete;
    ~TestImage() { killImage(image); }

    void giveMap(int width, int height) {
        image->reflectWidth = width;
        image->reflectHeight = height;
        const std::size_t size = static_cast<std::size_t>(width * height) * bytesPerPixel;
        image->reflectPixels = new PixelByte[size];
        for (std::size_t at = 0; at < size; ++at) image->reflectPixels[at] = static_cast<PixelByte>(200 - at);
    }
};

TEST(PMG, IsKnownByItsExtensionInSmallLetters) {
    EXPECT_TRUE(hasPMGExtension("a.pmg"));
    EXPECT_TRUE(hasPMGExtension("a.b/c.png.pmg"));
    EXPECT_TRUE(hasPMGExtension(".pmg"));
    EXPECT_FALSE(hasPMGExtension(""));
    EXPECT_FALSE(hasPMGExtension("pmg"));
    EXPECT_FALSE(hasPMGExtension("a.PMG"));
    EXPECT_FALSE(hasPMGExtension("a.pmg "));
    EXPECT_FALSE(hasPMGExtension("a.pmg.png"));
}

TEST(PMG, HoldsAPixelIn36Bytes) {
    const TestImage pixel(1, 1);
    Bytes file;
    ASSERT_TRUE(writePMG(*pixel.image, file));
    const Bytes expected = {1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 2,
                            3, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(file, expected);
}

TEST(PMG, HoldsTheMapBehindThePixels) {
    TestImage image(1, 1);
    image.giveMap(2, 1);
    Bytes file;
    ASSERT_TRUE(writePMG(*image.image, file));
    const Bytes expected = {1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0,   0,   1,   2,   3,   4,   2,   0,
                            0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 200, 199, 198, 197, 196, 195, 194, 193};
    EXPECT_EQ(file, expected);
}

TEST(PMG, KeepsAnImageAndItsMapThroughAFile) {
    const TemporaryDirectory directory;
    TestImage saved(5, 3);
    setPixel(saved.image, 4, 2, 250, 0, 128, 0);
    saved.giveMap(2, 7);
    ASSERT_TRUE(savePlushImage(saved.image, directory.path("image.pmg")));
    EXPECT_EQ(fs::file_size(directory.path("image.pmg")), 32U + 4 * (15 + 14));

    renderSize = {11, 12};
    PlushImage* loaded = loadPlushImage(directory.path("image.pmg"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(isLiveImage(loaded));
    EXPECT_EQ(loaded->width, 5);
    EXPECT_EQ(loaded->height, 3);
    EXPECT_EQ(std::memcmp(loaded->pixels, saved.image->pixels, 15 * bytesPerPixel), 0);
    EXPECT_EQ(loaded->reflectWidth, 2);
    EXPECT_EQ(loaded->reflectHeight, 7);
    EXPECT_EQ(std::memcmp(loaded->reflectPixels, saved.image->reflectPixels, 14 * bytesPerPixel), 0);
    EXPECT_EQ(renderSize.width, 11); // only pictures of other formats set it
    killImage(loaded);
}

TEST(PMG, KeepsAnImageWithoutPixels) {
    const TemporaryDirectory directory;
    const TestImage saved(1, 1);
    delete[] saved.image->pixels;
    *saved.image = {};
    ASSERT_TRUE(savePlushImage(saved.image, directory.path("empty.pmg")));
    PlushImage* loaded = loadPlushImage(directory.path("empty.pmg"));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->pixels, nullptr);
    EXPECT_EQ(loaded->reflectPixels, nullptr);
    EXPECT_TRUE(cleanImage(loaded));
    killImage(loaded);
}

TEST(PMG, CorpusFilesComeOutOfTheWriterAsTheyWentIn) {
    for (const fs::path& path : filesIn("good", ".pmg")) {
        const Bytes file = readFile(path);
        const OwnedImage image = readPMG(file);
        ASSERT_NE(image, nullptr) << path;
        Bytes written;
        ASSERT_TRUE(writePMG(*image, written)) << path;
        EXPECT_EQ(written, file) << path;
    }
}

TEST(PMG, IsNotWrittenUnderAnotherExtension) {
    const TemporaryDirectory directory;
    const TestImage image(1, 1);
    EXPECT_FALSE(savePlushImage(image.image, directory.path("a.png")));
    EXPECT_FALSE(fs::exists(directory.path("a.png")));
    EXPECT_FALSE(savePlushImage(image.image, ""));
}

TEST(PMG, IsNotReadUnderAnotherExtension) {
    const TemporaryDirectory directory;
    const TestImage image(1, 1);
    ASSERT_TRUE(savePlushImage(image.image, directory.path("a.pmg")));
    fs::rename(directory.path("a.pmg"), directory.path("a.png"));
    EXPECT_EQ(loadPlushImage(directory.path("a.png")), nullptr);
    EXPECT_EQ(loadPlushImage(""), nullptr);
}

TEST(PMG, NoImageIsNotSaved) {
    const TemporaryDirectory directory;
    EXPECT_FALSE(savePlushImage(nullptr, directory.path("a.pmg")));
    EXPECT_FALSE(fs::exists(directory.path("a.pmg")));
}

TEST(PMG, AnImageThatNoScriptHoldsIsSavedAsWell) {
    const TemporaryDirectory directory;
    PixelByte pixel[] = {1, 2, 3, 4};
    const PlushImage image = {.width = 1, .height = 1, .pixels = pixel};
    EXPECT_TRUE(savePlushImage(&image, directory.path("a.pmg")));
    EXPECT_EQ(fs::file_size(directory.path("a.pmg")), 36U);
}

TEST(PMG, SizesThatHaveNoPixelsAreNotSaved) {
    const TemporaryDirectory directory;
    const std::string path = directory.path("a.pmg");
    const TestImage saved(1, 1);
    PlushImage& image = *saved.image;
    image.reflectWidth = 1;
    image.reflectHeight = 1; // without a block
    EXPECT_FALSE(savePlushImage(&image, path));
    image.reflectHeight = -1;
    EXPECT_FALSE(savePlushImage(&image, path));
    image.reflectHeight = 0;
    EXPECT_TRUE(savePlushImage(&image, path));
    fs::remove(path);
    image.width = -1;
    EXPECT_FALSE(savePlushImage(&image, path));
    image.width = 1;
    PixelByte* pixels = image.pixels;
    image.pixels = nullptr;
    EXPECT_FALSE(savePlushImage(&image, path));
    image.pixels = pixels;
    EXPECT_FALSE(fs::exists(path));
}

TEST(PMG, AFileThatCannotBeWrittenOrReadIsReported) {
    const TemporaryDirectory directory;
    const TestImage image(1, 1);
    const std::size_t live = livePlushImages.size();
    EXPECT_FALSE(savePlushImage(image.image, directory.path("missing/a.pmg")));
    EXPECT_EQ(loadPlushImage(directory.path("missing.pmg")), nullptr);
    fs::create_directory(directory.path("folder.pmg"));
    EXPECT_FALSE(savePlushImage(image.image, directory.path("folder.pmg")));
    EXPECT_EQ(loadPlushImage(directory.path("folder.pmg")), nullptr);
    writeFile(directory.path("broken.pmg"), Bytes(31));
    EXPECT_EQ(loadPlushImage(directory.path("broken.pmg")), nullptr);
    EXPECT_EQ(livePlushImages.size(), live);
}

TEST(RuntimeFile, GivesBackWhatWasWritten) {
    const TemporaryDirectory directory;
    const Bytes content = {0, '\r', '\n', 26, 255, '\n'};
    Bytes read = {1, 2, 3};
    ASSERT_TRUE(writeRuntimeFile(directory.path("a"), content));
    ASSERT_TRUE(readRuntimeFile(directory.path("a"), read, content.size()));
    EXPECT_EQ(read, content);
    ASSERT_TRUE(writeRuntimeFile(directory.path("a"), {}));
    ASSERT_TRUE(readRuntimeFile(directory.path("a"), read, 0));
    EXPECT_TRUE(read.empty());
}

TEST(RuntimeFile, HasAPathWhoseBackslashesAreSlashes) {
    const TemporaryDirectory directory;
    fs::create_directory(directory.path("folder"));
    Bytes read;
    ASSERT_TRUE(writeRuntimeFile(directory.path("folder\\a"), Bytes(3)));
    EXPECT_EQ(fs::file_size(directory.path("folder/a")), 3U);
    ASSERT_TRUE(readRuntimeFile(directory.path("folder\\a"), read, 3));
    EXPECT_EQ(read, Bytes(3));
}

TEST(RuntimeFile, BeyondItsLimitIsNotRead) {
    const TemporaryDirectory directory;
    Bytes read;
    ASSERT_TRUE(writeRuntimeFile(directory.path("a"), Bytes(10)));
    EXPECT_FALSE(readRuntimeFile(directory.path("a"), read, 9));
}

} // namespace
