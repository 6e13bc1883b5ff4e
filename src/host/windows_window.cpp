// The window on Windows: plain Win32 and GDI, no rendering interface.
//
// A window is a device context that takes finished pixels: the frame is scaled and blended by the presentation code
// into a 32-bit bitmap in memory, and `SetDIBitsToDevice` copies it to the client area one to one. That
// costs a copy a frame and asks nothing of the graphics driver. Messages are dispatched inside `updateWindow` alone;
// while the user drags an edge, Windows loops inside that call and the paint message keeps the picture alive.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#include <windowsx.h>

#include "host/presentation.h"

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

/// A window with its handles. The base is what the presentation code knows of it.
struct WindowsWindow : WmWindow {
    HWND handle = nullptr;
    HDC deviceContext = nullptr;
    BITMAPINFO bitmap{};                        // the form of `backbuffer` for the present call
    std::optional<ClientSize> sizeOnceRestored; // of a window that was resized while it was minimised
};

namespace {

constexpr const wchar_t* windowClassName = L"VelmarisOstrelWindow";
constexpr DWORD overlappedStyle = 0x00CF0000; // caption, system menu, sizing border, minimise and maximise boxes
constexpr LRESULT handled = 0;
constexpr LRESULT backgroundErased = 1;

WindowsWindow* platformWindow(WmWindow* window) { return static_cast<WindowsWindow*>(window); }

std::wstring wideText(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0'); // never more units than bytes
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(std::max(units, 0)));
    return wide;
}

/// Without this, Windows would stretch the window's picture on a screen of many dots per inch.
void declareDpiAware() {
    const HMODULE library = GetModuleHandleW(L"user32.dll");
    if (!library) return;
    using SetAware = BOOL(WINAPI*)();
    const auto setAware =
        reinterpret_cast<SetAware>(reinterpret_cast<void*>(GetProcAddress(library, "SetProcessDPIAware")));
    if (setAware) setAware();
}

void fillBitmapHeader(WindowsWindow& window) {
    BITMAPINFOHEADER& header = window.bitmap.bmiHeader;
    header = {};
    header.biSize = sizeof header;
    header.biWidth = window.clientWidth;
    header.biHeight = -window.clientHeight; // rows from the top
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
}

void presentBackbuffer(WindowsWindow& window, HDC context) {
    if (!backbufferFits(window)) return;
    fillBitmapHeader(window);
    const auto width = static_cast<DWORD>(window.clientWidth);
    const auto height = static_cast<DWORD>(window.clientHeight);
    SetDIBitsToDevice(context, 0, 0, width, height, 0, 0, 0, height, window.backbuffer.data(), &window.bitmap,
                      DIB_RGB_COLORS);
}

void paint(WindowsWindow& window) {
    if (window.dirty) renderIntoBackbuffer(window);
    PAINTSTRUCT area;
    const HDC context = BeginPaint(window.handle, &area);
    if (!context) return;
    presentBackbuffer(window, context);
    EndPaint(window.handle, &area);
}

void buttonMessage(WindowsWindow& window, MouseButton button, bool down, LPARAM position) {
    if (down) updateMousePosition(window, GET_X_LPARAM(position), GET_Y_LPARAM(position));
    const bool anyHeld = mouseButtonChanged(window, button, down);
    if (down) {
        SetCapture(window.handle);
    } else if (!anyHeld) {
        ReleaseCapture();
    }
}

LRESULT handleMessage(WindowsWindow& window, UINT message, WPARAM first, LPARAM second) {
    switch (message) {
    case WM_CLOSE: window.closeRequested = true; return handled;
    case WM_SIZE:
        if (first != SIZE_MINIMIZED) clientResized(window, LOWORD(second), HIWORD(second));
        return handled;
    case WM_SETFOCUS: focusGained(window); return handled;
    case WM_KILLFOCUS: focusLost(window); return handled;
    case WM_PAINT: paint(window); return handled;
    case WM_ERASEBKGND: return backgroundErased;
    case WM_KEYDOWN: keyChanged(window, first, true); return handled;
    case WM_KEYUP: keyChanged(window, first, false); return handled;
    case WM_SYSKEYDOWN: keyChanged(window, first, true); break; // Alt+F4 and the like stay the system's
    case WM_SYSKEYUP: keyChanged(window, first, false); break;
    case WM_MOUSEMOVE: updateMousePosition(window, GET_X_LPARAM(second), GET_Y_LPARAM(second)); return handled;
    case WM_LBUTTONDOWN: buttonMessage(window, leftMouseButton, true, second); return handled;
    case WM_LBUTTONUP: buttonMessage(window, leftMouseButton, false, second); return handled;
    case WM_RBUTTONDOWN: buttonMessage(window, rightMouseButton, true, second); return handled;
    case WM_RBUTTONUP: buttonMessage(window, rightMouseButton, false, second); return handled;
    case WM_MBUTTONDOWN: buttonMessage(window, middleMouseButton, true, second); return handled;
    case WM_MBUTTONUP: buttonMessage(window, middleMouseButton, false, second); return handled;
    default: break;
    }
    return DefWindowProcW(window.handle, message, first, second);
}

