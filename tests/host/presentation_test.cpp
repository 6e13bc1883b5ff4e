// The presentation rules: where a frame lies in a window, what each pixel becomes, what a mouse position means, and
// what the focus does to keys and buttons.
//
// The fast renderer is compared, pixel by pixel, with the rule written down plainly below, over many sizes drawn at
// random from a printed seed.

#include "host/presentation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iostream>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 255;
    bool operator==(const Colour&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Colour& c) {
    return out << '(' << c.red << ' ' << c.green << ' ' << c.blue << ' ' << c.alpha << ')';
}

WmWindow windowOf(int clientWidth, int clientHeight) {
    WmWindow window;
    window.clientWidth = clientWidth;
    window.clientHeight = clientHeight;
    window.imageWidth = clientWidth;
    window.imageHeight = clientHeight;
    return window;
}

void push(WmWindow& window, std::vector<unsigned char> pixels, int width, int height) {
    PlushImage image;
    image.width = width;
    image.height = height;
    image.pixels = pixels.data();
    wm_pushImage(&window, &image);
}

Colour rgbaAt(const WmWindow& window, int x, int y) {
    const unsigned char* p =
        window.rgbaBackbuffer.data() + (static_cast<std::size_t>(y) * window.clientWidth + x) * bytesPerPixel;
    return {p[0], p[1], p[2], p[3]};
}

/// The device buffer's pixel, read as its bytes lie in memory: blue, green, red.
Colour deviceAt(const WmWindow& window, int x, int y) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(window.backbuffer.data());
    const unsigned char* p = bytes + (static_cast<std::size_t>(y) * window.clientWidth + x) * bytesPerPixel;
    return {p[2], p[1], p[0], 255};
}

struct PlainRectangle {
    int left, top, width, height;
};

/// The drawn rectangle as the rule states it, step by step.
PlainRectangle plainRectangle(int iw, int ih, int cw, int ch) {
    double scale = std::min(double(cw) / iw, double(ch) / ih);
    if (scale < 0.0001) scale = 0.0001;
    int dw = int(std::floor(iw * scale + 0.5));
    int dh = int(std::floor(ih * scale + 0.5));
    dw = std::max(1, std::min(dw, cw));
    dh = std::max(1, std::min(dh, ch));
    return {(cw - dw) / 2, (ch - dh) / 2, dw, dh};
}

/// One client pixel as the rule states it.
Colour plainPixel(const WmWindow& window, int x, int y) {
    const Colour clear{window.clearRed, window.clearGreen, window.clearBlue, 255};
    if (window.pixelsWidth == 0) return clear;
    const PlainRectangle r =
        plainRectangle(window.pixelsWidth, window.pixelsHeight, window.clientWidth, window.clientHeight);
    if (x < r.left || y < r.top || x >= r.left + r.width || y >= r.top + r.height) return clear;
    const int sx = std::clamp((x - r.left) * window.pixelsWidth / r.width, 0, window.pixelsWidth - 1);
    const int sy = std::clamp((y - r.top) * window.pixelsHeight / r.height, 0, window.pixelsHeight - 1);
    const unsigned char* s =
        window.pixels.data() + (static_cast<std::size_t>(sy) * window.pixelsWidth + sx) * bytesPerPixel;
    const int a = s[3];
    return {(s[0] * a + clear.red * (255 - a)) / 255, (s[1] * a + clear.green * (255 - a)) / 255,
            (s[2] * a + clear.blue * (255 - a)) / 255, 255};
}

/// Compares every pixel of both buffers with the plain rule; the first difference is reported.
void expectPlainPicture(const WmWindow& window) {
    for (int y = 0; y < window.clientHeight; ++y) {
        for (int x = 0; x < window.clientWidth; ++x) {
            const Colour expected = plainPixel(window, x, y);
            ASSERT_EQ(rgbaAt(window, x, y), expected) << "at " << x << ", " << y;
            ASSERT_EQ(deviceAt(window, x, y), expected) << "at " << x << ", " << y << " in the device's buffer";
        }
    }
}

