// Laying a frame into a window, and the input rules.
//
// A pixel travels as one 32-bit word whose lowest byte is red, the order of the bytes in memory. Words let the inner
// loops treat two channels at a time: red and blue sit 16 bits apart, so a product with an alpha of at most 255 never
// reaches its neighbour, and the division by 255 becomes two shifts. The result is the same integer as the formula
// `(s * a + c * (255 - a)) / 255` for each channel.

#include "host/presentation.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "a pixel word has red in its lowest byte");

const char* const defaultWindowTitle = "OstrelMoon";

const std::array<PublishedKey, publishedKeyCount> publishedKeys = {{
    {"RETURN", virtualKeyReturn},
    {"UP", virtualKeyUp},
    {"DOWN", virtualKeyDown},
    {"LEFT", virtualKeyLeft},
    {"RIGHT", virtualKeyRight},
    {"A", 'A'},
    {"B", 'B'},
    {"C", 'C'},
    {"D", 'D'},
    {"E", 'E'},
    {"F", 'F'},
    {"G", 'G'},
    {"H", 'H'},
    {"I", 'I'},
    {"J", 'J'},
    {"K", 'K'},
    {"L", 'L'},
    {"M", 'M'},
    {"N", 'N'},
    {"O", 'O'},
    {"P", 'P'},
    {"Q", 'Q'},
    {"R", 'R'},
    {"S", 'S'},
    {"T", 'T'},
    {"U", 'U'},
    {"V", 'V'},
    {"W", 'W'},
    {"X", 'X'},
    {"Y", 'Y'},
    {"Z", 'Z'},
    {"1", '1'},
    {"2", '2'},
    {"3", '3'},
    {"4", '4'},
    {"5", '5'},
    {"6", '6'},
    {"7", '7'},
    {"8", '8'},
    {"9", '9'},
    {"0", '0'},
    {"BACK", virtualKeyBack},
    {"DELETE", virtualKeyDelete},
    {"SPACE", virtualKeySpace},
}};

namespace {

using PixelWord = std::uint32_t;

constexpr double smallestScale = 0.0001;      // keeps a huge image in a tiny window a rectangle at all
constexpr PixelWord redAndBlue = 0x00ff00ffU; // the two channels that are 16 bits apart
constexpr PixelWord greenAndAlpha = 0xff00ff00U;
constexpr PixelWord opaqueAlpha = 0xff000000U;
constexpr int stretchLength = 64; // pixels; how much of a row is tested for opacity at a time

PixelWord loadPixel(const unsigned char* bytes) {
    PixelWord pixel;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel;
}

void storePixel(unsigned char* bytes, PixelWord pixel) { std::memcpy(bytes, &pixel, sizeof pixel); }

/// R, G, B, A to the devices' B, G, R, X; also the way back.
PixelWord swapRedAndBlue(PixelWord pixel) {
    return (pixel & greenAndAlpha) | ((pixel & 0xffU) << 16) | ((pixel >> 16) & 0xffU);
}

/// Two channels, 16 bits apart and at most 255 * 255 each, divided by 255.
PixelWord divideBy255(PixelWord channels) {
    return ((channels + 0x00010001U + ((channels >> 8) & redAndBlue)) >> 8) & redAndBlue;
}

PixelWord blendOver(PixelWord pixel, PixelWord clear) {
    const PixelWord alpha = pixel >> 24;
    const PixelWord rest = 255U - alpha;
    const PixelWord outer = divideBy255((pixel & redAndBlue) * alpha + (clear & redAndBlue) * rest);
    const PixelWord green = divideBy255(((pixel >> 8) & 0xffU) * alpha + ((clear >> 8) & 0xffU) * rest);
    return outer | (green << 8) | opaqueAlpha;
}

/// A place in both back buffers, which are always written together.
struct OutputCursor {
    unsigned char* rgba;
    PixelWord* device;

