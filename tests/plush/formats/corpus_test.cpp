// The corpus: files that must load, each with its pixels, among them those of another program, and files that must not,
// each wrong in one way. See corpus/README.md.

#include "picture_files.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace formats_test;

constexpr const char* extensions[] = {".bmp", ".tga", ".xcf", ".pmg"};

TEST(FormatsCorpus, HasAsManyBrokenFilesAsGoodOnes) {
    for (const char* extension : extensions) {
        EXPECT_GE(filesIn("good", extension).size(), 6U) << extension;
        EXPECT_GE(filesIn("broken", extension).size(), filesIn("good", extension).size()) << extension;
    }
}

TEST(FormatsCorpus, GoodFilesGiveTheirPixels) {
    for (const fs::path& path : filesIn("good")) {
        const auto pixels = loadedPixels(readFile(path), path.extension().string());
        ASSERT_TRUE(pixels) << path;
        EXPECT_TRUE(*pixels == readFile(path.string() + ".rgba")) << path;
    }
}

/// GIMP lays what is not opaque in fractions and rounds once, at the end; we do it in whole numbers, and round each
/// step.
const std::set<std::string> laidInFractions = {"group-mask.xcf", "group-nested.xcf", "group-opacity.xcf",
                                               "opacity.xcf"};

TEST(FormatsCorpus, FilesOfGimpGiveThePixelsThatItShows) {
    const std::vector<fs::path> files = filesIn("gimp");
    EXPECT_GE(files.size(), 80U);
    for (const fs::path& path : files) {
        const auto pixels = loadedPixels(readFile(path), path.extension().string());
        ASSERT_TRUE(pixels) << path;
        const Bytes expected = readFile(path.string() + ".rgba");
        if (laidInFractions.contains(path.filename().string()))
            EXPECT_LE(difference(*pixels, expected), 1) << path;
        else
            EXPECT_TRUE(*pixels == expected) << path;
    }
}

TEST(FormatsCorpus, BrokenFilesFail) {
    for (const fs::path& path : filesIn("broken"))
        EXPECT_FALSE(loadedPixels(readFile(path), path.extension().string())) << path;
}

TEST(FormatsCorpus, GoodFilesCutAnywhereFail) {
    for (const fs::path& path : filesIn("good")) {
        const Bytes file = readFile(path);
        for (std::size_t size = 0; size < file.size(); ++size) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            ASSERT_FALSE(loadedPixels(cut, path.extension().string())) << path << ' ' << size;
        }
    }
}

/// Some of the changes are to a colour and some to the structure, so both outcomes must occur.
TEST(FormatsCorpus, GoodFilesWithAnyByteChangedGiveAPictureOrNone) {
    int loaded = 0;
    int refused = 0;
    for (const fs::path& path : filesIn("good")) {
        Bytes file = readFile(path);
        const std::size_t step = file.size() / 300 + 1;
        for (std::size_t at = 0; at < file.size(); at += step) {
            const std::uint8_t right = file[at];
            for (const int wrong : {right ^ 1, right ^ 8, 127, 255}) {
                file[at] = static_cast<std::uint8_t>(wrong);
                ++(isLoaded(file, path.extension().string()) ? loaded : refused);
            }
            file[at] = right;
        }
    }
    EXPECT_GT(loaded, 1000);
    EXPECT_GT(refused, 1000);
}

TEST(FormatsCorpus, BytesBehindThePictureAreIgnored) {
    for (const fs::path& path : filesIn("good")) {
        Bytes file = readFile(path);
        file.insert(file.end(), 40, 0xA5);
        const auto pixels = loadedPixels(file, path.extension().string());
        ASSERT_TRUE(pixels) << path;
        EXPECT_TRUE(*pixels == readFile(path.string() + ".rgba")) << path;
    }
}

} // namespace