std::uint32_t printedSeed() {
    const std::uint32_t seed = std::random_device()();
    std::cout << "seed " << seed << std::endl;
    return seed;
}

enum class Alphas { opaque, clear, any, mixed };

std::vector<unsigned char> randomPixels(std::mt19937& random, int width, int height, Alphas alphas) {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(width) * height * bytesPerPixel);
    for (unsigned char& byte : pixels) byte = static_cast<unsigned char>(random());
    for (std::size_t i = 3; i < pixels.size(); i += bytesPerPixel) {
        if (alphas == Alphas::opaque) pixels[i] = 255;
        if (alphas == Alphas::clear) pixels[i] = 0;
        if (alphas == Alphas::mixed && random() % 64 != 0) pixels[i] = 255;
    }
    return pixels;
}

} // namespace

TEST(DrawnRectangle, AFrameOfTheClientSizeCoversIt) {
    const DrawnRectangle drawn = drawnRectangle(960, 544, 960, 544);
    EXPECT_EQ(drawn.left, 0);
    EXPECT_EQ(drawn.top, 0);
    EXPECT_EQ(drawn.width, 960);
    EXPECT_EQ(drawn.height, 544);
}

TEST(DrawnRectangle, AWideWindowHasBarsLeftAndRight) {
    const DrawnRectangle drawn = drawnRectangle(960, 544, 1920, 1080);
    EXPECT_EQ(drawn.width, 1906); // 960 * 1080 / 544 = 1905.88
    EXPECT_EQ(drawn.height, 1080);
    EXPECT_EQ(drawn.left, 7);
    EXPECT_EQ(drawn.top, 0);
}

TEST(DrawnRectangle, ATallWindowHasBarsAboveAndBelow) {
    const DrawnRectangle drawn = drawnRectangle(960, 544, 960, 1001);
    EXPECT_EQ(drawn.width, 960);
    EXPECT_EQ(drawn.height, 544);
    EXPECT_EQ(drawn.left, 0);
    EXPECT_EQ(drawn.top, 228); // 457 / 2, the odd row goes below
}

TEST(DrawnRectangle, IsAtLeastOnePixelOnEachSide) {
    const DrawnRectangle flat = drawnRectangle(10000, 1, 100, 100);
    EXPECT_EQ(flat.width, 100);
    EXPECT_EQ(flat.height, 1);
    EXPECT_EQ(flat.top, 49);
    const DrawnRectangle thin = drawnRectangle(1, 10000, 100, 100);
    EXPECT_EQ(thin.width, 1);
    EXPECT_EQ(thin.height, 100);
}

TEST(DrawnRectangle, TheScaleHasALowestValueAndTheClientSizeStillBounds) {
    const DrawnRectangle drawn = drawnRectangle(1000000, 100000, 10, 10);
    EXPECT_EQ(drawn.width, 10);
    EXPECT_EQ(drawn.height, 10); // 100000 * 0.0001, where the true scale would give 1
}

TEST(DrawnRectangle, IsEmptyWithoutAnImageOrAClientArea) {
    EXPECT_EQ(drawnRectangle(0, 5, 10, 10).width, 0);
    EXPECT_EQ(drawnRectangle(5, -1, 10, 10).height, 0);
    EXPECT_EQ(drawnRectangle(5, 5, 0, 10).width, 0);
}

TEST(DrawnRectangle, FollowsThePlainRuleForManySizes) {
    std::mt19937 random(printedSeed());
    for (int round = 0; round < 200000; ++round) {
        const int iw = int(random() % 3000) + 1;
        const int ih = int(random() % 3000) + 1;
        const int cw = int(random() % 4000) + 1;
        const int ch = int(random() % 4000) + 1;
        const DrawnRectangle drawn = drawnRectangle(iw, ih, cw, ch);
        const PlainRectangle plain = plainRectangle(iw, ih, cw, ch);
        ASSERT_EQ(drawn.width, plain.width) << iw << 'x' << ih << " in " << cw << 'x' << ch;
        ASSERT_EQ(drawn.height, plain.height) << iw << 'x' << ih << " in " << cw << 'x' << ch;
        ASSERT_EQ(drawn.left, plain.left);
        ASSERT_EQ(drawn.top, plain.top);
        ASSERT_TRUE(drawn.width == cw || drawn.height == ch) << "touches neither side";
    }
}

