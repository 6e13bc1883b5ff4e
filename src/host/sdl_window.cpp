// The window on Linux, by SDL2.
//
// SDL is used as a thin layer over the desktop: it makes the window, translates its events and takes finished pixels.
// Frames go into SDL's window surface, one to one; its renderer and its graphics-driver paths stay unused, since the
// presentation code has done the scaling and starting a driver would cost more than all frames of a short game.
//
// The library is loaded when the first window is made, not when the program starts. It draws in some forty others,
// and a tool run or a game without a window should not wait for them; where it is missing altogether, the engine
// still runs and `wm_createWindow` fails as it does without a display.

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include "host/presentation.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include <dlfcn.h>

/// A window with its SDL handle. The base is what the presentation code knows of it.
struct SdlWindow : WmWindow {
    SDL_Window* handle = nullptr;
    bool exposed = false; // the system asks for the picture again, though it may not have changed
};

namespace {

constexpr const char* libraryName = "libSDL2-2.0.so.0";
constexpr const char* recordKey = "velmaris";             // under which a window's record hangs on its SDL window
constexpr const char* driverVariable = "SDL_VIDEODRIVER"; // by which a user asks for a driver
constexpr const char* switchedOn = "1";
constexpr const char* switchedOff = "0";

/// What we use of SDL, found in the library at run time. Every member has the name and type of the function.
struct SdlLibrary {
    decltype(&::SDL_SetHint) setHint = nullptr;
    decltype(&::SDL_InitSubSystem) initSubSystem = nullptr;
    decltype(&::SDL_QuitSubSystem) quitSubSystem = nullptr;
    decltype(&::SDL_GetCurrentVideoDriver) getCurrentVideoDriver = nullptr;
    decltype(&::SDL_GetDisplayBounds) getDisplayBounds = nullptr;
    decltype(&::SDL_StopTextInput) stopTextInput = nullptr;
    decltype(&::SDL_CreateWindow) createWindow = nullptr;
    decltype(&::SDL_DestroyWindow) destroyWindow = nullptr;
    decltype(&::SDL_SetWindowData) setWindowData = nullptr;
    decltype(&::SDL_GetWindowData) getWindowData = nullptr;
    decltype(&::SDL_GetWindowFromID) getWindowFromId = nullptr;
    decltype(&::SDL_GetWindowFlags) getWindowFlags = nullptr;
    decltype(&::SDL_GetWindowSize) getWindowSize = nullptr;
    decltype(&::SDL_SetWindowSize) setWindowSize = nullptr;
    decltype(&::SDL_SetWindowTitle) setWindowTitle = nullptr;
    decltype(&::SDL_RaiseWindow) raiseWindow = nullptr;
    decltype(&::SDL_GetWindowSurface) getWindowSurface = nullptr;
    decltype(&::SDL_UpdateWindowSurface) updateWindowSurface = nullptr;
    decltype(&::SDL_ConvertPixels) convertPixels = nullptr;
    decltype(&::SDL_CaptureMouse) captureMouse = nullptr;
    decltype(&::SDL_PollEvent) pollEvent = nullptr;
    bool complete = false;
};

template <typename Function> bool findFunction(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

SdlLibrary loadLibrary() {
    SdlLibrary sdl;
    void* library = dlopen(libraryName, RTLD_LAZY | RTLD_LOCAL); // for the rest of the process
    if (!library) return sdl;
    sdl.complete = findFunction(library, "SDL_SetHint", sdl.setHint) &&
                   findFunction(library, "SDL_InitSubSystem", sdl.initSubSystem) &&
                   findFunction(library, "SDL_QuitSubSystem", sdl.quitSubSystem) &&
                   findFunction(library, "SDL_GetCurrentVideoDriver", sdl.getCurrentVideoDriver) &&
                   findFunction(library, "SDL_GetDisplayBounds", sdl.getDisplayBounds) &&
                   findFunction(library, "SDL_StopTextInput", sdl.stopTextInput) &&
                   findFunction(library, "SDL_CreateWindow", sdl.createWindow) &&
                   findFunction(library, "SDL_DestroyWindow", sdl.destroyWindow) &&
                   findFunction(library, "SDL_SetWindowData", sdl.setWindowData) &&
                   findFunction(library, "SDL_GetWindowData", sdl.getWindowData) &&
                   findFunction(library, "SDL_GetWindowFromID", sdl.getWindowFromId) &&
                   findFunction(library, "SDL_GetWindowFlags", sdl.getWindowFlags) &&
                   findFunction(library, "SDL_GetWindowSize", sdl.getWindowSize) &&
                   findFunction(library, "SDL_SetWindowSize", sdl.setWindowSize) &&
                   findFunction(library, "SDL_SetWindowTitle", sdl.setWindowTitle) &&
                   findFunction(library, "SDL_RaiseWindow", sdl.raiseWindow) &&
                   findFunction(library, "SDL_GetWindowSurface", sdl.getWindowSurface) &&
                   findFunction(library, "SDL_UpdateWindowSurface", sdl.updateWindowSurface) &&
                   findFunction(library, "SDL_ConvertPixels", sdl.convertPixels) &&
                   findFunction(library, "SDL_CaptureMouse", sdl.captureMouse) &&
                   findFunction(library, "SDL_PollEvent", sdl.pollEvent);
    return sdl;
}

/// The library, loaded by the first call. Complete whenever a window exists.
const SdlLibrary& sdl() {
    static const SdlLibrary library = loadLibrary();
    return library;
}

SdlWindow* platformWindow(WmWindow* window) { return static_cast<SdlWindow*>(window); }

/// Whether a driver is one that SDL falls back on where there is no display. A game in such a window would wait for
/// ever for somebody to close it, so it counts as none, unless the user asked for it.
bool showsNothing(const std::string& driver) { return driver == "offscreen" || driver == "dummy" || driver == "evdev"; }

/// Starts SDL's window part; false where no display can be opened. Each success is answered by `quitSubSystem`.
bool startVideo() {
    if (!sdl().complete) return false;
    sdl().setHint(SDL_HINT_NO_SIGNAL_HANDLERS, switchedOn);                  // the terminal's interrupt ends a game
    sdl().setHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, switchedOn);             // the desktop's business, not ours
    sdl().setHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, switchedOff); // the same
    sdl().setHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, switchedOn);            // the click that activates counts too
    if (sdl().initSubSystem(SDL_INIT_VIDEO) != 0) return false;
    const char* name = sdl().getCurrentVideoDriver();
    const std::string driver = name ? name : "";
    if (showsNothing(driver) && !std::getenv(driverVariable)) {
        sdl().quitSubSystem(SDL_INIT_VIDEO);
        return false;
    }
    if (driver == "x11") sdl().setHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, switchedOff);
    sdl().stopTextInput(); // an input method would swallow letters
    return true;
}

