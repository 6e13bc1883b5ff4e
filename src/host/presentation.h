#pragma once

// How a frame is laid into a window, and what the window's input means to a script.
//
// The picture a script pushes and the area it is shown in are of different sizes. The picture is scaled by one factor
// for both sides until it touches two edges, centred, and framed by bars in the clear colour; mouse positions go the
// same way backwards. Both directions come from one rectangle, `drawnRectangle`, so that what a player points at is
// what he sees. Nothing here knows a platform: the platform files hand in sizes, positions and key codes, and take
// finished pixels out.
//
// The cost of a frame is one pass over the client area. The nearest-pixel columns are looked up in a map that is made
// once a frame, a client row that shows the same image row as the one above it is a copy of that row, and stretches
// of opaque pixels skip the blending.

#include "host/wm.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

constexpr std::size_t virtualKeyCount = 256;
constexpr std::size_t mouseButtonCount = 3;

/// The mouse buttons, by their index at the boundary.
enum MouseButton : std::size_t { leftMouseButton = 0, rightMouseButton = 1, middleMouseButton = 2 };

/// The codes of the keys that have no letter or digit; a letter's code is its capital, a digit's its character.
enum VirtualKey : unsigned char {
    virtualKeyNone = 0,
    virtualKeyBack = 8,
    virtualKeyReturn = 13,
    virtualKeySpace = 32,
    virtualKeyLeft = 37,
    virtualKeyUp = 38,
    virtualKeyRight = 39,
    virtualKeyDown = 40,
    virtualKeyDelete = 46,
};

/// A key that a script can read: the end of its global's name ("OSTREL_KEY_" + name) and its virtual-key code.
struct PublishedKey {
    const char* name;
    unsigned char virtualKey;
};

/// The keys in the order of their globals, which is also that of the key state table.
extern const std::array<PublishedKey, publishedKeyCount> publishedKeys;

/// The part of the client area that the image covers, in client pixels.
struct DrawnRectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

/// The platform-free part of a window. A platform's own record derives from it and adds its handles.
struct WmWindow {
    bool closeRequested = false;
    bool active = false;  // the window has the keyboard focus
    int clientWidth = 0;  // client pixels
    int clientHeight = 0; // client pixels
    int imageWidth = 0;   // as given at creation; maps the mouse until a frame was pushed
    int imageHeight = 0;  // as given at creation
    std::string title;
    unsigned char clearRed = 0; // the colour of the bars, and behind transparent pixels
    unsigned char clearGreen = 0;
    unsigned char clearBlue = 0;
    int mouseX = 0; // image pixels
    int mouseY = 0; // image pixels
    std::array<bool, mouseButtonCount> mouseButtons{};
    std::array<bool, virtualKeyCount> keys{};  // by virtual-key code
    std::vector<unsigned char> pixels;         // the last pushed frame, R, G, B, A
    int pixelsWidth = 0;                       // pixels; 0 while none was pushed
    int pixelsHeight = 0;                      // pixels; 0 while none was pushed
    std::vector<unsigned char> rgbaBackbuffer; // client pixels, R, G, B, A
    std::vector<std::uint32_t> backbuffer;     // client pixels, bytes B, G, R, X as the devices take them
    std::vector<std::uint32_t> columnPixels;   // scratch: one drawn row before blending
    std::vector<int> columnMap;                // scratch: the image column of each drawn column
    bool dirty = true;                         // what is on the screen is out of date
};

/// Where an image lies in a client area: scaled to touch, at least 1 by 1, centred. Empty if a size is below 1.
DrawnRectangle drawnRectangle(int imageWidth, int imageHeight, int clientWidth, int clientHeight);

/// One mouse coordinate: client pixels to image pixels. The first and last drawn pixel map to the image's first and
/// last, positions outside to the nearer of the two. An image or drawn size below 2 gives 0.
int imageCoordinate(int clientPosition, int drawnOffset, int drawnSize, int imageSize);

/// The longest side that a window is made or resized to, in pixels: no system manages more.
constexpr int longestWindowSide = 16384;

/// The largest client area that a window is made or resized to, in pixels. It holds every screen there is, and a
/// script's typing error does not ask for gigabytes.
constexpr int largestWindowArea = 1 << 26;

/// A width and a height, in pixels.
struct ClientSize {
    int width = 0;
    int height = 0;
};

/// The client area that a window gets when a script asks for this one: each side is at least 1 and at most
/// `longestWindowSide`, and the height gives way where the area would be larger than `largestWindowArea`.
ClientSize heldClientSize(int width, int height);

/// Where to put something of this size to centre it in what is available, but never at a negative position.
int centredPosition(int available, int size);

/// Sizes the back buffers to the client area and zeroes them. A client area below 1 by 1 leaves them alone.
void resizeBackbuffer(WmWindow& window);

/// Whether the back buffers have the client area's size, as they have after rendering.
bool backbufferFits(const WmWindow& window);

/// The client area has changed: at least 1 by 1 is stored, the buffers follow, the frame is due again.
void clientResized(WmWindow& window, int width, int height);

/// Draws the frame, or the clear colour alone while there is none, into both back buffers. Leaves `dirty` as it is,
/// because only presenting the result makes the screen up to date.
void renderIntoBackbuffer(WmWindow& window);

/// The mouse is at this place of the client area.
void updateMousePosition(WmWindow& window, int clientX, int clientY);

/// A button went down or up. Returns whether any button is down now, that is, whether the mouse is to be captured.
bool mouseButtonChanged(WmWindow& window, MouseButton button, bool down);

/// A key went down or up; a code of `virtualKeyCount` or more is ignored.
void keyChanged(WmWindow& window, std::size_t virtualKey, bool down);

void focusGained(WmWindow& window);

/// Without the focus no release is ever reported, so everything counts as released at once.
void focusLost(WmWindow& window);

/// Remembers the window that `wm_updateKeyboardState` reads.
void useWindow(WmWindow* window);

/// Forgets the window if it is the remembered one; for a window about to be destroyed.
void forgetWindow(const WmWindow* window);

/// The title of a window that was made without one.
extern const char* const defaultWindowTitle;