TEST(HeldClientSize, IsWhatWasAskedForWhereAWindowCanBeThat) {
    for (const auto& [width, height] : {std::pair{1, 1}, {960, 544}, {1, 16384}, {16384, 4096}, {8192, 8192}}) {
        EXPECT_EQ(heldClientSize(width, height).width, width);
        EXPECT_EQ(heldClientSize(width, height).height, height);
    }
}

TEST(HeldClientSize, HasSidesOfAtLeastOnePixel) {
    const ClientSize size = heldClientSize(0, std::numeric_limits<int>::min());
    EXPECT_EQ(size.width, 1);
    EXPECT_EQ(size.height, 1);
}

TEST(HeldClientSize, HasNoLongerSideThanTheLongest) {
    EXPECT_EQ(heldClientSize(16385, 10).width, 16384);
    EXPECT_EQ(heldClientSize(10, std::numeric_limits<int>::max()).height, 16384);
}

TEST(HeldClientSize, GivesWayInItsHeightWhereTheAreaWouldBeTooLarge) {
    const ClientSize size = heldClientSize(std::numeric_limits<int>::max(), std::numeric_limits<int>::max());
    EXPECT_EQ(size.width, 16384);
    EXPECT_EQ(size.height, 4096);
    EXPECT_EQ(heldClientSize(10000, 10000).height, 6710);
}

TEST(CentredPosition, IsNeverNegative) {
    EXPECT_EQ(centredPosition(1920, 960), 480);
    EXPECT_EQ(centredPosition(101, 50), 25);
    EXPECT_EQ(centredPosition(800, 960), 0);
    EXPECT_EQ(centredPosition(800, 800), 0);
}

TEST(Rendering, WithoutAFrameEveryPixelIsTheClearColour) {
    WmWindow window = windowOf(13, 7);
    wm_clearWindow(&window, 10, 200, 30);
    renderIntoBackbuffer(window);
    expectPlainPicture(window);
    EXPECT_EQ(rgbaAt(window, 12, 6), (Colour{10, 200, 30, 255}));
}

TEST(Rendering, TheClearColourIsBlackAtFirst) {
    WmWindow window = windowOf(2, 2);
    renderIntoBackbuffer(window);
    EXPECT_EQ(rgbaAt(window, 0, 0), (Colour{0, 0, 0, 255}));
}

TEST(Rendering, BlendsAllAlphasOverTheClearColour) {
    // Every alpha with every colour byte, over several clear colours; 256 by 256 pixels at scale 1.
    std::vector<unsigned char> pixels;
    for (int value = 0; value < 256; ++value) {
        for (int alpha = 0; alpha < 256; ++alpha) {
            pixels.insert(pixels.end(), {static_cast<unsigned char>(value), static_cast<unsigned char>(255 - value),
                                         static_cast<unsigned char>(value ^ 0x5a), static_cast<unsigned char>(alpha)});
        }
    }
    WmWindow window = windowOf(256, 256);
    push(window, pixels, 256, 256);
    for (int clear = 0; clear < 256; clear += 5) {
        wm_clearWindow(&window, static_cast<unsigned char>(clear), static_cast<unsigned char>(255 - clear),
                       static_cast<unsigned char>(clear ^ 0xa5));
        renderIntoBackbuffer(window);
        expectPlainPicture(window);
    }
}

TEST(Rendering, ATransparentPixelShowsTheClearColour) {
    WmWindow window = windowOf(2, 1);
    wm_clearWindow(&window, 11, 22, 33);
    push(window, {255, 255, 255, 0, 1, 2, 3, 255}, 2, 1);
    renderIntoBackbuffer(window);
    EXPECT_EQ(rgbaAt(window, 0, 0), (Colour{11, 22, 33, 255}));
    EXPECT_EQ(rgbaAt(window, 1, 0), (Colour{1, 2, 3, 255}));
}

