// The tables that scripts find: which, with which keys, and which of these have no feature behind them yet.

#include "host/index.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct NativeTable {
    const char* name;
    std::vector<const char*> keys;
};

const std::vector<const char*> dialectKeys = {"runScript",   "runFile",         "compileBytecode", "writeBytecode",
                                              "runBytecode", "runBytecodeFile", "getVar",          "setVar"};

const std::vector<NativeTable> expectedTables = {
    {"Metal",
     {"renderImage", "updateInput", "forceUpdate", "getTitle", "getWindow", "clearTouchBar", "setTouchBarButton",
      "setTouchBarButtonImage", "setTitle", "clearBuffer", "checkClose", "killWindow", "spawnWindow"}},
    {"Sailfish", {"key", "orientation"}},
    {"Ostrel",
     {"runScript", "getVar", "setVar", "getGlobalTime", "getClock", "sleep", "checkButton", "pushButton",
      "clearButtons", "checksum", "getPath", "hostLog", "readFile"}},
    {"Ruby", dialectKeys},
    {"Lua", dialectKeys},
    {"Audio",
     {"open", "play", "pause", "free", "clear", "save", "form", "add", "trim", "pitch", "speed", "findFrequency"}},
    {"AI", {"defaultdict", "generate", "generateAsync", "checkJob", "generateText", "saveModel", "loadModel"}},
    {"Font", {"renderText", "resizeFont", "killFont", "loadFont"}},
    {"Jade", {"visible", "height", "centre", "contains"}},
    {"Plush",
     {"setSize",
      "project",
      "setQuads",
      "raycast",
      "projection",
      "setLightLevel",
      "spawnLight",
      "clearLights",
      "setPlayerHeight",
      "getPlayerHeight",
      "setPlayerPosition",
      "getPlayerPosition",
      "setPlayerRotation",
      "getPlayerRotation",
      "setRenderDistance",
      "getRenderDistance",
      "setTilt",
      "getTilt",
      "setMap",
      "movePlayer",
      "printImage",
      "threads",
      "fog",
      "setFov",
      "getFov",
      "setAccuracy",
      "getAccuracy",
      "dither",
      "skew",
      "sortVertex",
      "bilinear",
      "trimImage",
      "bilinearSolid",
      "dontMovePlayer",
      "createImage",
      "checkImage",
      "getPixel",
      "setPixel",
      "saveImage",
      "blitImage",
      "blitImageRect",
      "modifyImage",
      "shader",
      "compileShader",
      "killShader",
      "shaderSource",
      "shaderUniforms",
      "mirrorImage",
      "killImage",
      "imageSize",
      "setReflection",
      "setRaytrace",
      "insertReflection",
      "loadPNG",
      "savePlushImage",
      "loadPlushImage"}},
};

const std::set<std::string> expectedUnavailable = {
    "Ruby.runScript",
    "Ruby.runFile",
    "Ruby.compileBytecode",
    "Ruby.writeBytecode",
    "Ruby.runBytecode",
    "Ruby.runBytecodeFile",
    "Ruby.getVar",
    "Ruby.setVar",
    "Lua.runScript",
    "Lua.runFile",
    "Lua.compileBytecode",
    "Lua.writeBytecode",
    "Lua.runBytecode",
    "Lua.runBytecodeFile",
    "Lua.getVar",
    "Lua.setVar",
    "Audio.open",
    "Audio.play",
    "Audio.pause",
    "Audio.free",
    "Audio.clear",
    "Audio.save",
    "Audio.form",
    "Audio.add",
    "Audio.trim",
    "Audio.pitch",
    "Audio.speed",
    "Audio.findFrequency",
    "AI.defaultdict",
    "AI.generate",
    "AI.generateAsync",
    "AI.checkJob",
    "AI.generateText",
    "AI.saveModel",
    "AI.loadModel",
    "Font.renderText",
    "Font.resizeFont",
    "Font.killFont",
    "Font.loadFont",
    "Jade.visible",
    "Jade.height",
    "Jade.centre",
    "Jade.contains",
    "Plush.setSize",
    "Plush.project",
    "Plush.setQuads",
    "Plush.raycast",
    "Plush.projection",
    "Plush.setLightLevel",
    "Plush.spawnLight",
    "Plush.clearLights",
    "Plush.setPlayerHeight",
    "Plush.getPlayerHeight",
    "Plush.setPlayerPosition",
    "Plush.getPlayerPosition",
    "Plush.setPlayerRotation",
    "Plush.getPlayerRotation",
    "Plush.setRenderDistance",
    "Plush.getRenderDistance",
    "Plush.setTilt",
    "Plush.getTilt",
    "Plush.setMap",
    "Plush.movePlayer",
    "Plush.fog",
    "Plush.setFov",
    "Plush.getFov",
    "Plush.setAccuracy",
    "Plush.getAccuracy",
    "Plush.sortVertex",
    "Plush.dontMovePlayer",
    "Plush.modifyImage",
    "Plush.shader",
    "Plush.compileShader",
    "Plush.killShader",
    "Plush.shaderSource",
    "Plush.shaderUniforms",
    "Plush.setReflection",
    "Plush.setRaytrace",
};

