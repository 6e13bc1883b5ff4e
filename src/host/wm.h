#pragma once

// The platform boundary: everything that the engine asks of the machine it runs on.
//
// One window, one software frame, polled input, five texts about the system, a pipe to a child process. The engine
// above sees nothing but these functions, and each platform serves all of them: `windows_window.cpp` and
// `windows_process.cpp` on Windows, `sdl_window.cpp` and `posix_process.cpp` elsewhere; CMake chooses. What needs no
// platform, above all how a frame is laid into a window and what a mouse position means, is in `presentation.h`.
//
// The window owns no thread and no timer. A script pushes a frame, asks for an update, and only then are messages
// taken from the system and pixels given to it. Every function accepts a null window and then does nothing, so that
// a game that could not open a window runs on blindly.

#include "plush/image.h"
#include "plush/png_entry.h"

#include <cstddef>
#include <cstdio>

/// The one platform window. Opaque above the boundary; `presentation.h` holds the record.
struct WmWindow;

// What kind of platform this is.
int wm_has_window();
int wm_has_metal_window();
int wm_has_mixer();
int wm_has_quartz_window();

/// Makes and shows a window whose client area is `width` by `height`, centred on the primary screen. A null title
/// means "OstrelMoon". Null on any failure, also when the machine has no display.
WmWindow* wm_createWindow(const char* title, int width, int height);

/// Asks the window to close, as its close button does: `wm_windowShouldClose` becomes true and nothing else happens.
void wm_closeWindow(WmWindow* window);

/// Closes the window and frees everything that belongs to it.
void wm_destroyWindow(WmWindow* window);

/// The title as last set; valid until it is set again. An empty text without a window.
const char* wm_getWindowTitle(WmWindow* window);
void wm_setWindowTitle(WmWindow* window, const char* title);

/// The client area in pixels. Without a window both are 0.
void wm_getWindowSize(WmWindow* window, int* width, int* height);
void wm_setWindowSize(WmWindow* window, int width, int height);

/// Takes a copy of `image` as the frame that the next update shows.
void wm_pushImage(WmWindow* window, const PlushImage* image);

/// Takes all waiting messages from the system and presents the frame if anything changed since the last time. The
/// only place where messages are taken: a window that is never updated looks dead to its user.
void wm_updateWindow(WmWindow* window);

/// Whether the user, or `wm_closeWindow`, asked the window to close.
bool wm_windowShouldClose(WmWindow* window);

/// Sets the colour of the bars around the frame, which also shows through where the frame is transparent.
void wm_clearWindow(WmWindow* window, unsigned char red, unsigned char green, unsigned char blue);

/// The client area as presented, as a new image that the caller owns (record and pixels); null if there is none.
PlushImage* wm_captureWindow(WmWindow* window);

/// The mouse in pixels of the pushed image, always inside it.
void wm_getMousePosition(WmWindow* window, int* x, int* y);

/// Whether a mouse button is down: 0 left, 1 right, 2 middle. Any other index reads false.
bool wm_getMouseButtonState(WmWindow* window, int index);

/// How many keys a script can read. Their names and order are `publishedKeys` in `presentation.h`.
constexpr std::size_t publishedKeyCount = 44;

/// Fills the key state table from the window last used; all keys read up while it doesn't have the focus.
void wm_updateKeyboardState();

/// The key state table: `publishedKeyCount` bytes, 1 for a key that is down, in the order of `publishedKeys`.
const unsigned char* wm_keyStates();

// Platforms with a touch bar or keys on the screen exist; none of ours does. These do nothing and read false.
void wm_setTouchBarButtonText(WmWindow* window, int index, const char* text);
void wm_setTouchBarButtonImage(WmWindow* window, int index, const PlushImage* image);
bool wm_getTouchBarButtonState(WmWindow* window, int index);
void wm_clearTouchBar(WmWindow* window);
void wm_sailfish_register_key(int keyCode, const char* displayText, int x, int y);
bool wm_sailfish_left_orientation();

/// Puts the calling thread to sleep. A value below 1 returns at once.
void wm_sleep_ms(int milliseconds);

// The version that the engine's Lua dialect reports.
int wm_lua_version_major();
int wm_lua_version_minor();
int wm_lua_version_patch();
float wm_lua_version_number();

// Texts about the system. Each writes a zero-terminated text of at most `size` bytes, trimmed of white space at both
// ends, and returns nonzero. A text that does not fit gives an empty buffer and 0; a null or empty buffer gives 0.
int wm_user_name(char* buffer, unsigned size);
int wm_platform_name(char* buffer, unsigned size);
int wm_version_string(char* buffer, unsigned size);
int wm_processor_name(char* buffer, unsigned size);
int wm_temp_directory(char* buffer, unsigned size); // with a trailing slash

/// The directory of the running executable, with its trailing separator. Returns 1, or 0 if it can't be told or
/// doesn't fit.
int wm_executable_directory(char* buffer, unsigned size);

/// Starts a shell command with a pipe to it. A mode that holds "w" writes to its standard input, any other (also
/// null) reads its standard output; the other of the two is the null device. The stream is binary. Null on failure.
std::FILE* wm_windows_popen(const char* command, const char* mode);

/// Closes such a stream, waits for the command and returns its exit code; -1 for a null or unknown stream.
int wm_windows_pclose(std::FILE* stream);