TEST(Rendering, HalfTransparentPixelsRoundDown) {
    WmWindow window = windowOf(1, 1);
    wm_clearWindow(&window, 255, 0, 1);
    push(window, {0, 255, 2, 128}, 1, 1);
    renderIntoBackbuffer(window);
    EXPECT_EQ(rgbaAt(window, 0, 0), (Colour{127, 128, 1, 255})); // 255*127/255, 255*128/255, (2*128+127)/255
}

TEST(Rendering, BarsHaveTheClearColourAndEdgesAreSharp) {
    WmWindow window = windowOf(1920, 1080);
    wm_clearWindow(&window, 9, 8, 7);
    push(window, std::vector<unsigned char>(960 * 544 * 4, 255), 960, 544);
    renderIntoBackbuffer(window);
    const Colour bar{9, 8, 7, 255};
    const Colour white{255, 255, 255, 255};
    EXPECT_EQ(rgbaAt(window, 6, 500), bar);
    EXPECT_EQ(rgbaAt(window, 7, 500), white);
    EXPECT_EQ(rgbaAt(window, 1912, 1079), white);
    EXPECT_EQ(rgbaAt(window, 1913, 1079), bar);
    EXPECT_EQ(rgbaAt(window, 7, 0), white);
    EXPECT_EQ(rgbaAt(window, 1919, 0), bar);
}

TEST(Rendering, FollowsThePlainRuleForManySizes) {
    std::mt19937 random(printedSeed());
    constexpr Alphas kinds[] = {Alphas::opaque, Alphas::clear, Alphas::any, Alphas::mixed};
    for (int round = 0; round < 600; ++round) {
        const int limit = round % 3 == 0 ? 200 : 24; // pixels
        const int iw = int(random() % limit) + 1;
        const int ih = int(random() % limit) + 1;
        const bool same = round % 5 == 0; // the size that is drawn without scaling, with and without bars
        WmWindow window = windowOf(same ? iw : int(random() % limit) + 1, same ? ih : int(random() % limit) + 1);
        if (round % 10 == 0) window.clientWidth += int(random() % 9);
        wm_clearWindow(&window, static_cast<unsigned char>(random()), static_cast<unsigned char>(random()),
                       static_cast<unsigned char>(random()));
        push(window, randomPixels(random, iw, ih, kinds[round % 4]), iw, ih);
        SCOPED_TRACE(std::to_string(iw) + "x" + std::to_string(ih) + " in " + std::to_string(window.clientWidth) + "x" +
                     std::to_string(window.clientHeight));
        renderIntoBackbuffer(window);
        expectPlainPicture(window);
        if (HasFatalFailure()) return;
    }
}

TEST(Rendering, BuffersFollowTheClientSize) {
    WmWindow window = windowOf(40, 30);
    push(window, std::vector<unsigned char>(4, 200), 1, 1);
    renderIntoBackbuffer(window);
    window.clientWidth = 7;
    window.clientHeight = 90;
    renderIntoBackbuffer(window);
    EXPECT_EQ(window.backbuffer.size(), 630U);
    EXPECT_EQ(window.rgbaBackbuffer.size(), 2520U);
    expectPlainPicture(window);
}

TEST(Rendering, LeavesTheFrameDue) {
    WmWindow window = windowOf(4, 4);
    renderIntoBackbuffer(window);
    EXPECT_TRUE(window.dirty);
    window.dirty = false;
    renderIntoBackbuffer(window);
    EXPECT_FALSE(window.dirty);
}

TEST(Rendering, DoesNothingWithoutAClientArea) {
    WmWindow window = windowOf(0, 10);
    renderIntoBackbuffer(window);
    resizeBackbuffer(window);
    EXPECT_TRUE(window.backbuffer.empty());
    EXPECT_FALSE(backbufferFits(window));
}

TEST(ClientResized, KeepsAtLeastOnePixelAndMarksTheFrameDue) {
    WmWindow window = windowOf(10, 10);
    window.dirty = false;
    clientResized(window, 0, -3);
    EXPECT_EQ(window.clientWidth, 1);
    EXPECT_EQ(window.clientHeight, 1);
    EXPECT_EQ(window.backbuffer.size(), 1U);
    EXPECT_TRUE(window.dirty);
}

