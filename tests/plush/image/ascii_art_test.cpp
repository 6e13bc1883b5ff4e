// Images as text.

#include "operation_test.h"
#include "plush/ascii_art.h"
#include "plush/colour_grading.h"

#include <gtest/gtest.h>

namespace {

Picture plain(PixelByte r, PixelByte g, PixelByte b) {
    Picture picture(1, 1);
    picture.bytes = {r, g, b, 255};
    return picture;
}

std::string printed(const Picture& picture, int columns, int rows) {
    const LiveImage image(picture);
    return asciiArt(image.get(), columns, rows).value_or("invalid");
}

TEST(AsciiArt, FollowsTheReferenceOnRandomImagesAndGrids) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (int number = 0; number < 1000; ++number) {
        const Picture picture = randomPicture(random, 40, 40);
        const int columns = between(random, 1, 60);
        const int rows = between(random, 1, 40);
        ASSERT_EQ(printed(picture, columns, rows), referenceAsciiArt(picture, columns, rows))
            << picture.width << "x" << picture.height << " in " << columns << "x" << rows;
    }
}

TEST(AsciiArt, FullWhiteStaysBelowTheEndOfTheRamp) {
    EXPECT_EQ(printed(plain(255, 255, 255), 1, 1), "k\n");
    EXPECT_EQ(printed(plain(0, 0, 0), 1, 1), " \n");
}

TEST(AsciiArt, ThePictureIsCentredInBlanks) {
    EXPECT_EQ(printed(plain(255, 255, 255), 5, 1), "  k  \n");
    EXPECT_EQ(printed(plain(255, 255, 255), 1, 3), " \nk\n \n");
}

TEST(AsciiArt, FollowsTheGrading) {
    const ColourGrading before = colourGrading;
    colourGrading.red1 = 3.0F;
    EXPECT_EQ(printed(plain(255, 0, 0), 1, 1), "$\n");
    colourGrading.red1 = 100.0F;
    EXPECT_EQ(printed(plain(255, 0, 0), 1, 1), "$\n");
    colourGrading.red1 = -1.0F;
    EXPECT_EQ(printed(plain(255, 0, 0), 1, 1), " \n");
    colourGrading = before;
}

TEST(AsciiArt, PrintingWritesTheTextAndNothingElse) {
    const LiveImage image(plain(255, 255, 255));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    printAsciiArt(image.get(), 3, 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), " k \n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(AsciiArt, PrintingNothingComplainsOnTheErrorStream) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    printAsciiArt(nullptr, 3, 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Invalid input parameters.\n");
}

TEST(AsciiArt, ThereIsNoneOfNothing) {
    const LiveImage image(plain(1, 1, 1));
    PlushImage empty;
    empty.width = 1;
    empty.height = 1;
    EXPECT_FALSE(asciiArt(nullptr, 3, 3));
    EXPECT_FALSE(asciiArt(&empty, 3, 3));
    EXPECT_FALSE(asciiArt(image.get(), 0, 3));
    EXPECT_FALSE(asciiArt(image.get(), 3, -1));
}

} // namespace
