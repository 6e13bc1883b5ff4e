// Where the process takes its directory from, and what that means for the startup library.

#include "host/index.h"

#include <gtest/gtest.h>

namespace {

TEST(Boot, TheRuntimeDirectoryEndsWithTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(runtimeDirectory("/games/one/bin/Velmaris.exe"), "/games/one/bin/");
    EXPECT_EQ(runtimeDirectory("C:\\games\\bin\\Velmaris.exe"), "C:\\games\\bin\\");
    EXPECT_EQ(runtimeDirectory("C:\\games/bin\\Velmaris.exe"), "C:\\games/bin\\");
    EXPECT_EQ(runtimeDirectory("C:\\games\\bin/Velmaris.exe"), "C:\\games\\bin/");
    EXPECT_EQ(runtimeDirectory("bin/"), "bin/");
}

TEST(Boot, ASeparatorAtTheVeryBeginningIsADirectory) {
    EXPECT_EQ(runtimeDirectory("/game"), "/");
    EXPECT_EQ(runtimeDirectory("\\game"), "\\");
}

TEST(Boot, WithoutASeparatorItIsTheWorkingDirectory) {
    EXPECT_EQ(runtimeDirectory("game"), "./");
    EXPECT_EQ(runtimeDirectory(""), "./");
}

TEST(Boot, ThePlatformsDirectoryCountsWhateverTheCommandLineSays) {
    const char* arguments[] = {"elsewhere/game"};
    EXPECT_EQ(executablePath("/games/bin/", 1, arguments), "/games/bin/Velmaris.exe");
    EXPECT_EQ(executablePath("C:\\games\\bin\\", 1, arguments), "C:/games/bin/Velmaris.exe");
    EXPECT_EQ(executablePath("/games/bin/", 0, nullptr), "/games/bin/Velmaris.exe");
}

TEST(Boot, TheFirstArgumentCountsWhereThePlatformIsSilent) {
    const char* arguments[] = {"games\\bin/game", "other/game"};
    EXPECT_EQ(executablePath(nullptr, 2, arguments), "games/bin/game");
    const char* bare[] = {"game"};
    EXPECT_EQ(runtimeDirectory(executablePath(nullptr, 1, bare)), "./");
}

TEST(Boot, WithoutAnyNameItIsTheWorkingDirectory) {
    const char* arguments[] = {nullptr};
    EXPECT_EQ(executablePath(nullptr, 0, arguments), "");
    EXPECT_EQ(executablePath(nullptr, 1, arguments), "");
    EXPECT_EQ(executablePath(nullptr, 1, nullptr), "");
    EXPECT_EQ(runtimeDirectory(executablePath(nullptr, 1, nullptr)), "./");
}

TEST(Boot, TheStartupLibraryStandsUnderResources) {
    path = "C:\\games\\bin\\";
    EXPECT_EQ(startupSourcePath(), "C:/games/bin/../Resources/lua.os");
    path = "./";
    EXPECT_EQ(startupSourcePath(), "./../Resources/lua.os");
}

TEST(Boot, ASourceDirectoryIsWhatStandsBeforeTheLastSeparator) {
    EXPECT_EQ(sourceDirectoryForPath("a/b/c.os"), "a/b");
    EXPECT_EQ(sourceDirectoryForPath("a\\b\\c.os"), "a\\b");
    EXPECT_EQ(sourceDirectoryForPath("a/b\\c.os"), "a/b");
    EXPECT_EQ(sourceDirectoryForPath("a\\b/c.os"), "a\\b");
    EXPECT_EQ(sourceDirectoryForPath("/c.os"), "");
    EXPECT_EQ(sourceDirectoryForPath("c.os"), "");
    EXPECT_EQ(sourceDirectoryForPath(""), "");
    EXPECT_EQ(sourceDirectoryForPath("a/"), "a");
}

} // namespace