TEST(ResizeBackbuffer, ZeroesBothBuffers) {
    WmWindow window = windowOf(2, 2);
    wm_clearWindow(&window, 1, 2, 3);
    renderIntoBackbuffer(window);
    resizeBackbuffer(window);
    EXPECT_EQ(window.backbuffer, std::vector<std::uint32_t>(4, 0));
    EXPECT_EQ(window.rgbaBackbuffer, std::vector<unsigned char>(16, 0));
}

TEST(MouseMapping, TheDrawnEdgesAreTheImagesFirstAndLastPixel) {
    WmWindow window = windowOf(1920, 1080);
    push(window, std::vector<unsigned char>(960 * 544 * 4, 255), 960, 544);
    updateMousePosition(window, 7, 0);
    EXPECT_EQ(window.mouseX, 0);
    EXPECT_EQ(window.mouseY, 0);
    updateMousePosition(window, 1912, 1079);
    EXPECT_EQ(window.mouseX, 959);
    EXPECT_EQ(window.mouseY, 543);
    updateMousePosition(window, 960, 540);
    EXPECT_EQ(window.mouseX, 480); // (953 * 959 + 952) / 1905
    EXPECT_EQ(window.mouseY, 272); // (540 * 543 + 539) / 1079
}

TEST(MouseMapping, PositionsInTheBarsAndOutsideTheWindowBelongToTheEdge) {
    WmWindow window = windowOf(1920, 1080);
    push(window, std::vector<unsigned char>(960 * 544 * 4, 255), 960, 544);
    updateMousePosition(window, 0, -50);
    EXPECT_EQ(window.mouseX, 0);
    EXPECT_EQ(window.mouseY, 0);
    updateMousePosition(window, 1919, 4000);
    EXPECT_EQ(window.mouseX, 959);
    EXPECT_EQ(window.mouseY, 543);
    updateMousePosition(window, -2147483647 - 1, 2147483647);
    EXPECT_EQ(window.mouseX, 0);
    EXPECT_EQ(window.mouseY, 543);
}

TEST(MouseMapping, RoundsBetweenPixels) {
    EXPECT_EQ(imageCoordinate(0, 0, 4, 2), 0);
    EXPECT_EQ(imageCoordinate(1, 0, 4, 2), 0); // (1 * 1 + 1) / 3
    EXPECT_EQ(imageCoordinate(2, 0, 4, 2), 1); // (2 * 1 + 1) / 3
    EXPECT_EQ(imageCoordinate(3, 0, 4, 2), 1);
}

TEST(MouseMapping, AnImageOrDrawnSizeBelowTwoGivesZero) {
    EXPECT_EQ(imageCoordinate(50, 0, 100, 1), 0);
    EXPECT_EQ(imageCoordinate(50, 0, 1, 100), 0);
    EXPECT_EQ(imageCoordinate(50, 0, 100, 0), 0);
    EXPECT_EQ(imageCoordinate(50, 0, 0, 100), 0);
    EXPECT_EQ(imageCoordinate(99, 0, 100, 2), 1);
}

TEST(MouseMapping, FollowsThePlainRuleForManySizes) {
    std::mt19937 random(printedSeed());
    for (int round = 0; round < 200000; ++round) {
        const int drawnSize = int(random() % 3000) + 2;
        const int imageSize = int(random() % 3000) + 2;
        const int offset = int(random() % 300);
        const int position = int(random() % 4000) - 400;
        const long long inside = std::clamp(position - offset, 0, drawnSize - 1);
        const long long plain = (inside * (imageSize - 1) + (drawnSize - 1) / 2) / (drawnSize - 1);
        ASSERT_EQ(imageCoordinate(position, offset, drawnSize, imageSize), std::min<long long>(plain, imageSize - 1));
    }
}

TEST(MouseMapping, LargeSizesDoNotOverflow) {
    EXPECT_EQ(imageCoordinate(99999, 0, 100000, 100000), 99999);
    EXPECT_EQ(imageCoordinate(50000, 0, 100000, 100000), 50000);
}