/// The text with which an entry fails when it gets no argument; empty if it does not fail.
std::string failureWithoutArguments(const Variable& entry) {
    try {
        engine.callCallable(entry, {});
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return {};
}

class NativeTables : public testing::Test {
protected:
    static void SetUpTestSuite() { registerFunctions(); }
};

TEST_F(NativeTables, EachHasItsKeysAndNoOther) {
    for (const NativeTable& expected : expectedTables) {
        const Variable table = engine.pullVariable(expected.name);
        ASSERT_TRUE(table.isTable()) << expected.name;
        EXPECT_EQ(table.asTable()->size(), expected.keys.size()) << expected.name;
        for (const char* key : expected.keys) {
            EXPECT_TRUE(table.asTable()->contains(key)) << expected.name << "." << key;
        }
    }
}

TEST_F(NativeTables, EveryEntryKnowsItsQualifiedName) {
    for (const NativeTable& expected : expectedTables) {
        const Variable table = engine.pullVariable(expected.name);
        for (const char* key : expected.keys) {
            const Variable* entry = table.asTable()->find(key);
            ASSERT_NE(entry, nullptr) << expected.name << "." << key;
            ASSERT_TRUE(entry->isFunction()) << expected.name << "." << key;
            EXPECT_TRUE(entry->asFunction()->isNative);
            EXPECT_EQ(entry->asFunction()->name, std::string(expected.name) + "." + key);
        }
    }
}

TEST_F(NativeTables, EveryFailureBeginsWithTheQualifiedName) {
    for (const NativeTable& expected : expectedTables) {
        const Variable table = engine.pullVariable(expected.name);
        for (const char* key : expected.keys) {
            const std::string failure = failureWithoutArguments(*table.asTable()->find(key));
            const std::string prefix = std::string(expected.name) + "." + key + ": ";
            if (!failure.empty()) {
                EXPECT_EQ(failure.substr(0, prefix.size()), prefix);
            }
        }
    }
}

TEST_F(NativeTables, WhatIsNotAvailableSaysSoAndIsListedHere) {
    std::set<std::string> unavailable;
    for (const NativeTable& expected : expectedTables) {
        const Variable table = engine.pullVariable(expected.name);
        for (const char* key : expected.keys) {
            const std::string name = std::string(expected.name) + "." + key;
            const bool missing =
                failureWithoutArguments(*table.asTable()->find(key)) == name + ": not available in this version";
            if (missing) unavailable.insert(name);
        }
    }
    EXPECT_EQ(unavailable, expectedUnavailable);
}

TEST_F(NativeTables, TheGlobalHelpersAreNativeFunctions) {
    for (const char* helper : {"add", "dFeet", "dMetres", "calcHeight"}) {
        const Variable function = engine.pullVariable(helper);
        ASSERT_TRUE(function.isFunction()) << helper;
        EXPECT_TRUE(function.asFunction()->isNative) << helper;
        EXPECT_EQ(function.asFunction()->name, helper);
    }
}

} // namespace
