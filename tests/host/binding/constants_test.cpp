// The constants as the host publishes them, before any script has changed one.

#include "host/index.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Expected {
    const char* name;
    Variable value;
};

const std::vector<Expected>& expectedConstants() {
    static const std::vector<Expected> constants = {
        {"METAL_ENABLED", true},
        {"QUARTZ_ENABLED", false},
        {"MIXER_ENABLED", true},
        {"OSTRELSCRIPT_ENABLED", true},
        {"MIXER_SKIP_SLIDE", false},
        {"OSTRELBOOT_ENABLED", false},
        {"OSTRELBOOT_ARCH", ""},
        {"OSTRELBOOT_HARDWARE_THREADS", 1},
        {"LUA_VERSION_MAJOR", 0},
        {"LUA_VERSION_MINOR", 3},
        {"LUA_VERSION_PATCH", 0},
        {"LUA_VERSION", 0.3F},
        {"OSTREL_SCRIPT", "visual-novel.os"},
        {"OSTREL_GAME_NAME", "Velmaris Testing"},
        {"OSTREL_INT", 0},
        {"OSTREL_FLOAT", 1},
        {"OSTREL_BOOL", 2},
        {"OSTREL_STRING", 3},
        {"OSTREL_FUNCTION", 4},
        {"OSTREL_POINTER", 5},
        {"OSTREL_SCREEN_Y", 544},
        {"OSTREL_SCREEN_X", 960},
        {"OSTREL_SCREEN_CULL_FAR", 100},
        {"OSTREL_SCREEN_CULL_NEAR", 0},
        {"OSTREL_SCREEN_FOV", 90},
        {"debugger", false},
        {"debuggerdeep", false},
        {"textframebuffer", false},
        {"checksumBypass", false},
        {"OSTREL_PROCESSOR", 0},
        {"OSTREL_WINDOWS_ENABLED", true},
        {"OSTREL_ENGINE_VERSION", "v1.1"},
        {"OSTREL_ENGINE_POSTFIX", "Prerelease"},
        {"OSTREL_FRAMERATE", 41},
        {"OSTREL_FEMALE", false},
        {"OSTREL_AUDIO_OFFSET", 0},
        {"OSTREL_AUDIO_PLAYING", false},
        {"OSTREL_MOUSE_NIL", 0},
        {"OSTREL_MOUSE_LEFT", 1},
        {"OSTREL_MOUSE_MIDDLE", 2},
        {"OSTREL_MOUSE_RIGHT", 3},
        {"OSTREL_TMP0", 0},
        {"OSTREL_TMP1", 0},
        {"OSTREL_TMP2", 0},
        {"OSTREL_TMP3", 0},
        {"OSTREL_TMP4", 0},
        {"OSTREL_TMP5", 0},
        {"OSTREL_TMP6", 0},
        {"OSTREL_TMP7", 0},
        {"OSTREL_TMP8", 0},
        {"OSTREL_TMP9", 0},
        {"OSTREL_RENDER_TMP", -1},
        {"OSTREL_RENDER_TMP2", -1},
        {"OSTREL_RENDER_1", 1},
        {"OSTREL_RENDER_2", 2},
        {"OSTREL_RENDER_3", 3},
        {"OSTREL_RENDER_4", 4},
        {"OSTREL_RENDER_5", 5},
        {"OSTREL_RENDER_6", 6},
        {"OSTREL_RENDER_7", 7},
        {"OSTREL_RENDER_8", 8},
        {"OSTREL_RENDER_9", 9},
        {"OSTREL_RENDER_10", 10},
        {"OSTREL_RENDER_11", 11},
        {"OSTREL_RENDER_12", 12},
        {"OSTREL_RENDER_13", 13},
        {"OSTREL_RENDER_S1", 1},
        {"OSTREL_RENDER_S2", 2},
        {"OSTREL_RENDER_S3", 3},
        {"OSTREL_RENDER_S4", 4},
        {"OSTREL_RENDER_S5", 5},
        {"OSTREL_RENDER_S6", 6},
        {"OSTREL_RENDER_S7", 7},
        {"OSTREL_RENDER_S8", 8},
        {"OSTREL_RENDER_S9", 9},
        {"OSTREL_RENDER_S10", 10},
        {"OSTREL_RENDER_S11", 11},
        {"OSTREL_RENDER_S12", 12},
        {"OSTREL_RENDER_S13", 13},
        {"OSTREL_RENDER_SKIP_PARALLAX", false},
        {"OSTREL_WEATHER_LAYER", -1},
        {"OSTREL_WEATHER_CLEAR", 0},
        {"OSTREL_WEATHER_LEAF", 1},
        {"OSTREL_WEATHER_LAYER_IMAGE1", 0},
        {"OSTREL_WEATHER_LAYER_IMAGE2", 0},
        {"OSTREL_WEATHER_LAYER_IMAGE3", 0},
        {"OSTREL_WEATHER_LAYER_IMAGE4", 0},
        {"OSTREL_WEATHER_LAYER_IMAGE5", 0},
        {"OSTREL_WEATHER_LAYER_PATH1", 0},
        {"OSTREL_WEATHER_LAYER_PATH2", 0},
        {"OSTREL_WEATHER_LAYER_PATH3", 0},
        {"OSTREL_WEATHER_LAYER_PATH4", 0},
        {"OSTREL_WEATHER_LAYER_PATH5", 0},
        {"OSTREL_GREYSCALE", 1},
        {"OSTREL_INACTIVE", 2},
        {"OSTREL_COLOUR_INVERT", 4},
        {"OSTREL_COLOUR_FILL", 5},
        {"OSTREL_AETHER_INVERT", 3},
        {"OSTREL_AETHER_CLEANUP", 6},
        {"OSTREL_AETHER_FILL", 7},
        {"OSTREL_AETHER_SET", 8},
        {"OSTREL_INACTIVE_1", false},
        {"OSTREL_INACTIVE_2", false},
        {"OSTREL_INACTIVE_3", false},
        {"OSTREL_INACTIVE_4", false},
        {"OSTREL_LAYER_FRAMEBUFFER", 1},
        {"OSTREL_LAYER_BACKGROUND", 2},
        {"OSTREL_LAYER_CHARACTER", 3},
        {"OSTREL_LAYER_FOREGROUND", 4},
        {"OSTREL_LAYER_SUPERGROUND", 5},
        {"OSTREL_SKIP", 10},
        {"OSTREL_IMAGE", 11},
        {"OSTREL_TEXT", 12},
        {"OSTREL_TEXT_SLIDE_RIGHT", 13},
        {"OSTREL_TEXT_SLIDE_LEFT", 14},
        {"OSTREL_CHARACTER1", 15},
        {"OSTREL_CHARACTER2", 16},
        {"OSTREL_CHARACTER3", 17},
        {"OSTREL_CHARACTER4", 18},
        {"OSTREL_PARALLAX", 19},
        {"OSTREL_PARALLAX_UIFG", false},
        {"OSTREL_BACKGROUND", 20},
        {"OSTREL_INTERFACE", 21},
        {"OSTREL_MESSAGE", 22},
        {"OSTREL_DATE", 23},
        {"OSTREL_TIME", 24},
        {"OSTREL_NAME", 25},
        {"OSTREL_TITLE", 26},
        {"OSTREL_LOCATION", 27},
        {"OSTREL_REGION", 28},
        {"OSTREL_WEATHER", 29},
        {"OSTREL_OPTION_1", 31},
        {"OSTREL_OPTION_2", 32},
        {"OSTREL_OPTION_3", 33},
        {"OSTREL_MENU_MAIN", 50},
        {"OSTREL_MENU_PAUSE", 51},
        {"OSTREL_MENU_SAVE", 52},
        {"OSTREL_MENU_OPTION", 53},
        {"OSTREL_GAME_VISUAL_NOVEL", 54},
        {"OSTREL_GAME_TARGET", 54},
        {"OSTREL_CREDIT", 55},
        {"OSTREL_GAME_NEW", 56},
        {"OSTREL_GAME_LOAD", 57},
        {"OSTREL_RENDER_EXIT", 58},
        {"fasle", false},
        {"flase", false},
        {"flse", false},
        {"tre", true},
        {"tue", true},
        {"ture", true},
    };
    return constants;
}

