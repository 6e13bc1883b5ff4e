// The corpus: files of several programs that must load, each with its pixels as an independent decoder gave them, and
// files that must not load, each wrong in one way. See corpus/README.md.

#include "png_maker.h"
#include "temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace png_test;
namespace fs = std::filesystem;

const fs::path corpus = VELMARIS_PNG_CORPUS;

std::vector<fs::path> filesIn(const std::string& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(corpus / folder))
        if (entry.path().extension() == ".png") files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

TEST(PngCorpus, HasAsManyBrokenFilesAsGoodOnes) {
    EXPECT_GE(filesIn("good").size(), 40U);
    EXPECT_GE(filesIn("broken").size(), filesIn("good").size());
}

TEST(PngCorpus, GoodFilesGiveTheirPixels) {
    for (const fs::path& path : filesIn("good")) {
        fs::path expected = path;
        expected.replace_extension(".rgba");
        const auto pixels = loadedPixels(readFile(path));
        ASSERT_TRUE(pixels) << path;
        EXPECT_TRUE(*pixels == readFile(expected)) << path;
    }
}

TEST(PngCorpus, GoodFilesCutAnywhereFail) {
    for (const fs::path& path : filesIn("good")) {
        const Bytes file = readFile(path);
        const std::size_t step = file.size() / 500 + 1;
        for (std::size_t size = 0; size < file.size(); size += step)
            ASSERT_FALSE(loadedPixels(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size))))
                << path << ' ' << size;
    }
}

TEST(PngCorpus, GoodFilesWithAFlippedBitFail) {
    for (const fs::path& path : filesIn("good")) {
        Bytes file = readFile(path);
        const std::size_t step = file.size() / 300 + 1;
        for (std::size_t at = 0; at < file.size(); at += step) {
            file[at] ^= 0x10;
            ASSERT_FALSE(loadedPixels(file)) << path << ' ' << at;
            file[at] ^= 0x10;
        }
    }
}

TEST(PngCorpus, BrokenFilesFail) {
    for (const fs::path& path : filesIn("broken")) EXPECT_FALSE(loadedPixels(readFile(path))) << path;
}

} // namespace