    OutputCursor at(std::size_t pixel) const { return {rgba + pixel * bytesPerPixel, device + pixel}; }
};

void fillPixels(OutputCursor out, std::size_t count, PixelWord colour) {
    for (std::size_t i = 0; i < count; ++i) storePixel(out.rgba + i * bytesPerPixel, colour);
    std::fill_n(out.device, count, swapRedAndBlue(colour));
}

void copyRow(OutputCursor out, OutputCursor from, std::size_t count) {
    std::memcpy(out.rgba, from.rgba, count * bytesPerPixel);
    std::memcpy(out.device, from.device, count * sizeof *out.device);
}

bool allOpaque(const unsigned char* row, int count) {
    PixelWord common = opaqueAlpha;
    for (int i = 0; i < count; ++i) common &= loadPixel(row + i * bytesPerPixel);
    return common == opaqueAlpha;
}

/// Blends a row of pixels that lie side by side over the clear colour.
void composeRow(OutputCursor out, const unsigned char* row, int count, PixelWord clear) {
    for (int start = 0; start < count; start += stretchLength) {
        const int length = std::min(stretchLength, count - start);
        const unsigned char* source = row + static_cast<std::size_t>(start) * bytesPerPixel;
        const OutputCursor target = out.at(static_cast<std::size_t>(start));
        if (allOpaque(source, length)) {
            std::memcpy(target.rgba, source, static_cast<std::size_t>(length) * bytesPerPixel);
            for (int i = 0; i < length; ++i) target.device[i] = swapRedAndBlue(loadPixel(source + i * bytesPerPixel));
        } else {
            for (int i = 0; i < length; ++i) {
                const PixelWord blended = blendOver(loadPixel(source + i * bytesPerPixel), clear);
                storePixel(target.rgba + i * bytesPerPixel, blended);
                target.device[i] = swapRedAndBlue(blended);
            }
        }
    }
}

/// The nearest source position of a drawn one, before the offset is added.
int sourcePosition(int drawn, int imageSize, int drawnSize) {
    const std::int64_t source = static_cast<std::int64_t>(drawn) * imageSize / drawnSize;
    return static_cast<int>(std::clamp<std::int64_t>(source, 0, imageSize - 1));
}

int drawnSide(int imageSize, double scale, int clientSize) {
    return static_cast<int>(std::clamp<long long>(std::llround(imageSize * scale), 1, clientSize));
}

/// The size of the client area; 0 if a side is below 1.
std::size_t clientPixels(const WmWindow& window) {
    if (window.clientWidth < 1 || window.clientHeight < 1) return 0;
    return static_cast<std::size_t>(window.clientWidth) * static_cast<std::size_t>(window.clientHeight);
}

/// Draws the pushed frame with its bars.
void renderFrame(WmWindow& window, OutputCursor out, PixelWord clear) {
    const DrawnRectangle drawn =
        drawnRectangle(window.pixelsWidth, window.pixelsHeight, window.clientWidth, window.clientHeight);
    const auto clientWidth = static_cast<std::size_t>(window.clientWidth);
    const auto left = static_cast<std::size_t>(drawn.left);
    const auto right = left + static_cast<std::size_t>(drawn.width);
    const bool everyColumn = drawn.width == window.pixelsWidth;
    if (!everyColumn) {
        window.columnMap.resize(static_cast<std::size_t>(drawn.width));
        window.columnPixels.resize(static_cast<std::size_t>(drawn.width));
        for (int x = 0; x < drawn.width; ++x) {
            window.columnMap[static_cast<std::size_t>(x)] = sourcePosition(x, window.pixelsWidth, drawn.width);
        }
    }

    int shownRow = -1; // the image row in the client row above, if that lies inside
    for (int y = 0; y < window.clientHeight; ++y) {
        const OutputCursor row = out.at(static_cast<std::size_t>(y) * clientWidth);
        if (y < drawn.top || y >= drawn.top + drawn.height) {
            fillPixels(row, clientWidth, clear);
            continue;
        }
        const int imageRow = sourcePosition(y - drawn.top, window.pixelsHeight, drawn.height);
        if (imageRow == shownRow) {
            copyRow(row, out.at(static_cast<std::size_t>(y - 1) * clientWidth), clientWidth);
            continue;
        }
        shownRow = imageRow;
        const unsigned char* source = window.pixels.data() + static_cast<std::size_t>(imageRow) *
                                                                 static_cast<std::size_t>(window.pixelsWidth) *
                                                                 bytesPerPixel;
        if (!everyColumn) {
            for (std::size_t x = 0; x < window.columnMap.size(); ++x) {
                window.columnPixels[x] =
                    loadPixel(source + static_cast<std::size_t>(window.columnMap[x]) * bytesPerPixel);
            }
            source = reinterpret_cast<const unsigned char*>(window.columnPixels.data());
        }
        fillPixels(row, left, clear);
        composeRow(row.at(left), source, drawn.width, clear);
        fillPixels(row.at(right), clientWidth - right, clear);
    }
}

} // namespace