/// The virtual-key code of the keys that have neither letter nor digit; none if it is no such key.
unsigned char namedKey(SDL_Keycode code) {
    switch (code) {
    case SDLK_RETURN:
    case SDLK_KP_ENTER: return virtualKeyReturn;
    case SDLK_UP: return virtualKeyUp;
    case SDLK_DOWN: return virtualKeyDown;
    case SDLK_LEFT: return virtualKeyLeft;
    case SDLK_RIGHT: return virtualKeyRight;
    case SDLK_BACKSPACE: return virtualKeyBack;
    case SDLK_DELETE: return virtualKeyDelete;
    case SDLK_SPACE: return virtualKeySpace;
    default: return virtualKeyNone;
    }
}

/// The virtual-key code that a key of the keypad has while it writes no digit; none if it is no such key.
unsigned char keypadKey(SDL_Scancode place) {
    switch (place) {
    case SDL_SCANCODE_KP_8: return virtualKeyUp;
    case SDL_SCANCODE_KP_2: return virtualKeyDown;
    case SDL_SCANCODE_KP_4: return virtualKeyLeft;
    case SDL_SCANCODE_KP_6: return virtualKeyRight;
    case SDL_SCANCODE_KP_PERIOD: return virtualKeyDelete;
    default: return virtualKeyNone;
    }
}

