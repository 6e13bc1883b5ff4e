// The part of the platform boundary that is the same on every platform.
//
// Between two updates a window is only a record: frames are stored in it, its input is read from it, its finished
// pixels are copied out of it. All of that is here, once; a platform file is left with making a window, taking its
// messages and putting pixels on it.

#include "host/presentation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <thread>

namespace {

WmWindow* lastUsedWindow = nullptr;                       // borrowed; whose keys `wm_updateKeyboardState` reads
std::array<unsigned char, publishedKeyCount> keyStates{}; // the key state table

} // namespace

void useWindow(WmWindow* window) { lastUsedWindow = window; }

void forgetWindow(const WmWindow* window) {
    if (lastUsedWindow == window) lastUsedWindow = nullptr;
}

int wm_has_window() { return 1; }
int wm_has_metal_window() { return 1; }
int wm_has_mixer() { return 1; }
int wm_has_quartz_window() { return 0; }

void wm_closeWindow(WmWindow* window) {
    if (window) window->closeRequested = true;
}

const char* wm_getWindowTitle(WmWindow* window) { return window ? window->title.c_str() : ""; }

void wm_getWindowSize(WmWindow* window, int* width, int* height) {
    if (width) *width = window ? window->clientWidth : 0;
    if (height) *height = window ? window->clientHeight : 0;
}

void wm_pushImage(WmWindow* window, const PlushImage* image) {
    if (!window || !image || !image->pixels || image->width <= 0 || image->height <= 0) return;
    const std::size_t size =
        static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * bytesPerPixel;
    window->pixels.assign(image->pixels, image->pixels + size);
    window->pixelsWidth = image->width;
    window->pixelsHeight = image->height;
    window->dirty = true;
}

bool wm_windowShouldClose(WmWindow* window) { return window && window->closeRequested; }

void wm_clearWindow(WmWindow* window, unsigned char red, unsigned char green, unsigned char blue) {
    if (!window) return;
    // Games set the same colour every frame; only a new one is worth presenting again.
    if (window->clearRed == red && window->clearGreen == green && window->clearBlue == blue) return;
    window->clearRed = red;
    window->clearGreen = green;
    window->clearBlue = blue;
    window->dirty = true;
}

PlushImage* wm_captureWindow(WmWindow* window) {
    if (!window || window->clientWidth < 1 || window->clientHeight < 1) return nullptr;
    if (window->dirty || window->rgbaBackbuffer.empty()) renderIntoBackbuffer(*window);
    auto pixels = std::make_unique_for_overwrite<PixelByte[]>(window->rgbaBackbuffer.size());
    std::copy(window->rgbaBackbuffer.begin(), window->rgbaBackbuffer.end(), pixels.get());
    auto image = std::make_unique<PlushImage>();
    image->width = window->clientWidth;
    image->height = window->clientHeight;
    image->pixels = pixels.release();
    return image.release();
}

void wm_getMousePosition(WmWindow* window, int* x, int* y) {
    if (x) *x = window ? window->mouseX : 0;
    if (y) *y = window ? window->mouseY : 0;
}

bool wm_getMouseButtonState(WmWindow* window, int index) {
    if (!window || index < 0 || static_cast<std::size_t>(index) >= mouseButtonCount) return false;
    return window->mouseButtons[static_cast<std::size_t>(index)];
}

void wm_updateKeyboardState() {
    keyStates.fill(0);
    if (!lastUsedWindow || !lastUsedWindow->active) return;
    for (std::size_t i = 0; i < publishedKeyCount; ++i) {
        keyStates[i] = lastUsedWindow->keys[publishedKeys[i].virtualKey] ? 1 : 0;
    }
}

const unsigned char* wm_keyStates() { return keyStates.data(); }

void wm_setTouchBarButtonText(WmWindow*, int, const char*) {}
void wm_setTouchBarButtonImage(WmWindow*, int, const PlushImage*) {}
bool wm_getTouchBarButtonState(WmWindow*, int) { return false; }
void wm_clearTouchBar(WmWindow*) {}
void wm_sailfish_register_key(int, const char*, int, int) {}
bool wm_sailfish_left_orientation() { return false; }

void wm_sleep_ms(int milliseconds) {
    if (milliseconds < 1) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

int wm_lua_version_major() { return 0; }
int wm_lua_version_minor() { return 3; }
int wm_lua_version_patch() { return 0; }
float wm_lua_version_number() { return 0.3F; }
