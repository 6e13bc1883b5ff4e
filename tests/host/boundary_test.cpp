// The functions of the platform boundary that need no display: what they do to a window's record, what they answer
// without a window, and what they answer where no window can be made.

#include "host/presentation.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

/// A record as a platform would hold it, known to the boundary as the window last used.
class RecordedWindow : public ::testing::Test {
protected:
    void SetUp() override {
        window.clientWidth = 4;
        window.clientHeight = 3;
        window.active = true;
        useWindow(&window);
    }
    void TearDown() override { forgetWindow(&window); }

    WmWindow window;
};

/// The state of a published key, by its virtual-key code, in the key state table.
int stateOf(unsigned char virtualKey) {
    for (std::size_t i = 0; i < publishedKeyCount; ++i) {
        if (publishedKeys[i].virtualKey == virtualKey) return wm_keyStates()[i];
    }
    return -1;
}

int keysDown() {
    int count = 0;
    for (std::size_t i = 0; i < publishedKeyCount; ++i) count += wm_keyStates()[i];
    return count;
}

struct ImageRelease {
    void operator()(PlushImage* image) const {
        delete[] image->pixels;
        delete image;
    }
};
using OwnedImage = std::unique_ptr<PlushImage, ImageRelease>;

PlushImage imageOn(std::vector<unsigned char>& pixels, int width, int height) {
    PlushImage image;
    image.width = width;
    image.height = height;
    image.pixels = pixels.data();
    return image;
}

} // namespace

TEST(Boundary, SaysWhatKindOfPlatformThisIs) {
    EXPECT_EQ(wm_has_window(), 1);
    EXPECT_EQ(wm_has_metal_window(), 1);
    EXPECT_EQ(wm_has_mixer(), 1);
    EXPECT_EQ(wm_has_quartz_window(), 0);
}

TEST(Boundary, TheLuaDialectHasItsVersion) {
    EXPECT_EQ(wm_lua_version_major(), 0);
    EXPECT_EQ(wm_lua_version_minor(), 3);
    EXPECT_EQ(wm_lua_version_patch(), 0);
    EXPECT_EQ(wm_lua_version_number(), 0.3F);
}

TEST(Boundary, EveryFunctionAcceptsANullWindow) {
    wm_closeWindow(nullptr);
    wm_destroyWindow(nullptr);
    EXPECT_STREQ(wm_getWindowTitle(nullptr), "");
    wm_setWindowTitle(nullptr, "a title");
    int x = 5;
    int y = 5;
    wm_getWindowSize(nullptr, &x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 0);
    wm_setWindowSize(nullptr, 5, 5);
    std::vector<unsigned char> pixels(4, 0);
    const PlushImage image = imageOn(pixels, 1, 1);
    wm_pushImage(nullptr, &image);
    wm_updateWindow(nullptr);
    EXPECT_FALSE(wm_windowShouldClose(nullptr));
    wm_clearWindow(nullptr, 1, 2, 3);
    EXPECT_EQ(wm_captureWindow(nullptr), nullptr);
    wm_getMousePosition(nullptr, &x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_FALSE(wm_getMouseButtonState(nullptr, 0));
    wm_setTouchBarButtonText(nullptr, 0, "text");
    wm_setTouchBarButtonImage(nullptr, 0, &image);
    EXPECT_FALSE(wm_getTouchBarButtonState(nullptr, 0));
    wm_clearTouchBar(nullptr);
}

TEST(Boundary, ThereIsNoTouchBarAndNoKeyOnTheScreen) {
    WmWindow window;
    wm_setTouchBarButtonText(&window, 1, "text");
    EXPECT_FALSE(wm_getTouchBarButtonState(&window, 1));
    wm_sailfish_register_key(13, "return", 10, 20);
    EXPECT_FALSE(wm_sailfish_left_orientation());
}

TEST(Boundary, SleepTakesTheTimeItIsGiven) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    wm_sleep_ms(30);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(30));
}

TEST(Boundary, SleepReturnsAtOnceBelowOneMillisecond) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (int i = 0; i < 1000; ++i) {
        wm_sleep_ms(0);
        wm_sleep_ms(-5);
    }
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(500));
}

TEST_F(RecordedWindow, ClosingOnlyRaisesTheFlag) {
    EXPECT_FALSE(wm_windowShouldClose(&window));
    wm_closeWindow(&window);
    EXPECT_TRUE(wm_windowShouldClose(&window));
    EXPECT_EQ(window.clientWidth, 4);
}

TEST_F(RecordedWindow, APushedFrameIsTheWindowsOwnCopy) {
    std::vector<unsigned char> pixels(2 * 1 * 4, 77);
    const PlushImage image = imageOn(pixels, 2, 1);
    window.dirty = false;
    wm_pushImage(&window, &image);
    pixels.assign(pixels.size(), 1);
    EXPECT_TRUE(window.dirty);
    EXPECT_EQ(window.pixels, std::vector<unsigned char>(8, 77));
    EXPECT_EQ(window.pixelsWidth, 2);
    EXPECT_EQ(window.pixelsHeight, 1);
}

TEST_F(RecordedWindow, AnUnusableImageIsNoFrame) {
    std::vector<unsigned char> pixels(16, 1);
    window.dirty = false;
    wm_pushImage(&window, nullptr);
    const PlushImage flat = imageOn(pixels, 4, 0);
    wm_pushImage(&window, &flat);
    const PlushImage negative = imageOn(pixels, -2, 2);
    wm_pushImage(&window, &negative);
    PlushImage bare;
    bare.width = 2;
    bare.height = 2;
    wm_pushImage(&window, &bare);
    EXPECT_FALSE(window.dirty);
    EXPECT_TRUE(window.pixels.empty());
}