DrawnRectangle drawnRectangle(int imageWidth, int imageHeight, int clientWidth, int clientHeight) {
    if (imageWidth < 1 || imageHeight < 1 || clientWidth < 1 || clientHeight < 1) return {};
    const double horizontal = static_cast<double>(clientWidth) / imageWidth;
    const double vertical = static_cast<double>(clientHeight) / imageHeight;
    const double scale = std::max(std::min(horizontal, vertical), smallestScale);
    DrawnRectangle drawn;
    drawn.width = drawnSide(imageWidth, scale, clientWidth);
    drawn.height = drawnSide(imageHeight, scale, clientHeight);
    drawn.left = (clientWidth - drawn.width) / 2;
    drawn.top = (clientHeight - drawn.height) / 2;
    return drawn;
}

int imageCoordinate(int clientPosition, int drawnOffset, int drawnSize, int imageSize) {
    if (imageSize < 2 || drawnSize < 2) return 0;
    const std::int64_t inside =
        std::clamp<std::int64_t>(static_cast<std::int64_t>(clientPosition) - drawnOffset, 0, drawnSize - 1);
    const std::int64_t steps = drawnSize - 1;
    const std::int64_t mapped = (inside * (imageSize - 1) + steps / 2) / steps;
    return static_cast<int>(std::min<std::int64_t>(mapped, imageSize - 1));
}

ClientSize heldClientSize(int width, int height) {
    ClientSize size;
    size.width = std::clamp(width, 1, longestWindowSide);
    size.height = std::clamp(height, 1, std::min(longestWindowSide, largestWindowArea / size.width));
    return size;
}

int centredPosition(int available, int size) { return std::max(0, (available - size) / 2); }

void resizeBackbuffer(WmWindow& window) {
    const std::size_t count = clientPixels(window);
    if (count == 0) return;
    window.rgbaBackbuffer.assign(count * bytesPerPixel, 0);
    window.backbuffer.assign(count, 0);
}

bool backbufferFits(const WmWindow& window) {
    const std::size_t count = clientPixels(window);
    return count > 0 && window.backbuffer.size() == count && window.rgbaBackbuffer.size() == count * bytesPerPixel;
}

void clientResized(WmWindow& window, int width, int height) {
    window.clientWidth = std::max(width, 1);
    window.clientHeight = std::max(height, 1);
    resizeBackbuffer(window);
    window.dirty = true;
}

void renderIntoBackbuffer(WmWindow& window) {
    const std::size_t count = clientPixels(window);
    if (count == 0) return;
    if (!backbufferFits(window)) resizeBackbuffer(window);
    const OutputCursor out{window.rgbaBackbuffer.data(), window.backbuffer.data()};
    const PixelWord clear = window.clearRed | static_cast<PixelWord>(window.clearGreen) << 8 |
                            static_cast<PixelWord>(window.clearBlue) << 16 | opaqueAlpha;
    if (window.pixelsWidth < 1 || window.pixelsHeight < 1) {
        fillPixels(out, count, clear);
    } else {
        renderFrame(window, out, clear);
    }
}

void updateMousePosition(WmWindow& window, int clientX, int clientY) {
    const bool pushed = window.pixelsWidth > 0 && window.pixelsHeight > 0;
    const int imageWidth = pushed ? window.pixelsWidth : window.imageWidth;
    const int imageHeight = pushed ? window.pixelsHeight : window.imageHeight;
    const DrawnRectangle drawn = drawnRectangle(imageWidth, imageHeight, window.clientWidth, window.clientHeight);
    window.mouseX = imageCoordinate(clientX, drawn.left, drawn.width, imageWidth);
    window.mouseY = imageCoordinate(clientY, drawn.top, drawn.height, imageHeight);
}

bool mouseButtonChanged(WmWindow& window, MouseButton button, bool down) {
    window.mouseButtons[button] = down;
    return std::any_of(window.mouseButtons.begin(), window.mouseButtons.end(), [](bool held) { return held; });
}

void keyChanged(WmWindow& window, std::size_t virtualKey, bool down) {
    if (virtualKey < virtualKeyCount) window.keys[virtualKey] = down;
}

void focusGained(WmWindow& window) { window.active = true; }

void focusLost(WmWindow& window) {
    window.active = false;
    window.keys.fill(false);
    window.mouseButtons.fill(false);
}
