// How the startup library names a processor that the shell describes. The library runs in an engine without a host: a
// few script functions stand in for what it calls, and the settings file answers in the shell's place.

#include "script/ostrel_script.h"
#include "startup/startup_image.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// What the library finds when it begins. The only file that can be opened is the settings file.
constexpr const char* host = R"(
OSTRELBOOT_ENABLED = false
OSTREL_WINDOWS_ENABLED = false
MIXER_ENABLED = false
OSTREL_SCREEN_X = 1
OSTREL_SCREEN_Y = 1
OSTREL_FRAMERATE = 41
OSTREL_SCRIPT = "game.os"
Ostrel = {}
Plush = {}
function Ostrel["getPath"]()
    return "./"
end
function Plush["createImage"](width, height, red, green, blue, alpha)
    return "image"
end
function Plush["threads"](count)
    return not
end
settings = {}
function settings["read"](handle, what)
    return "function Ostrel[\"capture\"](cmd)\nreturn answers[cmd] or \"\"\nend"
end
function settings["close"](handle)
    return not
end
function io["open"](path, mode)
    if path == "./../Resources/volatile/save-1.plush"
        return settings
    end
    return not
end
function runFile(path)
    return not
end
)";

/// The name that the library settles on, where the shell answers with these entries of a table.
std::string nameAfter(const std::string& answers) {
    OstrelScript engine;
    engine.runScript(host);
    engine.runScript("answers = {" + answers + "}");
    const auto image = startupImage();
    engine.runBytecode(engine.deserialiseBytecode({image.begin(), image.end()}, "lua.os"));
    return engine.pullVariable("OSTREL_PROCESSOR_NAME").toString();
}

std::string nameOfModel(const std::string& model) {
    return nameAfter(R"("uname -s" = "Linux", "lscpu | grep 'Vendor ID'" = "Vendor ID: Apple", )"
                     R"("lscpu | grep 'Model name'" = "Model name: )" +
                     model + "\"");
}

} // namespace

TEST(ProcessorName, EveryKnownModelIsFoundInItsDescription) {
    for (const char* generation : {"M1", "M2", "M3", "M4"})
        for (const char* size : {"", " Pro", " Max", " Ultra"}) {
            const std::string model = std::string(generation) + size;
            EXPECT_EQ(nameOfModel("core of the " + model + " (12)"), "Apple " + model);
        }
    for (const char* model : {"M5", "M5 Pro", "M5 Max"})
        EXPECT_EQ(nameOfModel(std::string("core of the ") + model + ", r18"), std::string("Apple ") + model);
    EXPECT_EQ(nameOfModel("M5 Ultra"), "Apple M5");
    EXPECT_EQ(nameOfModel("t8027, 12, r18"), "Apple A12Z Bionic");
    EXPECT_EQ(nameOfModel("t8140, 18"), "Apple A18 Pro");
    EXPECT_EQ(nameOfModel("Icestorm"), "Apple processor");
}

TEST(ProcessorName, TheFirstModelOfTheListThatMatchesIsTaken) {
    EXPECT_EQ(nameOfModel("M5 Max, M1"), "Apple M1");
    EXPECT_EQ(nameOfModel("M2 Max, M2 Ultra"), "Apple M2 Ultra");
    EXPECT_EQ(nameOfModel("M3 Pro, M3 Max"), "Apple M3 Max");
    EXPECT_EQ(nameOfModel("M4, M4 Pro"), "Apple M4 Pro");
    EXPECT_EQ(nameOfModel("12, M5"), "Apple M5");
}

TEST(ProcessorName, AnotherMakersProcessorKeepsTheNameItHas) {
    EXPECT_EQ(nameAfter(R"("sysctl -n machdep.cpu.brand_string" = "Some core", "uname -s" = "Linux", )"
                        R"("lscpu | grep 'Vendor ID'" = "Vendor ID: Other", "lscpu | grep 'Model name'" = "M1")"),
              "Some core");
    EXPECT_EQ(nameAfter(R"("sysctl -n machdep.cpu.brand_string" = "Some core", "uname -s" = "Darwin", )"
                        R"("lscpu | grep 'Vendor ID'" = "Vendor ID: Apple", "lscpu | grep 'Model name'" = "M1")"),
              "Some core");
}

TEST(ProcessorName, AMachineWithoutANameAsksItsProfiler) {
    const std::string silent = R"("sysctl -n machdep.cpu.brand_string" = "machdep: class is not implemented", )";
    const std::string question = R"("system_profiler SPHardwareDataType | grep \"Processor Name\"" = )";
    EXPECT_EQ(nameAfter(silent + question + R"("PowerPC G3 2.2")"), "PowerPC G3");
    EXPECT_EQ(nameAfter(silent + question + R"("PowerMac G4")"), "PowerPC G4");
    EXPECT_EQ(nameAfter(silent + question + R"("Dual G5")"), "PowerPC G5");
    EXPECT_EQ(nameAfter(silent + question + R"("603e")"), "machdep: class is not implemented");
}