/// The virtual-key code of a key. What the layout writes on a letter key decides; a key that writes no Latin letter
/// counts by its place, as the digit row of some layouts and the letters of other alphabets.
unsigned char virtualKeyOf(const SDL_Keysym& key) {
    constexpr SDL_Keycode endOfAscii = 128;
    const unsigned char named = namedKey(key.sym);
    if (named != virtualKeyNone) return named;
    if (key.sym >= SDLK_a && key.sym <= SDLK_z) return static_cast<unsigned char>('A' + (key.sym - SDLK_a));
    if (key.scancode >= SDL_SCANCODE_1 && key.scancode <= SDL_SCANCODE_9) {
        return static_cast<unsigned char>('1' + (key.scancode - SDL_SCANCODE_1));
    }
    if (key.scancode == SDL_SCANCODE_0) return '0';
    const bool letterPlace = key.scancode >= SDL_SCANCODE_A && key.scancode <= SDL_SCANCODE_Z;
    if (letterPlace && key.sym >= endOfAscii) {
        return static_cast<unsigned char>('A' + (key.scancode - SDL_SCANCODE_A));
    }
    return virtualKeyNone;
}

/// A key of the keypad went down or up. Whether it writes a digit is decided when it goes down: its release counts in
/// any case, or a key could stay held for ever.
void handleKeypad(SdlWindow& window, const SDL_KeyboardEvent& event) {
    const bool down = event.type == SDL_KEYDOWN;
    const bool writesDigits = (event.keysym.mod & KMOD_NUM) != 0;
    if (!down || !writesDigits) keyChanged(window, keypadKey(event.keysym.scancode), down);
}

void handleKey(SdlWindow& window, const SDL_KeyboardEvent& event) {
    if (keypadKey(event.keysym.scancode) != virtualKeyNone) {
        handleKeypad(window, event);
    } else {
        keyChanged(window, virtualKeyOf(event.keysym), event.type == SDL_KEYDOWN);
    }
}

void handleWindowEvent(SdlWindow& window, const SDL_WindowEvent& event) {
    switch (event.event) {
    case SDL_WINDOWEVENT_CLOSE: window.closeRequested = true; break;
    case SDL_WINDOWEVENT_SIZE_CHANGED: clientResized(window, event.data1, event.data2); break;
    case SDL_WINDOWEVENT_FOCUS_GAINED: focusGained(window); break;
    case SDL_WINDOWEVENT_FOCUS_LOST: focusLost(window); break;
    case SDL_WINDOWEVENT_EXPOSED: window.exposed = true; break;
    default: break;
    }
}

void handleButton(SdlWindow& window, const SDL_MouseButtonEvent& event) {
    MouseButton button = leftMouseButton;
    switch (event.button) {
    case SDL_BUTTON_LEFT: button = leftMouseButton; break;
    case SDL_BUTTON_RIGHT: button = rightMouseButton; break;
    case SDL_BUTTON_MIDDLE: button = middleMouseButton; break;
    default: return;
    }
    const bool down = event.state == SDL_PRESSED;
    if (down) updateMousePosition(window, event.x, event.y);
    const bool anyHeld = mouseButtonChanged(window, button, down);
    if (down || !anyHeld) sdl().captureMouse(anyHeld ? SDL_TRUE : SDL_FALSE);
}

/// The record of the window that an event names, or null if it is gone.
SdlWindow* eventWindow(Uint32 id) {
    SDL_Window* handle = sdl().getWindowFromId(id);
    return handle ? static_cast<SdlWindow*>(sdl().getWindowData(handle, recordKey)) : nullptr;
}

void handleEvent(SdlWindow& updated, const SDL_Event& event) {
    SdlWindow* window = nullptr;
    switch (event.type) {
    case SDL_QUIT: updated.closeRequested = true; break;
    case SDL_WINDOWEVENT:
        window = eventWindow(event.window.windowID);
        if (window) handleWindowEvent(*window, event.window);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        window = eventWindow(event.key.windowID);
        if (window) handleKey(*window, event.key);
        break;
    case SDL_MOUSEMOTION:
        window = eventWindow(event.motion.windowID);
        if (window) updateMousePosition(*window, event.motion.x, event.motion.y);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        window = eventWindow(event.button.windowID);
        if (window) handleButton(*window, event.button);
        break;
    default: break;
    }
}

