// The image of the startup library that is carried in the executable.

#include "script/ostrel_script.h"
#include "startup/startup_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

std::vector<unsigned char> imageBytes() {
    const auto image = startupImage();
    return {image.begin(), image.end()};
}

} // namespace

TEST(StartupImage, BeginsAsACurrentFileOfLuaOs) {
    constexpr std::array<unsigned char, 14> head = {'O', 'S', 'B', 'C', 0x3C, 0, 0, 0, 0, 0, 6, 0, 0, 0};
    const auto image = startupImage();
    ASSERT_GT(image.size(), head.size());
    EXPECT_TRUE(std::equal(head.begin(), head.end(), image.begin()));
}

TEST(StartupImage, IsWholeToItsLastByte) {
    OstrelScript engine;
    const std::vector<unsigned char> bytes = imageBytes();
    EXPECT_EQ(engine.serialiseBytecode(engine.deserialiseBytecode(bytes, "lua.os")), bytes);
}

TEST(StartupImage, NamesItsSourceInEveryFunction) {
    OstrelScript engine;
    const BytecodeProgram program = engine.deserialiseBytecode(imageBytes(), "lua.os");
    EXPECT_EQ(program.sourcePath, "lua.os");
    EXPECT_EQ(program.sourceDirectory, "");
    ASSERT_FALSE(program.functions.empty());
    for (const BytecodeFunctionDecl& function : program.functions) {
        EXPECT_EQ(function.sourcePath, "lua.os");
        EXPECT_EQ(function.sourceDirectory, "");
    }
}
