// The globals through which a script sees mouse and keyboard: a snapshot, as fresh as the last Metal.updateInput.

#include "host/index.h"

#include "host/presentation.h"

namespace {

constexpr int noPosition = -1; // of the mouse, without a window
constexpr int touchBarButtons = 4;

} // namespace

void publishInputGlobals() {
    int mouseX = noPosition;
    int mouseY = noPosition;
    bool mouse1 = false;
    bool mouse2 = false;
    bool mouse3 = false;
    if (win) {
        wm_getMousePosition(win, &mouseX, &mouseY);
        mouse1 = wm_getMouseButtonState(win, leftMouseButton);
        mouse2 = wm_getMouseButtonState(win, middleMouseButton);
        mouse3 = wm_getMouseButtonState(win, rightMouseButton);
    }
    wm_updateKeyboardState(); // without a window this releases all keys

    engine.pushVariable("OSTREL_MOUSE_1", mouse1);
    engine.pushVariable("OSTREL_MOUSE_2", mouse2);
    engine.pushVariable("OSTREL_MOUSE_3", mouse3);
    engine.pushVariable("OSTREL_MOUSE_X", mouseX);
    engine.pushVariable("OSTREL_MOUSE_Y", mouseY);
    const unsigned char* states = wm_keyStates();
    for (std::size_t key = 0; key < publishedKeyCount; ++key) {
        engine.pushVariable(std::string("OSTREL_KEY_") + publishedKeys[key].name, states[key] != 0);
    }
    for (int button = 1; button <= touchBarButtons; ++button) {
        engine.pushVariable("OSTREL_TOUCHBAR_" + std::to_string(button), wm_getTouchBarButtonState(win, button - 1));
    }
}
