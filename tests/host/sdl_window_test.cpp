// The SDL window's own promises, on SDL's driver without a screen: making, sizing, naming, freeing, and failing.

#include "host/presentation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace {

struct WindowRelease {
    void operator()(WmWindow* window) const { wm_destroyWindow(window); }
};
using OwnedWindow = std::unique_ptr<WmWindow, WindowRelease>;

/// A window that SDL keeps in memory alone.
OwnedWindow openUnseen(const char* title, int width, int height) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    return OwnedWindow(wm_createWindow(title, width, height));
}

void expectSize(WmWindow* window, int width, int height) {
    int w = 0;
    int h = 0;
    wm_getWindowSize(window, &w, &h);
    EXPECT_EQ(w, width);
    EXPECT_EQ(h, height);
}

} // namespace

TEST(SdlWindow, HasTheTitleAndSizeAskedFor) {
    const OwnedWindow window = openUnseen("a title", 320, 180);
    ASSERT_NE(window, nullptr);
    EXPECT_STREQ(wm_getWindowTitle(window.get()), "a title");
    expectSize(window.get(), 320, 180);
    EXPECT_FALSE(wm_windowShouldClose(window.get()));
    EXPECT_TRUE(backbufferFits(*window));
}

TEST(SdlWindow, ANullTitleHasADefault) {
    const OwnedWindow window = openUnseen(nullptr, 32, 18);
    ASSERT_NE(window, nullptr);
    EXPECT_STREQ(wm_getWindowTitle(window.get()), "OstrelMoon");
}

TEST(SdlWindow, CanBeRenamedAndResized) {
    const OwnedWindow window = openUnseen("before", 32, 18);
    ASSERT_NE(window, nullptr);
    wm_setWindowTitle(window.get(), "after");
    wm_setWindowSize(window.get(), 64, 50);
    EXPECT_STREQ(wm_getWindowTitle(window.get()), "after");
    expectSize(window.get(), 64, 50);
    wm_updateWindow(window.get());
    expectSize(window.get(), 64, 50);
    wm_setWindowSize(window.get(), 0, -5);
    expectSize(window.get(), 1, 1);
}

TEST(SdlWindow, AnUpdatePresentsWhatIsDue) {
    const OwnedWindow window = openUnseen("title", 32, 18);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->dirty);
    wm_updateWindow(window.get());
    EXPECT_FALSE(window->dirty);
    std::vector<unsigned char> pixels(32 * 18 * 4, 255);
    PlushImage image;
    image.width = 32;
    image.height = 18;
    image.pixels = pixels.data();
    wm_pushImage(window.get(), &image);
    EXPECT_TRUE(window->dirty);
    wm_updateWindow(window.get());
    EXPECT_FALSE(window->dirty);
    EXPECT_EQ(window->backbuffer[0], 0xffffffffU);
}

TEST(SdlWindow, OneAfterAnotherWorks) {
    for (int i = 1; i <= 5; ++i) {
        const OwnedWindow window = openUnseen("title", 10 * i, 10 * i);
        ASSERT_NE(window, nullptr);
        wm_updateWindow(window.get());
        EXPECT_FALSE(wm_windowShouldClose(window.get())) << "a request left over from the window before";
        expectSize(window.get(), 10 * i, 10 * i);
    }
}

TEST(SdlWindow, IsMadeWithNoLongerSideThanTheLongest) {
    const OwnedWindow window = openUnseen("title", std::numeric_limits<int>::max(), 10);
    ASSERT_NE(window, nullptr);
    expectSize(window.get(), longestWindowSide, 10);
}

TEST(SdlWindow, ASizeBelowOneIsOne) {
    constexpr int least = std::numeric_limits<int>::min();
    const OwnedWindow window = openUnseen("title", least, -1);
    ASSERT_NE(window, nullptr);
    expectSize(window.get(), 1, 1);
    wm_setWindowSize(window.get(), 10, 10);
    wm_setWindowSize(window.get(), 0, least);
    expectSize(window.get(), 1, 1);
}

TEST(SdlWindow, IsResizedToNoLongerSideThanTheLongest) {
    const OwnedWindow window = openUnseen("title", 10, 10);
    ASSERT_NE(window, nullptr);
    wm_setWindowSize(window.get(), std::numeric_limits<int>::max(), 1);
    expectSize(window.get(), longestWindowSide, 1);
}

TEST(SdlWindow, WithoutADisplayThereIsNone) {
    setenv("SDL_VIDEODRIVER", "x11", 1);
    setenv("DISPLAY", ":65000", 1);
    EXPECT_EQ(wm_createWindow("title", 10, 10), nullptr);
    setenv("SDL_VIDEODRIVER", "no such driver", 1);
    EXPECT_EQ(wm_createWindow("title", 10, 10), nullptr);
    EXPECT_NE(openUnseen("title", 10, 10), nullptr) << "a failure is not for ever";
}