TEST(MouseMapping, UsesTheSizeAtCreationUntilAFrameIsPushed) {
    WmWindow window = windowOf(200, 200);
    window.imageWidth = 100;
    window.imageHeight = 50; // drawn as 200 by 100 at row 50
    updateMousePosition(window, 199, 50);
    EXPECT_EQ(window.mouseX, 99);
    EXPECT_EQ(window.mouseY, 0);
    updateMousePosition(window, 199, 149);
    EXPECT_EQ(window.mouseY, 49);
    push(window, std::vector<unsigned char>(10 * 10 * 4, 1), 10, 10);
    updateMousePosition(window, 199, 149);
    EXPECT_EQ(window.mouseX, 9);
    EXPECT_EQ(window.mouseY, 7); // (149 * 9 + 99) / 199
}

TEST(PublishedKeys, AreInTheOrderOfTheirGlobals) {
    std::vector<std::string> expected = {"RETURN", "UP", "DOWN", "LEFT", "RIGHT"};
    for (char letter = 'A'; letter <= 'Z'; ++letter) expected.emplace_back(1, letter);
    for (char digit = '1'; digit <= '9'; ++digit) expected.emplace_back(1, digit);
    for (const char* last : {"0", "BACK", "DELETE", "SPACE"}) expected.emplace_back(last);
    ASSERT_EQ(expected.size(), publishedKeyCount);
    for (std::size_t i = 0; i < publishedKeyCount; ++i) EXPECT_EQ(publishedKeys[i].name, expected[i]);
}

TEST(PublishedKeys, HaveTheirVirtualKeyCodes) {
    const std::map<std::string, int> named = {{"RETURN", 13}, {"UP", 38},  {"DOWN", 40},   {"LEFT", 37},
                                              {"RIGHT", 39},  {"BACK", 8}, {"DELETE", 46}, {"SPACE", 32}};
    std::set<int> codes;
    for (const PublishedKey& key : publishedKeys) {
        const std::string name = key.name;
        const int expected = name.size() == 1 ? name[0] : named.at(name);
        EXPECT_EQ(key.virtualKey, expected) << name;
        codes.insert(key.virtualKey);
    }
    EXPECT_EQ(codes.size(), publishedKeyCount);
}

TEST(Focus, LosingItReleasesAllKeysAndButtonsAtOnce) {
    WmWindow window = windowOf(10, 10);
    focusGained(window);
    keyChanged(window, 'A', true);
    keyChanged(window, 255, true);
    mouseButtonChanged(window, middleMouseButton, true);
    focusLost(window);
    EXPECT_FALSE(window.active);
    EXPECT_EQ(std::count(window.keys.begin(), window.keys.end(), true), 0);
    EXPECT_FALSE(wm_getMouseButtonState(&window, 2));
    focusGained(window);
    EXPECT_TRUE(window.active);
    EXPECT_FALSE(window.keys['A']);
}

TEST(Keys, ACodeBeyondTheTableIsIgnored) {
    WmWindow window = windowOf(10, 10);
    keyChanged(window, 256, true);
    keyChanged(window, static_cast<std::size_t>(-1), true);
    EXPECT_EQ(std::count(window.keys.begin(), window.keys.end(), true), 0);
    keyChanged(window, 255, true);
    EXPECT_TRUE(window.keys[255]);
    keyChanged(window, 255, false);
    EXPECT_FALSE(window.keys[255]);
}

TEST(MouseButtons, TheMouseIsHeldUntilTheLastButtonIsUp) {
    WmWindow window = windowOf(10, 10);
    EXPECT_TRUE(mouseButtonChanged(window, leftMouseButton, true));
    EXPECT_TRUE(mouseButtonChanged(window, rightMouseButton, true));
    EXPECT_TRUE(wm_getMouseButtonState(&window, 0));
    EXPECT_TRUE(wm_getMouseButtonState(&window, 1));
    EXPECT_FALSE(wm_getMouseButtonState(&window, 2));
    EXPECT_TRUE(mouseButtonChanged(window, leftMouseButton, false));
    EXPECT_FALSE(mouseButtonChanged(window, rightMouseButton, false));
}
