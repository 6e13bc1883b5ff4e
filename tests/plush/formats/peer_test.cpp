// ImageMagick beside our readers and writers.
//
// It reads what our writers wrote, and our readers must agree with it on every file of the corpus that it reads at all
// and to the same end. It repeats the upper bits of short samples where we round, which makes a difference of one; the
// files that it reads otherwise are named here.

#include "picture_files.h"
#include "plush/png_entry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace {

using namespace formats_test;

/// The picture as ImageMagick decodes it; empty if it does not.
Bytes peerPixels(const std::string& path) {
    const TemporaryDirectory directory;
    const std::string output = directory.path("pixels");
    const std::string command =
        std::string(VELMARIS_IMAGEMAGICK) + " '" + path + "' -auto-orient -depth 8 'RGBA:" + output + "' 2> /dev/null";
    if (std::system(command.c_str()) != 0) return {};
    return readFile(output);
}

/// Files that it refuses or takes for something else.
const std::set<std::string> readOtherwise = {
    // BMP: no short header of OS/2 and only three bytes a colour behind the long one, no sixth way of compression, no
    // masks in the second header, no scaling of samples that have not 5, 6 or 8 bits, no indices beyond the palette, no
    // wrong size of the file, and no data that are shorter than they would be uncompressed
    "header16-1.bmp", "header16-4.bmp", "header16-8.bmp", "header16-24.bmp", "header64-1.bmp", "header64-4.bmp",
    "header64-8.bmp", "im-v5-1555.bmp", "im-v5-4444.bmp", "info-24-wrong-file-size.bmp", "info-4-five-colours.bmp",
    "info-4444-alpha.bmp", "info-one-bit-of-red.bmp", "info-rle4.bmp", "info-rle8-empty.bmp", "info-rle8.bmp",
    "info-scattered.bmp", "os2-rle8.bmp", "v2-565.bmp", "v3-10-10-10-2.bmp", "v3-4444.bmp", "v4-332.bmp", "v5-rle4.bmp",
    // TGA: no greys with alpha, no unused alpha, no maps that begin elsewhere or are not needed
    "colour-32-alpha-unused.tga", "grey-16-alpha-unused.tga", "grey-16-alpha0.tga", "grey-16-alpha0-runs.tga",
    "grey-16-alpha8.tga", "grey-16-alpha8-runs.tga", "index-beyond-map.tga", "map-not-needed.tga",
    "mapped-15-32-from0-alpha8.tga", "mapped-15-32-from0-alpha8-runs.tga", "mapped-16-24-from300-alpha0.tga",
    "mapped-16-24-from300-alpha0-runs.tga", "mapped-32-alpha0-all-clear.tga", "mapped-8-16-from3-alpha1.tga",
    "mapped-8-16-from3-alpha1-runs.tga"};

/// It knows the first versions of the format, without indexed pictures, and gives layers one by one.
const std::set<std::string> readXcf = {"grey-alpha.xcf", "grey.xcf",      "rgb.xcf",
                                       "tiles.xcf",      "version-0.xcf", "version-1.xcf",
                                       "version-2.xcf",  "version-3.xcf", "version-of-two-zeros.xcf"};

bool isReadAlike(const fs::path& path) {
    const std::string name = path.filename().string();
    if (path.extension() == ".xcf") return readXcf.contains(name);
    return path.extension() != ".pmg" && !readOtherwise.contains(name);
}

TEST(PicturePeer, AgreesOnTheCorpus) {
    std::size_t compared = 0;
    for (const fs::path& path : filesIn("good")) {
        if (!isReadAlike(path)) continue;
        const auto ours = loadedPixels(readFile(path), path.extension().string());
        ASSERT_TRUE(ours) << path;
        EXPECT_LE(difference(*ours, peerPixels(path.string())), 1) << path;
        ++compared;
    }
    EXPECT_GE(compared, 80U);
}

TEST(PicturePeer, ReadsWhatWeWrite) {
    const TemporaryDirectory directory;
    std::mt19937 random(9);
    constexpr int width = 131;
    constexpr int height = 70;
    Bytes pixels(width * height * wm::png::rgbaSize);
    for (std::size_t at = 0; at < pixels.size(); ++at)
        pixels[at] = static_cast<std::uint8_t>(at / 1000 % 3 == 0 ? at / 1000 : random());
    ASSERT_TRUE(wm_save_bmp(directory.path("a.bmp").c_str(), pixels.data(), width, height));
    ASSERT_TRUE(wm_save_tga(directory.path("a.tga").c_str(), pixels.data(), width, height));
    ASSERT_TRUE(wm_save_xcf(directory.path("a.xcf").c_str(), pixels.data(), width, height));
    for (const char* name : {"a.bmp", "a.tga", "a.xcf"})
        EXPECT_EQ(difference(pixels, peerPixels(directory.path(name))), 0) << name;
}

} // namespace