TEST_F(RecordedWindow, OnlyANewClearColourMakesTheFrameDue) {
    window.dirty = false;
    wm_clearWindow(&window, 0, 0, 0);
    EXPECT_FALSE(window.dirty);
    wm_clearWindow(&window, 0, 0, 1);
    EXPECT_TRUE(window.dirty);
}

TEST_F(RecordedWindow, ACaptureHoldsTheClientAreaAsPresented) {
    wm_clearWindow(&window, 5, 6, 7);
    std::vector<unsigned char> pixels = {10, 20, 30, 255, 40, 50, 60, 0};
    const PlushImage image = imageOn(pixels, 2, 1); // drawn as 4 by 2 pixels at row 0
    wm_pushImage(&window, &image);
    const OwnedImage captured(wm_captureWindow(&window));
    ASSERT_NE(captured, nullptr);
    EXPECT_EQ(captured->width, 4);
    EXPECT_EQ(captured->height, 3);
    EXPECT_EQ(captured->reflectPixels, nullptr);
    const std::vector<unsigned char> shown(captured->pixels, captured->pixels + 4 * 3 * 4);
    const std::vector<unsigned char> drawnRow = {10, 20, 30, 255, 10, 20, 30, 255, 5, 6, 7, 255, 5, 6, 7, 255};
    std::vector<unsigned char> expected = drawnRow;
    expected.insert(expected.end(), drawnRow.begin(), drawnRow.end());
    for (int i = 0; i < 4; ++i) expected.insert(expected.end(), {5, 6, 7, 255});
    EXPECT_EQ(shown, expected);
    EXPECT_TRUE(window.dirty) << "the capture is no presentation";
}

TEST_F(RecordedWindow, ACaptureOfAPresentedFrameDoesNotRenderAgain) {
    renderIntoBackbuffer(window);
    window.dirty = false;
    window.rgbaBackbuffer[0] = 99;
    const OwnedImage captured(wm_captureWindow(&window));
    EXPECT_EQ(captured->pixels[0], 99);
}

TEST_F(RecordedWindow, ACaptureRendersWhenTheBufferIsEmpty) {
    window.dirty = false;
    const OwnedImage captured(wm_captureWindow(&window));
    EXPECT_EQ(captured->pixels[3], 255);
}

TEST_F(RecordedWindow, ThereIsNoCaptureWithoutAClientArea) {
    window.clientWidth = 0;
    EXPECT_EQ(wm_captureWindow(&window), nullptr);
}

TEST_F(RecordedWindow, TheKeyTableShowsTheKeysThatAreDown) {
    keyChanged(window, 'Q', true);
    keyChanged(window, virtualKeySpace, true);
    keyChanged(window, 200, true); // no key that a script can read
    wm_updateKeyboardState();
    EXPECT_EQ(keysDown(), 2);
    EXPECT_EQ(stateOf('Q'), 1);
    EXPECT_EQ(stateOf(virtualKeySpace), 1);
    keyChanged(window, 'Q', false);
    wm_updateKeyboardState();
    EXPECT_EQ(stateOf('Q'), 0);
    EXPECT_EQ(keysDown(), 1);
}

TEST_F(RecordedWindow, EachPublishedKeyHasItsOwnPlaceInTheTable) {
    for (std::size_t i = 0; i < publishedKeyCount; ++i) {
        window.keys.fill(false);
        keyChanged(window, publishedKeys[i].virtualKey, true);
        wm_updateKeyboardState();
        EXPECT_EQ(keysDown(), 1);
        EXPECT_EQ(wm_keyStates()[i], 1) << publishedKeys[i].name;
    }
}

TEST_F(RecordedWindow, KeysReadUpAtOnceWhenTheFocusIsLost) {
    keyChanged(window, 'A', true);
    wm_updateKeyboardState();
    EXPECT_EQ(stateOf('A'), 1);
    focusLost(window);
    wm_updateKeyboardState();
    EXPECT_EQ(keysDown(), 0);
}

TEST_F(RecordedWindow, KeysReadUpWhileTheWindowIsNotActive) {
    keyChanged(window, 'A', true);
    window.active = false;
    wm_updateKeyboardState();
    EXPECT_EQ(keysDown(), 0);
}

TEST_F(RecordedWindow, KeysReadUpOnceTheWindowIsGone) {
    keyChanged(window, 'A', true);
    forgetWindow(&window);
    wm_updateKeyboardState();
    EXPECT_EQ(keysDown(), 0);
}

TEST_F(RecordedWindow, ForgettingAnotherWindowChangesNothing) {
    WmWindow other;
    forgetWindow(&other);
    keyChanged(window, 'A', true);
    wm_updateKeyboardState();
    EXPECT_EQ(stateOf('A'), 1);
}

TEST_F(RecordedWindow, MouseStateIsReadFromTheRecord) {
    window.mouseX = 12;
    window.mouseY = 34;
    int x = 0;
    int y = 0;
    wm_getMousePosition(&window, &x, &y);
    EXPECT_EQ(x, 12);
    EXPECT_EQ(y, 34);
    wm_getMousePosition(&window, nullptr, nullptr);
    window.mouseButtons = {false, true, false};
    EXPECT_FALSE(wm_getMouseButtonState(&window, 0));
    EXPECT_TRUE(wm_getMouseButtonState(&window, 1));
    EXPECT_FALSE(wm_getMouseButtonState(&window, -1));
    EXPECT_FALSE(wm_getMouseButtonState(&window, 3));
}
