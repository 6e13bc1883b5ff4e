// What the entries for images do that a script cannot see, or could see only with more memory than a test should take.

#include "host/index.h"
#include "plush/registry.h"
#include "plush/render_size.h"
#include "plush/rows.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

class ImageEntries : public testing::Test {
protected:
    static void SetUpTestSuite() { registerFunctions(); }

    void TearDown() override {
        AllowedThreads = threads_;
        while (!livePlushImages.empty()) killImage(*livePlushImages.begin());
    }

    static Variable call(const char* key, const std::vector<Variable>& arguments) {
        return engine.callCallable(*engine.pullVariable("Plush").asTable()->find(key), arguments);
    }

    static std::string failureOf(const char* key, const std::vector<Variable>& arguments) {
        try {
            call(key, arguments);
        } catch (const std::exception& failure) {
            return failure.what();
        }
        return "no failure";
    }

    /// A live image that claims a size beyond its one pixel. Only to be refused.
    static PlushImage* claimedImage(int width, int height) {
        PlushImage* image = createSolidColourImage(1, 1, 1, 2, 3, 4);
        image->width = width;
        image->height = height;
        return image;
    }

private:
    int threads_ = AllowedThreads;
};

TEST_F(ImageEntries, ThreadsSetsWhateverItIsGivenWithoutItsFraction) {
    constexpr int most = std::numeric_limits<int>::max();
    const std::vector<std::pair<Variable, int>> settings = {{3, 3},    {2.9F, 2},    {-2.9F, -2},  {0, 0},    {-7, -7},
                                                            {true, 1}, {most, most}, {3e9F, most}, {-0.5F, 0}};
    for (const auto& [given, expected] : settings) {
        EXPECT_TRUE(call("threads", {given}).isNil());
        EXPECT_EQ(AllowedThreads, expected);
    }
}

TEST_F(ImageEntries, DoublingAnImageBeyondTheLimitFailsAndChangesNothing) {
    constexpr int side = 1 << 13; // twice that, squared, is the limit
    PlushImage* image = claimedImage(side, side + 1);
    EXPECT_EQ(failureOf("dither", {image, 0, true}), "Plush.dither: image is too large");
    EXPECT_EQ(image->width, side);
    EXPECT_EQ(image->height, side + 1);
}

TEST_F(ImageEntries, EnlargingAnImageBeyondTheLimitFailsAndChangesNothing) {
    constexpr int side = 1 << 13;
    PlushImage* image = claimedImage(side, side + 1);
    EXPECT_EQ(failureOf("bilinear", {image, 2}), "Plush.bilinear: image is too large");
    EXPECT_EQ(image->height, side + 1);
}

TEST_F(ImageEntries, ALoadedPictureSetsTheRenderSizeAndAFailureLeavesIt) {
    const std::string file = (std::filesystem::path(testing::TempDir()) / "velmaris-image-entries.png").string();
    call("saveImage", {file, createSolidColourImage(5, 3, 0, 0, 0, 255)});
    renderSize = {1, 1};
    const Variable loaded = call("loadPNG", {file});
    EXPECT_EQ(renderSize.width, 5);
    EXPECT_EQ(renderSize.height, 3);
    std::filesystem::remove(file);
    EXPECT_NE(failureOf("loadPNG", {file}), "no failure");
    EXPECT_EQ(renderSize.width, 5);
}

TEST_F(ImageEntries, AnInsertedReflectionIsACopyOfItsOwn) {
    PlushImage* image = createSolidColourImage(1, 1, 0, 0, 0, 0);
    PlushImage* map = createSolidColourImage(3, 2, 9, 8, 7, 6);
    EXPECT_TRUE(call("insertReflection", {image, map}).isNil());
    call("killImage", {map});
    EXPECT_EQ(image->reflectWidth, 3);
    EXPECT_EQ(image->reflectHeight, 2);
    const std::vector<PixelByte> last(image->reflectPixels + 20, image->reflectPixels + 24);
    EXPECT_EQ(last, (std::vector<PixelByte>{9, 8, 7, 6}));
}

} // namespace
