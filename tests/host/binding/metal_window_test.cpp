// The table `Metal` with a window, on SDL's driver without a screen: what each entry does to the window, and what the
// input globals then say.

#include "host/index.h"
#include "host/presentation.h"
#include "plush/registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

using Values = std::vector<Variable>;

Variable call(const char* tableName, const char* key, const Values& arguments = {}) {
    const Variable table = engine.pullVariable(tableName);
    return engine.callCallable(*table.asTable()->find(key), arguments);
}

Variable metal(const char* key, const Values& arguments = {}) { return call("Metal", key, arguments); }

/// A pixel of what the window shows, as channels.
std::vector<int> shownPixel(int x, int y) {
    const Variable image = metal("getWindow");
    const Variable channels = call("Plush", "getPixel", {image, x, y});
    std::vector<int> pixel;
    for (const Variable& channel : channels.asMulti()->values) pixel.push_back(channel.asInt());
    call("Plush", "killImage", {image});
    return pixel;
}

std::vector<int> shownSize() {
    const Variable image = metal("getWindow");
    const auto* picture = static_cast<const PlushImage*>(image.asPointer());
    const std::vector<int> size = {picture->width, picture->height};
    call("Plush", "killImage", {image});
    return size;
}

bool trueGlobal(const std::string& name) {
    const Variable value = engine.pullVariable(name);
    EXPECT_EQ(value.type, VarType::Boolean) << name;
    return value.type == VarType::Boolean && value.asBool();
}

int wholeGlobal(const std::string& name) {
    const Variable value = engine.pullVariable(name);
    EXPECT_EQ(value.type, VarType::Integer) << name;
    return value.type == VarType::Integer ? value.asInt() : -2;
}

class MetalWindow : public testing::Test {
protected:
    static void SetUpTestSuite() { registerFunctions(); }

    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        EXPECT_TRUE(metal("spawnWindow", {100, 50, "a title"}).isNil());
        ASSERT_NE(win, nullptr);
    }
    void TearDown() override {
        metal("killWindow");
        while (!livePlushImages.empty()) killImage(*livePlushImages.begin());
    }
};

} // namespace

TEST_F(MetalWindow, HasTheSizeAndTitleAskedFor) {
    EXPECT_EQ(shownSize(), (std::vector<int>{100, 50}));
    EXPECT_EQ(metal("getTitle").asString(), "a title");
    EXPECT_STREQ(wm_getWindowTitle(win), "a title");
}

TEST_F(MetalWindow, SizesLoseTheirFractionsAndAreNoText) {
    metal("spawnWindow", {80.9F, true, "b"});
    EXPECT_EQ(shownSize(), (std::vector<int>{80, 1}));
}

TEST_F(MetalWindow, PublishesTheInputAtOnce) {
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_X"), 0);
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_Y"), 0);
    metal("killWindow");
    metal("updateInput");
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_X"), -1);
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_Y"), -1);
}

TEST_F(MetalWindow, SpawnedAgainIsTheSameWindowRenamedAndResized) {
    const WmWindow* before = win;
    EXPECT_TRUE(metal("spawnWindow", {60, 70, "another"}).isNil());
    EXPECT_EQ(win, before);
    EXPECT_EQ(shownSize(), (std::vector<int>{60, 70}));
    EXPECT_STREQ(wm_getWindowTitle(win), "another");
    EXPECT_EQ(metal("getTitle").asString(), "another");
}

TEST_F(MetalWindow, IsRenamedBySetTitle) {
    EXPECT_TRUE(metal("setTitle", {"new"}).isNil());
    EXPECT_STREQ(wm_getWindowTitle(win), "new");
    EXPECT_EQ(metal("getTitle").asString(), "new");
}

TEST_F(MetalWindow, KeepsItsTitleWhenItIsKilled) {
    EXPECT_TRUE(metal("killWindow").isNil());
    EXPECT_EQ(win, nullptr);
    EXPECT_EQ(metal("getTitle").asString(), "a title");
    EXPECT_TRUE(metal("getWindow").isNil());
    EXPECT_TRUE(metal("killWindow").isNil());
}

TEST_F(MetalWindow, ShowsTheClearColourByTheLowBitsOfEachChannel) {
    EXPECT_EQ(shownPixel(0, 0), (std::vector<int>{0, 0, 0, 255}));
    EXPECT_TRUE(metal("clearBuffer", {300, -1, 7.9F}).isNil());
    EXPECT_EQ(shownPixel(0, 0), (std::vector<int>{44, 255, 7, 255}));
}

