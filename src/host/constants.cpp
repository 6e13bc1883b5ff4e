// The constants that the host gives to scripts.
//
// They are ordinary globals: a game may overwrite any of them, and several are meant to be overwritten. Their order
// is the order of their global slots. Some names are published twice; the later value stands. The list is the same on
// every platform, only the texts that the machine answers differ.

#include "host/index.h"
#include "host/registration.h"

#include <array>
#include <initializer_list>
#include <string>
#include <utility>

namespace {

constexpr unsigned queryBufferSize = 512; // bytes

struct Constant {
    const char* name;
    Variable value;
};

void publish(std::initializer_list<Constant> constants) {
    for (const Constant& constant : constants) engine.pushVariable(constant.name, constant.value);
}

/// `prefix` + "1" to `prefix` + `last`, all with one value.
void publishNumbered(const std::string& prefix, int first, int last, const Variable& value) {
    for (int number = first; number <= last; ++number) engine.pushVariable(prefix + std::to_string(number), value);
}

/// `prefix` + number for each number of a range, the first with the value `value` and each further one with one more.
void publishCounted(const std::string& prefix, int first, int last, int value) {
    for (int number = first; number <= last; ++number) {
        engine.pushVariable(prefix + std::to_string(number), value + number - first);
    }
}

void publishPlatform() {
    publish({
        {"METAL_ENABLED", wm_has_metal_window() != 0},
        {"QUARTZ_ENABLED", wm_has_quartz_window() != 0},
        {"MIXER_ENABLED", wm_has_mixer() != 0},
        {"OSTRELSCRIPT_ENABLED", true},
        {"MIXER_SKIP_SLIDE", false},
        {"OSTRELBOOT_ENABLED", false},
        {"OSTRELBOOT_ARCH", ""},
        {"OSTRELBOOT_HARDWARE_THREADS", 1},
        {"LUA_VERSION_MAJOR", wm_lua_version_major()},
        {"LUA_VERSION_MINOR", wm_lua_version_minor()},
        {"LUA_VERSION_PATCH", wm_lua_version_patch()},
        {"LUA_VERSION", wm_lua_version_number()},
    });
}

void publishGame() {
    publish({
        {"OSTREL_SCRIPT", "visual-novel.os"},
        {"OSTREL_GAME_NAME", "Velmaris Testing"},
        // What Ostrel.setVar makes of a value.
        {"OSTREL_INT", 0},
        {"OSTREL_FLOAT", 1},
        {"OSTREL_BOOL", 2},
        {"OSTREL_STRING", 3},
        {"OSTREL_FUNCTION", 4},
        {"OSTREL_POINTER", 5},
        {"OSTREL_SCREEN_Y", 544},
        {"OSTREL_SCREEN_X", 960},
        {"OSTREL_SCREEN_CULL_FAR", 100},
        {"OSTREL_SCREEN_CULL_NEAR", 0},
        {"OSTREL_SCREEN_FOV", 90},
        {"debugger", false},
        {"debuggerdeep", false},
        {"textframebuffer", false},
        {"checksumBypass", false},
    });
}

/// The machine's own text, over the placeholder, where the machine has one to give.
void publishQuery(const char* name, int (*query)(char* buffer, unsigned size)) {
    std::array<char, queryBufferSize> buffer{};
    if (query(buffer.data(), queryBufferSize) != 0 && buffer[0] != '\0') engine.pushVariable(name, buffer.data());
}

void publishSystem() {
    publish({
        {"OSTREL_PROCESSOR_NAME", 0},
        {"OSTREL_PROCESSOR", 0},
        {"OSTREL_OS_PLATFORM", 0},
        {"OSTREL_OS_VERSION", 0},
        {"OSTREL_USER_NAME", ""},
        {"OSTREL_TEMP_DIRECTORY", "/tmp/"},
        {"OSTREL_WINDOWS_ENABLED", true},
    });
    publishQuery("OSTREL_OS_PLATFORM", wm_platform_name);
    publishQuery("OSTREL_OS_VERSION", wm_version_string);
    publishQuery("OSTREL_PROCESSOR_NAME", wm_processor_name);
    publishQuery("OSTREL_USER_NAME", wm_user_name);
    publishQuery("OSTREL_TEMP_DIRECTORY", wm_temp_directory);
    publish({
        {"OSTREL_ENGINE_VERSION", "v1.1"},
        {"OSTREL_ENGINE_POSTFIX", "Prerelease"},
        {"OSTREL_FRAMERATE", 41},
        {"OSTREL_FEMALE", false},
        {"OSTREL_AUDIO_OFFSET", 0},
        {"OSTREL_AUDIO_PLAYING", false},
        {"OSTREL_MOUSE_NIL", 0},
        {"OSTREL_MOUSE_LEFT", 1},
        {"OSTREL_MOUSE_MIDDLE", 2},
        {"OSTREL_MOUSE_RIGHT", 3},
    });
}

void publishRenderQueue() {
    constexpr int renderSlots = 13;
    publishNumbered("OSTREL_TMP", 0, 9, 0);
    publish({{"OSTREL_RENDER_TMP", -1}, {"OSTREL_RENDER_TMP2", -1}});
    publishCounted("OSTREL_RENDER_", 1, renderSlots, 1);
    publishCounted("OSTREL_RENDER_S", 1, renderSlots, 1);
    publish({
        {"OSTREL_RENDER_SKIP_PARALLAX", false},
        {"OSTREL_WEATHER_LAYER", -1},
        {"OSTREL_WEATHER_CLEAR", 0},
        {"OSTREL_WEATHER_LEAF", 1},
    });
    publishNumbered("OSTREL_WEATHER_LAYER_IMAGE", 1, 5, 0);
    publishNumbered("OSTREL_WEATHER_LAYER_PATH", 1, 5, 0);
    publish({
        // Modes of the image modifier.
        {"OSTREL_GREYSCALE", 1},
        {"OSTREL_INACTIVE", 2},
        {"OSTREL_COLOUR_INVERT", 4},
        {"OSTREL_COLOUR_FILL", 5},
        {"OSTREL_AETHER_INVERT", 3},
        {"OSTREL_AETHER_CLEANUP", 6},
        {"OSTREL_AETHER_FILL", 7},
        {"OSTREL_AETHER_SET", 8},
    });
    publishNumbered("OSTREL_INACTIVE_", 1, 4, false);
}

void publishQueueEntries() {
    publish({
        {"OSTREL_LAYER_FRAMEBUFFER", 1},
        {"OSTREL_LAYER_BACKGROUND", 2},
        {"OSTREL_LAYER_CHARACTER", 3},
        {"OSTREL_LAYER_FOREGROUND", 4},
        {"OSTREL_LAYER_SUPERGROUND", 5},
        {"OSTREL_SKIP", 10},
        {"OSTREL_IMAGE", 11},
        {"OSTREL_TEXT", 12},
        {"OSTREL_TEXT_SLIDE_RIGHT", 13},
        {"OSTREL_TEXT_SLIDE_LEFT", 14},
    });
    publishCounted("OSTREL_CHARACTER", 1, 4, 15);
    publish({
        {"OSTREL_PARALLAX", 19},
        {"OSTREL_PARALLAX_UIFG", false},
        {"OSTREL_BACKGROUND", 20},
        {"OSTREL_INTERFACE", 21},
        {"OSTREL_MESSAGE", 22},
        {"OSTREL_DATE", 23},
        {"OSTREL_TIME", 24},
        {"OSTREL_NAME", 25},
        {"OSTREL_TITLE", 26},
        {"OSTREL_LOCATION", 27},
        {"OSTREL_REGION", 28},
        {"OSTREL_WEATHER", 29},
    });
    publishCounted("OSTREL_OPTION_", 1, 3, 31);
    publish({
        {"OSTREL_MENU_MAIN", 50},
        {"OSTREL_MENU_PAUSE", 51},
        {"OSTREL_MENU_SAVE", 52},
        {"OSTREL_MENU_OPTION", 53},
        {"OSTREL_GAME_VISUAL_NOVEL", 54},
        {"OSTREL_GAME_TARGET", 54}, // the visual novel is the target
        {"OSTREL_CREDIT", 55},
        {"OSTREL_GAME_NEW", 56},
        {"OSTREL_GAME_LOAD", 57},
        {"OSTREL_RENDER_EXIT", 58},
    });
}

/// Misspellings of the two truth values, which games are known to hold.
void publishMisspellings() {
    publish({
        {"fasle", false},
        {"flase", false},
        {"flse", false},
        {"tre", true},
        {"tue", true},
        {"ture", true},
    });
}

} // namespace

void registerConstants() {
    publishPlatform();
    publishGame();
    publishSystem();
    publishRenderQueue();
    publishQueueEntries();
    publishMisspellings();
}