class Constants : public testing::Test {
protected:
    static void SetUpTestSuite() { registerFunctions(); }
};

TEST_F(Constants, EveryOneHasItsTypeAndValue) {
    for (const Expected& expected : expectedConstants()) {
        const Variable actual = engine.pullVariable(expected.name);
        EXPECT_EQ(actual.type, expected.value.type) << expected.name;
        EXPECT_EQ(actual.toString(), expected.value.toString()) << expected.name;
    }
}

TEST_F(Constants, WhatTheMachineAnswersIsText) {
    for (const char* name : {"OSTREL_OS_PLATFORM", "OSTREL_OS_VERSION", "OSTREL_PROCESSOR_NAME"}) {
        const Variable value = engine.pullVariable(name);
        ASSERT_TRUE(value.isString()) << name;
        EXPECT_NE(value.asString(), "") << name;
    }
    EXPECT_TRUE(engine.pullVariable("OSTREL_USER_NAME").isString());
    const Variable directory = engine.pullVariable("OSTREL_TEMP_DIRECTORY");
    ASSERT_TRUE(directory.isString());
    EXPECT_EQ(directory.asString().back(), '/');
}

TEST_F(Constants, RegisteringAgainRestoresThem) {
    engine.pushVariable("OSTREL_SCREEN_X", 5);
    registerFunctions();
    EXPECT_EQ(engine.pullVariable("OSTREL_SCREEN_X").asInt(), 960);
}

} // namespace
