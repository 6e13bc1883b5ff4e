// Cropping, mirroring and reflection maps.

#include "operation_test.h"
#include "plush/reshape.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

Picture trimmed(const Picture& picture, int width, int height) {
    const LiveImage image(picture);
    trimPlushImage(*image, width, height);
    return Picture(*image);
}

TEST(Trim, FollowsTheReferenceOnRandomSizes) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int number = 0; number < 1000; ++number) {
        const Picture picture = randomPicture(random, 30, 30);
        const int width = between(random, -1, 32);
        const int height = between(random, -1, 32);
        const ThreadSetting threads(between(random, -1, mostThreads));
        ASSERT_EQ(trimmed(picture, width, height), referenceTrim(picture, width, height))
            << picture.width << "x" << picture.height << " to " << width << "x" << height;
    }
}

TEST(Trim, SizesThatDontFitAndTheSameSizeChangeNothing) {
    const Picture picture = numberedPicture(4, 3);
    constexpr int most = std::numeric_limits<int>::max();
    const LiveImage image(picture);
    const PixelByte* pixels = image->pixels;
    for (const auto& [width, height] : {std::pair{4, 3}, {5, 1}, {1, 4}, {0, 2}, {2, 0}, {-1, -1}, {most, most}}) {
        trimPlushImage(*image, width, height);
        EXPECT_EQ(image->pixels, pixels) << width << "x" << height;
        EXPECT_EQ(Picture(*image), picture);
    }
    PlushImage empty;
    empty.width = 4;
    empty.height = 4;
    trimPlushImage(empty, 2, 2);
    EXPECT_EQ(empty.width, 4);
}

TEST(Mirror, FollowsTheReferenceOnRandomSizes) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int number = 0; number < 1000; ++number) {
        const Picture picture = randomPicture(random, 30, 30);
        const bool horizontal = random() % 2 == 0;
        const LiveImage image(picture);
        EXPECT_EQ(&mirrorPlushImage(*image, horizontal ? Mirror::Columns : Mirror::Rows), image.get());
        ASSERT_EQ(Picture(*image), referenceMirror(picture, horizontal)) << picture.width << "x" << picture.height;
    }
}

TEST(Mirror, ImagesWithoutPixelsOrSizeAreLeftAlone) {
    PlushImage empty;
    empty.width = 4;
    empty.height = 4;
    mirrorPlushImage(empty, Mirror::Columns);
    mirrorPlushImage(empty, Mirror::Rows);
    PixelByte pixel[bytesPerPixel] = {1, 2, 3, 4};
    empty.pixels = pixel;
    empty.width = 0;
    mirrorPlushImage(empty, Mirror::Columns);
    mirrorPlushImage(empty, Mirror::Rows);
    EXPECT_EQ(pixel[0], 1);
}

TEST(Reflection, TheMapIsACopyAndReplacesTheEarlierOne) {
    const LiveImage image(numberedPicture(2, 2));
    const LiveImage map(numberedPicture(5, 3));
    insertReflection(*image, *image);
    EXPECT_EQ(image->reflectWidth, 2);
    insertReflection(*image, *map);
    EXPECT_EQ(image->reflectWidth, 5);
    EXPECT_EQ(image->reflectHeight, 3);
    map->pixels[0] = 99;
    EXPECT_EQ(image->reflectPixels[0], 1);
    EXPECT_EQ(image->reflectPixels[4], 2);
}

} // namespace
