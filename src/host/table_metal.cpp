// The table `Metal`: the window, what it shows, and when input is read. Without a window all of it does nothing.

#include "host/image_arguments.h"
#include "host/index.h"
#include "host/registration.h"
#include "plush/registry.h"

namespace {

unsigned char colourChannel(const Arguments& arguments, std::size_t index, std::string_view name) {
    return static_cast<unsigned char>(arguments.integer(index, name));
}

Variable renderImage(const Arguments& arguments) {
    const PlushImage* image = imageHandle(arguments, 0, "image");
    if (isLiveImage(image)) wm_pushImage(win, image);
    return {};
}

Variable updateInput(const Arguments&) {
    publishInputGlobals();
    return {};
}

Variable forceUpdate(const Arguments&) {
    wm_updateWindow(win);
    return {};
}

Variable getName(const Arguments&) { return windowTitle; }

Variable getWindow(const Arguments&) {
    PlushImage* picture = wm_captureWindow(win);
    if (!picture) return {};
    registerImage(picture);
    return picture;
}

Variable clearTouchBarButtons(const Arguments&) {
    wm_clearTouchBar(win);
    return {};
}

Variable setTouchBarButton(const Arguments& arguments) {
    const int index = arguments.integer(0, "index");
    wm_setTouchBarButtonText(win, index, arguments.text(1, "text").c_str());
    return {};
}

Variable setTouchBarButtonImage(const Arguments& arguments) {
    const int index = arguments.integer(0, "index");
    const PlushImage* image = imageHandle(arguments, 1, "image");
    wm_setTouchBarButtonImage(win, index, isLiveImage(image) ? image : nullptr);
    return {};
}

Variable renameWindow(const Arguments& arguments) {
    windowTitle = arguments.text(0, "title");
    wm_setWindowTitle(win, windowTitle.c_str());
    return {};
}

Variable clearBuffer(const Arguments& arguments) {
    const unsigned char r = colourChannel(arguments, 0, "r");
    const unsigned char g = colourChannel(arguments, 1, "g");
    const unsigned char b = colourChannel(arguments, 2, "b");
    wm_clearWindow(win, r, g, b);
    return {};
}

Variable checkClose(const Arguments&) { return wm_windowShouldClose(win); }

Variable killWindow(const Arguments&) {
    wm_destroyWindow(win);
    win = nullptr;
    return {};
}

Variable spawnWindow(const Arguments& arguments) {
    const int width = arguments.integer(0, "width");
    const int height = arguments.integer(1, "height");
    windowTitle = arguments.text(2, "title");
    if (win) {
        wm_setWindowTitle(win, windowTitle.c_str());
        wm_setWindowSize(win, width, height);
    } else {
        win = wm_createWindow(windowTitle.c_str(), width, height);
    }
    publishInputGlobals();
    return {};
}

} // namespace

void registerMetalTable() {
    constexpr ModuleEntry entries[] = {
        {"renderImage", renderImage},
        {"updateInput", updateInput},
        {"forceUpdate", forceUpdate},
        {"getTitle", getName},
        {"getWindow", getWindow},
        {"clearTouchBar", clearTouchBarButtons},
        {"setTouchBarButton", setTouchBarButton},
        {"setTouchBarButtonImage", setTouchBarButtonImage},
        {"setTitle", renameWindow},
        {"clearBuffer", clearBuffer},
        {"checkClose", checkClose},
        {"killWindow", killWindow},
        {"spawnWindow", spawnWindow},
    };
    engine.pushVariable("Metal", makeModule("Metal", entries));
}