/// Copies the back buffer to the window; false if the window can't take it now.
bool presentBackbuffer(SdlWindow& window) {
    if (!backbufferFits(window)) return false;
    SDL_Surface* surface = sdl().getWindowSurface(window.handle);
    if (!surface) return false;
    const int width = std::min(window.clientWidth, surface->w);
    const int height = std::min(window.clientHeight, surface->h);
    const int pitch = window.clientWidth * bytesPerPixel;
    return sdl().convertPixels(width, height, SDL_PIXELFORMAT_RGB888, window.backbuffer.data(), pitch,
                               surface->format->format, surface->pixels, surface->pitch) == 0 &&
           sdl().updateWindowSurface(window.handle) == 0;
}

bool openWindow(SdlWindow& window) {
    SDL_Rect screen{};
    if (sdl().getDisplayBounds(0, &screen) != 0) return false;
    const ClientSize size = heldClientSize(window.imageWidth, window.imageHeight);
    const int x = screen.x + centredPosition(screen.w, size.width);
    const int y = screen.y + centredPosition(screen.h, size.height);
    window.handle = sdl().createWindow(window.title.c_str(), x, y, size.width, size.height,
                                       SDL_WINDOW_SHOWN | SDL_WINDOW_RESIZABLE);
    if (!window.handle) return false;
    sdl().setWindowData(window.handle, recordKey, &window);
    int width = 0;
    int height = 0;
    sdl().getWindowSize(window.handle, &width, &height);
    clientResized(window, width, height);
    sdl().raiseWindow(window.handle);
    window.active = (sdl().getWindowFlags(window.handle) & SDL_WINDOW_INPUT_FOCUS) != 0;
    return true;
}

/// Gives the handle and SDL's window part back and frees the record.
struct WindowRelease {
    void operator()(SdlWindow* window) const {
        if (window->handle) sdl().destroyWindow(window->handle);
        sdl().quitSubSystem(SDL_INIT_VIDEO);
        delete window;
    }
};

} // namespace

WmWindow* wm_createWindow(const char* title, int width, int height) {
    std::unique_ptr<SdlWindow, WindowRelease> window;
    try {
        auto record = std::make_unique<SdlWindow>();
        record->title = title ? title : defaultWindowTitle;
        record->imageWidth = width;
        record->imageHeight = height;
        if (!startVideo()) return nullptr;
        window.reset(record.release());
        if (!openWindow(*window)) return nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    useWindow(window.get());
    return window.release();
}

void wm_destroyWindow(WmWindow* window) {
    if (!window) return;
    forgetWindow(window);
    WindowRelease()(platformWindow(window));
}

void wm_setWindowTitle(WmWindow* window, const char* title) {
    if (!window) return;
    window->title = title ? title : defaultWindowTitle;
    sdl().setWindowTitle(platformWindow(window)->handle, window->title.c_str());
}

void wm_setWindowSize(WmWindow* window, int width, int height) {
    if (!window) return;
    SDL_Window* handle = platformWindow(window)->handle;
    const ClientSize size = heldClientSize(width, height);
    sdl().setWindowSize(handle, size.width, size.height);
    sdl().getWindowSize(handle, &width, &height);
    clientResized(*window, width, height);
}

void wm_updateWindow(WmWindow* window) {
    if (!window) return;
    useWindow(window);
    SdlWindow& updated = *platformWindow(window);
    SDL_Event event;
    while (sdl().pollEvent(&event)) handleEvent(updated, event);
    if (updated.dirty) {
        renderIntoBackbuffer(updated);
        if (presentBackbuffer(updated)) updated.dirty = updated.exposed = false;
    } else if (updated.exposed) {
        if (presentBackbuffer(updated)) updated.exposed = false;
    }
}
