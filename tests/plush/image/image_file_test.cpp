// Loading an image makes it live and sets the render size.

#include "plush/image_file.h"
#include "plush/pixels.h"
#include "plush/registry.h"
#include "plush/render_size.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

std::string testFile(const char* name) { return (std::filesystem::path(testing::TempDir()) / name).string(); }

TEST(ImageFile, ASavedImageLoadsAsALiveOneOfTheSameBytes) {
    PlushImage* saved = createSolidColourImage(5, 3, 1, 2, 3, 4);
    setPixel(saved, 4, 2, 250, 0, 128, 0);
    const std::string file = testFile("velmaris-image-file.png");
    ASSERT_TRUE(saveImageFile(*saved, file));
    PlushImage* loaded = loadImageFile(file);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(isLiveImage(loaded));
    EXPECT_EQ(loaded->width, 5);
    EXPECT_EQ(loaded->height, 3);
    EXPECT_EQ(loaded->reflectPixels, nullptr);
    EXPECT_TRUE(std::equal(saved->pixels, saved->pixels + 5 * 3 * bytesPerPixel, loaded->pixels));
    killImage(saved);
    killImage(loaded);
    std::filesystem::remove(file);
}

TEST(ImageFile, LoadingSetsTheRenderSizeAndAFailedLoadLeavesIt) {
    PlushImage* saved = createSolidColourImage(7, 2, 0, 0, 0, 0);
    const std::string file = testFile("velmaris-render-size.png");
    ASSERT_TRUE(saveImageFile(*saved, file));
    renderSize = {1, 1};
    killImage(loadImageFile(file));
    EXPECT_EQ(renderSize.width, 7);
    EXPECT_EQ(renderSize.height, 2);
    const std::size_t liveImages = livePlushImages.size();
    EXPECT_EQ(loadImageFile(testFile("velmaris-no-such-file.png")), nullptr);
    EXPECT_EQ(renderSize.width, 7);
    EXPECT_EQ(livePlushImages.size(), liveImages);
    killImage(saved);
    std::filesystem::remove(file);
}

TEST(ImageFile, BytesThatAreNoImageAreNotLoaded) {
    const std::string file = testFile("velmaris-no-image.png");
    std::ofstream(file, std::ios::binary) << "no image at all";
    EXPECT_EQ(loadImageFile(file), nullptr);
    std::filesystem::remove(file);
}

TEST(ImageFile, AFileThatCannotBeWrittenIsReported) {
    PlushImage* image = createSolidColourImage(1, 1, 0, 0, 0, 0);
    EXPECT_FALSE(saveImageFile(*image, testFile("velmaris-no-such-directory/image.png")));
    killImage(image);
}

} // namespace