/// How large a window is whose client area has this size.
SIZE outerSize(const ClientSize& client) {
    RECT outer{0, 0, client.width, client.height};
    AdjustWindowRect(&outer, overlappedStyle, FALSE);
    return {outer.right - outer.left, outer.bottom - outer.top};
}

LRESULT CALLBACK windowProcedure(HWND handle, UINT message, WPARAM first, LPARAM second) {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<WindowsWindow*>(reinterpret_cast<const CREATESTRUCTW*>(second)->lpCreateParams);
        created->handle = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
        return DefWindowProcW(handle, message, first, second);
    }
    if (message == WM_GETMINMAXINFO) { // asked before there is a record
        // Windows would keep room for the title's buttons; a game gets the size that it asks for.
        const SIZE smallest = outerSize({1, 1});
        reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {smallest.cx, smallest.cy};
        return handled;
    }
    auto* window = reinterpret_cast<WindowsWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (!window) return DefWindowProcW(handle, message, first, second);
    try {
        return handleMessage(*window, message, first, second);
    } catch (const std::bad_alloc&) {
        // No exception may pass through the system's frames. The next update allocates again and can report it;
        // until then nothing is asked to be painted, or the paint message would come for ever.
        window->dirty = true;
        ValidateRect(handle, nullptr);
        return handled;
    }
}

/// Once a process; a class that exists already, from an earlier try, is as good.
bool registerWindowClass() {
    static bool registered = false;
    if (registered) return true;
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = windowProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    description.lpszClassName = windowClassName;
    registered = RegisterClassExW(&description) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
    return registered;
}

void resizeNow(WindowsWindow& window, const ClientSize& client) {
    const SIZE outer = outerSize(client);
    SetWindowPos(window.handle, nullptr, 0, 0, outer.cx, outer.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool openWindow(WindowsWindow& window) {
    const SIZE outer = outerSize(heldClientSize(window.imageWidth, window.imageHeight));
    const int x = centredPosition(GetSystemMetrics(SM_CXSCREEN), outer.cx);
    const int y = centredPosition(GetSystemMetrics(SM_CYSCREEN), outer.cy);
    // The handle is stored by the window's own first message, since others arrive before this call returns.
    if (!CreateWindowExW(0, windowClassName, wideText(window.title).c_str(), overlappedStyle, x, y, outer.cx, outer.cy,
                         nullptr, nullptr, GetModuleHandleW(nullptr), &window)) {
        return false;
    }
    ShowWindow(window.handle, SW_SHOW);
    window.deviceContext = GetDC(window.handle);
    if (!window.deviceContext) return false;
    RECT client{};
    if (!GetClientRect(window.handle, &client)) return false;
    clientResized(window, client.right, client.bottom);
    SetForegroundWindow(window.handle);
    window.active = GetForegroundWindow() == window.handle;
    return true;
}

/// Gives the handles back and frees the record.
struct WindowRelease {
    void operator()(WindowsWindow* window) const {
        if (window->deviceContext) ReleaseDC(window->handle, window->deviceContext);
        if (window->handle) {
            SetWindowLongPtrW(window->handle, GWLP_USERDATA, 0); // the messages of its end find no record
            DestroyWindow(window->handle);
        }
        delete window;
    }
};

} // namespace

WmWindow* wm_createWindow(const char* title, int width, int height) {
    declareDpiAware();
    if (!registerWindowClass()) return nullptr;
    std::unique_ptr<WindowsWindow, WindowRelease> window;
    try {
        window.reset(new WindowsWindow);
        window->title = title ? title : defaultWindowTitle;
        window->imageWidth = width;
        window->imageHeight = height;
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
    SetWindowTextW(platformWindow(window)->handle, wideText(window->title).c_str());
}

void wm_setWindowSize(WmWindow* window, int width, int height) {
    if (!window) return;
    WindowsWindow& resized = *platformWindow(window);
    const ClientSize client = heldClientSize(width, height);
    if (IsIconic(resized.handle)) {
        resized.sizeOnceRestored = client;
        clientResized(resized, client.width, client.height); // no message tells of it
    } else {
        resizeNow(resized, client);
    }
}

void wm_updateWindow(WmWindow* window) {
    if (!window) return;
    useWindow(window);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            window->closeRequested = true;
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    WindowsWindow& presented = *platformWindow(window);
    if (presented.sizeOnceRestored && !IsIconic(presented.handle)) {
        resizeNow(presented, *std::exchange(presented.sizeOnceRestored, std::nullopt));
    }
    if (!presented.dirty || !presented.handle || presented.clientWidth < 1 || presented.clientHeight < 1) return;
    renderIntoBackbuffer(presented);
    presentBackbuffer(presented, presented.deviceContext);
    ValidateRect(presented.handle, nullptr);
    presented.dirty = false;
}
