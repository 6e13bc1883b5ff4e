// The keys of native tables whose feature this version of the engine does not have.
//
// A script finds all keys of all tables, so that it can be loaded and played as far as it goes; calling one of these
// says plainly what is missing, and `pcall` catches that like any other failure. A key that has an entry already is
// left alone, so a feature that arrives takes its key by being registered.

#include "host/binding.h"
#include "host/index.h"
#include "host/registration.h"

#include <span>
#include <vector>

namespace {

constexpr const char* dialectKeys[] = {"runScript",   "runFile",         "compileBytecode", "writeBytecode",
                                       "runBytecode", "runBytecodeFile", "getVar",          "setVar"};
constexpr const char* audioKeys[] = {"open", "play", "pause", "free",  "clear", "save",
                                     "form", "add",  "trim",  "pitch", "speed", "findFrequency"};
constexpr const char* aiKeys[] = {"defaultdict",  "generate",  "generateAsync", "checkJob",
                                  "generateText", "saveModel", "loadModel"};
constexpr const char* fontKeys[] = {"renderText", "resizeFont", "killFont", "loadFont"};
constexpr const char* jadeKeys[] = {"visible", "height", "centre", "contains"};
constexpr const char* plushKeys[] = {
    "setSize",
    "project",
    "setQuads",
    "raycast",
    "projection",
    "setLightLevel",
    "spawnLight",
    "clearLights",
    "setPlayerHeight",
    "getPlayerHeight",
    "setPlayerPosition",
    "getPlayerPosition",
    "setPlayerRotation",
    "getPlayerRotation",
    "setRenderDistance",
    "getRenderDistance",
    "setTilt",
    "getTilt",
    "setMap",
    "movePlayer",
    "fog",
    "setFov",
    "getFov",
    "setAccuracy",
    "getAccuracy",
    "sortVertex",
    "dontMovePlayer",
    "modifyImage",
    "shader",
    "compileShader",
    "killShader",
    "shaderSource",
    "shaderUniforms",
    "setReflection",
    "setRaytrace",
};

Variable failAsUnavailable(const Arguments& arguments) { arguments.fail("not available in this version"); }

/// Adds those of the keys that the table under this name lacks, and the table itself if there is none.
void complete(const char* tableName, std::span<const char* const> keys) {
    const Variable known = engine.pullVariable(tableName);
    std::vector<ModuleEntry> missing;
    for (const char* key : keys) {
        if (!known.isTable() || !known.asTable()->contains(key)) missing.push_back({key, failAsUnavailable});
    }
    extendModule(tableName, missing);
}

} // namespace

void registerUnavailableTables() {
    complete("Ruby", dialectKeys);
    complete("Lua", dialectKeys);
    complete("Audio", audioKeys);
    complete("AI", aiKeys);
    complete("Font", fontKeys);
    complete("Jade", jadeKeys);
}

void registerUnavailablePlushEntries() { complete("Plush", plushKeys); }
