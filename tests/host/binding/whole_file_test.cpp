// Files read in one piece.

#include "host/whole_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

TEST(WholeFile, AllBytesAreReadAsTheyAre) {
    const std::string file = (std::filesystem::path(testing::TempDir()) / "velmaris-whole-file").string();
    std::string bytes;
    for (int number = 0; number < 200000; ++number) bytes += static_cast<char>(number * 7);
    std::ofstream(file, std::ios::binary) << bytes;
    EXPECT_EQ(readWholeFile(file), bytes);
    std::filesystem::remove(file);
    EXPECT_EQ(readWholeFile(file), std::nullopt);
}

TEST(WholeFile, ADirectoryIsNoFile) { EXPECT_EQ(readWholeFile(testing::TempDir()), std::nullopt); }

} // namespace
