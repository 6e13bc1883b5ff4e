// What the SDL window makes of each event that the system can send it: events are put into SDL's own queue, and an
// update takes them out.

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include "host/presentation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include <dlfcn.h>

namespace {

/// A function of the library that the window has loaded.
template <typename Function> Function* sdlFunction(const char* name) {
    void* library = dlopen("libSDL2-2.0.so.0", RTLD_LAZY | RTLD_NOLOAD);
    return library ? reinterpret_cast<Function*>(dlsym(library, name)) : nullptr;
}

/// A window on SDL's driver without a screen, already presented, and events for it.
class SdlEvents : public testing::Test {
protected:
    void SetUp() override {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        window = wm_createWindow("title", 100, 50);
        ASSERT_NE(window, nullptr);
        wm_updateWindow(window);
        pushEvent = sdlFunction<int SDLCALL(SDL_Event*)>("SDL_PushEvent");
        const auto fromId = sdlFunction<SDL_Window * SDLCALL(Uint32)>("SDL_GetWindowFromID");
        ASSERT_NE(pushEvent, nullptr);
        ASSERT_NE(fromId, nullptr);
        while (id < 1000 && !fromId(id)) ++id; // there is but one
        ASSERT_LT(id, 1000U);
    }
    void TearDown() override { wm_destroyWindow(window); }

    void send(SDL_Event event) {
        ASSERT_EQ(pushEvent(&event), 1);
        wm_updateWindow(window);
    }
    void sendWindowEvent(SDL_WindowEventID kind, int first = 0, int second = 0) {
        SDL_Event event{};
        event.window = {SDL_WINDOWEVENT, 0, id, static_cast<Uint8>(kind), 0, 0, 0, first, second};
        send(event);
    }
    void sendKey(SDL_Scancode place, SDL_Keycode meaning, bool down, Uint16 modifiers = KMOD_NONE) {
        SDL_Event event{};
        event.key.type = down ? SDL_KEYDOWN : SDL_KEYUP;
        event.key.windowID = id;
        event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.scancode = place;
        event.key.keysym.sym = meaning;
        event.key.keysym.mod = modifiers;
        send(event);
    }
    void sendMotion(int x, int y) {
        SDL_Event event{};
        event.motion.type = SDL_MOUSEMOTION;
        event.motion.windowID = id;
        event.motion.x = x;
        event.motion.y = y;
        send(event);
    }
    void sendButton(int button, bool down, int x, int y) {
        SDL_Event event{};
        event.button.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
        event.button.windowID = id;
        event.button.button = static_cast<Uint8>(button);
        event.button.state = down ? SDL_PRESSED : SDL_RELEASED;
        event.button.x = x;
        event.button.y = y;
        send(event);
    }

    /// The codes of the keys that are down, without the one that means no key.
    std::vector<int> keysDown() const {
        std::vector<int> codes;
        for (std::size_t code = 1; code < virtualKeyCount; ++code)
            if (window->keys[code]) codes.push_back(static_cast<int>(code));
        return codes;
    }

    WmWindow* window = nullptr;
    Uint32 id = 1;
    int(SDLCALL* pushEvent)(SDL_Event*) = nullptr;
};

} // namespace

TEST_F(SdlEvents, AQuitMessageAsksToClose) {
    EXPECT_FALSE(wm_windowShouldClose(window));
    SDL_Event event{};
    event.type = SDL_QUIT;
    send(event);
    EXPECT_TRUE(wm_windowShouldClose(window));
}

TEST_F(SdlEvents, TheCloseButtonOnlyAsks) {
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);
    EXPECT_TRUE(wm_windowShouldClose(window));
    wm_updateWindow(window);
    EXPECT_EQ(window->clientWidth, 100);
}

TEST_F(SdlEvents, EachKeyHasItsCode) {
    struct Row {
        SDL_Scancode place;
        SDL_Keycode meaning;
        std::vector<int> codes;
    };
    const std::vector<Row> rows = {
        {SDL_SCANCODE_RETURN, SDLK_RETURN, {13}},
        {SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER, {13}},
        {SDL_SCANCODE_UP, SDLK_UP, {38}},
        {SDL_SCANCODE_DOWN, SDLK_DOWN, {40}},
        {SDL_SCANCODE_LEFT, SDLK_LEFT, {37}},
        {SDL_SCANCODE_RIGHT, SDLK_RIGHT, {39}},
        {SDL_SCANCODE_BACKSPACE, SDLK_BACKSPACE, {8}},
        {SDL_SCANCODE_DELETE, SDLK_DELETE, {46}},
        {SDL_SCANCODE_SPACE, SDLK_SPACE, {32}},
        {SDL_SCANCODE_A, SDLK_a, {'A'}},
        {SDL_SCANCODE_Z, SDLK_z, {'Z'}},
        {SDL_SCANCODE_1, SDLK_1, {'1'}},
        {SDL_SCANCODE_9, SDLK_9, {'9'}},
        {SDL_SCANCODE_0, SDLK_0, {'0'}},
        {SDL_SCANCODE_Q, SDLK_a, {'A'}},         // a layout that has letters in other places
        {SDL_SCANCODE_A, 0x444, {'A'}},          // a layout of another alphabet
        {SDL_SCANCODE_1, SDLK_AMPERSAND, {'1'}}, // a layout with the digits in the upper row
        {SDL_SCANCODE_M, SDLK_COMMA, {}},        // a place of a letter that writes none
        {SDL_SCANCODE_F1, SDLK_F1, {}},
    };
    for (const Row& row : rows) {
        sendKey(row.place, row.meaning, true);
        EXPECT_EQ(keysDown(), row.codes) << "place " << row.place << ", meaning " << row.meaning;
        sendKey(row.place, row.meaning, false);
        EXPECT_EQ(keysDown(), std::vector<int>()) << "place " << row.place << ", meaning " << row.meaning;
    }
}