TEST_F(MetalWindow, ShowsItsOwnCopyOfTheFrame) {
    PlushImage* frame = createSolidColourImage(100, 50, 10, 20, 30, 255);
    EXPECT_TRUE(metal("renderImage", {frame}).isNil());
    call("Plush", "killImage", {frame});
    EXPECT_EQ(shownPixel(99, 49), (std::vector<int>{10, 20, 30, 255}));
}

TEST_F(MetalWindow, KeepsItsFrameWhenItIsGivenNilOrAnImageThatWasFreed) {
    metal("renderImage", {createSolidColourImage(100, 50, 10, 20, 30, 255)});
    PlushImage* freed = createSolidColourImage(100, 50, 99, 99, 99, 255);
    killImage(freed);
    EXPECT_TRUE(metal("renderImage", {Variable()}).isNil());
    EXPECT_TRUE(metal("renderImage", {freed}).isNil());
    EXPECT_EQ(shownPixel(0, 0), (std::vector<int>{10, 20, 30, 255}));
}

TEST_F(MetalWindow, GivesACaptureThatIsALiveImage) {
    const Variable image = metal("getWindow");
    ASSERT_EQ(image.type, VarType::Pointer);
    EXPECT_TRUE(call("Plush", "checkImage", {image}).asBool());
}

TEST_F(MetalWindow, AsksToCloseOnceItWasAsked) {
    EXPECT_FALSE(metal("checkClose").asBool());
    wm_closeWindow(win);
    EXPECT_TRUE(metal("checkClose").asBool());
    EXPECT_TRUE(metal("checkClose").asBool()) << "a request stays";
    EXPECT_NE(win, nullptr);
    metal("killWindow");
    EXPECT_FALSE(metal("checkClose").asBool());
}

TEST_F(MetalWindow, GivesEachMouseButtonItsGlobal) {
    const std::initializer_list<std::pair<MouseButton, const char*>> rows = {{leftMouseButton, "OSTREL_MOUSE_1"},
                                                                             {middleMouseButton, "OSTREL_MOUSE_2"},
                                                                             {rightMouseButton, "OSTREL_MOUSE_3"}};
    for (const auto& [button, name] : rows) {
        mouseButtonChanged(*win, button, true);
        metal("updateInput");
        for (const auto& [other, otherName] : rows) EXPECT_EQ(trueGlobal(otherName), other == button) << name;
        mouseButtonChanged(*win, button, false);
    }
}

TEST_F(MetalWindow, GivesEachKeyItsGlobalWhileItHasTheFocus) {
    focusGained(*win);
    for (const PublishedKey& key : publishedKeys) {
        const std::string name = std::string("OSTREL_KEY_") + key.name;
        keyChanged(*win, key.virtualKey, true);
        EXPECT_FALSE(trueGlobal(name)) << "before the input is updated";
        metal("updateInput");
        EXPECT_TRUE(trueGlobal(name));
        keyChanged(*win, key.virtualKey, false);
        metal("updateInput");
        EXPECT_FALSE(trueGlobal(name));
    }
}

TEST_F(MetalWindow, ReleasesAllThatIsHeldWithTheFocusAndWithItsEnd) {
    focusGained(*win);
    for (const bool killed : {false, true}) {
        keyChanged(*win, 'A', true);
        mouseButtonChanged(*win, leftMouseButton, true);
        metal("updateInput");
        EXPECT_TRUE(trueGlobal("OSTREL_KEY_A"));
        EXPECT_TRUE(trueGlobal("OSTREL_MOUSE_1"));
        if (killed) {
            metal("killWindow");
        } else {
            focusLost(*win);
        }
        metal("updateInput");
        EXPECT_FALSE(trueGlobal("OSTREL_KEY_A"));
        EXPECT_FALSE(trueGlobal("OSTREL_MOUSE_1"));
        if (!killed) focusGained(*win);
    }
}

TEST_F(MetalWindow, GivesTheMouseInPixelsOfTheFrame) {
    metal("renderImage", {createSolidColourImage(10, 5, 0, 0, 0, 255)});
    updateMousePosition(*win, 99, 0);
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_X"), 0) << "before the input is updated";
    metal("updateInput");
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_X"), 9);
    EXPECT_EQ(wholeGlobal("OSTREL_MOUSE_Y"), 0);
}