TEST_F(SdlEvents, TheKeypadMovesWhileItWritesNoDigits) {
    struct Row {
        SDL_Scancode place;
        SDL_Keycode meaning;
        int code;
    };
    const std::vector<Row> rows = {
        {SDL_SCANCODE_KP_8, SDLK_KP_8, 38},           {SDL_SCANCODE_KP_2, SDLK_KP_2, 40},
        {SDL_SCANCODE_KP_4, SDLK_KP_4, 37},           {SDL_SCANCODE_KP_6, SDLK_KP_6, 39},
        {SDL_SCANCODE_KP_PERIOD, SDLK_KP_PERIOD, 46},
    };
    for (const Row& row : rows) {
        sendKey(row.place, row.meaning, true);
        EXPECT_EQ(keysDown(), std::vector<int>{row.code});
        sendKey(row.place, row.meaning, false, KMOD_NUM); // switched while the key was held
        EXPECT_EQ(keysDown(), std::vector<int>());
        sendKey(row.place, row.meaning, true, KMOD_NUM);
        EXPECT_EQ(keysDown(), std::vector<int>());
    }
    sendKey(SDL_SCANCODE_KP_7, SDLK_KP_7, true);
    EXPECT_EQ(keysDown(), std::vector<int>()) << "no key that a script can read";
}

TEST_F(SdlEvents, TheFocusDecidesWhetherKeysAreHeld) {
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_GAINED);
    EXPECT_TRUE(window->active);
    sendKey(SDL_SCANCODE_A, SDLK_a, true);
    sendButton(SDL_BUTTON_LEFT, true, 5, 5);
    sendWindowEvent(SDL_WINDOWEVENT_FOCUS_LOST);
    EXPECT_FALSE(window->active);
    EXPECT_TRUE(keysDown().empty());
    EXPECT_FALSE(wm_getMouseButtonState(window, 0));
}

TEST_F(SdlEvents, MovesAndPressesPlaceTheMouseAndReleasesDoNot) {
    sendMotion(30, 20);
    EXPECT_EQ(window->mouseX, 30);
    EXPECT_EQ(window->mouseY, 20);
    sendButton(SDL_BUTTON_RIGHT, true, 40, 21);
    EXPECT_EQ(window->mouseX, 40);
    EXPECT_EQ(window->mouseY, 21);
    sendButton(SDL_BUTTON_RIGHT, false, 50, 22);
    EXPECT_EQ(window->mouseX, 40);
    EXPECT_EQ(window->mouseY, 21);
}

TEST_F(SdlEvents, TheThreeButtonsHaveTheirIndexAndFurtherOnesNone) {
    for (const auto& [button, index] : {std::pair{SDL_BUTTON_LEFT, 0}, {SDL_BUTTON_RIGHT, 1}, {SDL_BUTTON_MIDDLE, 2}}) {
        sendButton(button, true, 1, 1);
        for (int other = 0; other < 3; ++other) EXPECT_EQ(wm_getMouseButtonState(window, other), other == index);
        sendButton(button, false, 1, 1);
        EXPECT_FALSE(wm_getMouseButtonState(window, index));
    }
    sendButton(SDL_BUTTON_X1, true, 60, 30);
    for (int index = 0; index < 3; ++index) EXPECT_FALSE(wm_getMouseButtonState(window, index));
    EXPECT_EQ(window->mouseX, 1);
}

TEST_F(SdlEvents, ANewSizeIsStoredAndPresented) {
    sendWindowEvent(SDL_WINDOWEVENT_SIZE_CHANGED, 70, 60);
    EXPECT_EQ(window->clientWidth, 70);
    EXPECT_EQ(window->clientHeight, 60);
    EXPECT_TRUE(backbufferFits(*window));
    EXPECT_FALSE(window->dirty);
    sendWindowEvent(SDL_WINDOWEVENT_SIZE_CHANGED, 0, -4);
    EXPECT_EQ(window->clientWidth, 1);
    EXPECT_EQ(window->clientHeight, 1);
}

TEST_F(SdlEvents, AnUpdateWithNothingDueRendersNothingEvenWhenThePictureIsAskedForAgain) {
    window->backbuffer[0] = 0x123456;
    wm_updateWindow(window);
    EXPECT_EQ(window->backbuffer[0], 0x123456U);
    sendWindowEvent(SDL_WINDOWEVENT_EXPOSED);
    EXPECT_EQ(window->backbuffer[0], 0x123456U);
    wm_clearWindow(window, 9, 9, 9);
    wm_updateWindow(window);
    EXPECT_EQ(window->backbuffer[0] & 0xffffffU, 0x090909U);
}

TEST_F(SdlEvents, EventsOfAWindowThatIsGoneAreIgnored) {
    id = 999999;
    sendWindowEvent(SDL_WINDOWEVENT_CLOSE);
    sendKey(SDL_SCANCODE_A, SDLK_a, true);
    sendMotion(30, 20);
    sendButton(SDL_BUTTON_LEFT, true, 30, 20);
    EXPECT_FALSE(wm_windowShouldClose(window));
    EXPECT_TRUE(keysDown().empty());
    EXPECT_EQ(window->mouseX, 0);
    EXPECT_FALSE(wm_getMouseButtonState(window, 0));
}
