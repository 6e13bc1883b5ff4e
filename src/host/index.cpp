// The host's global objects, and the steps of its start that `main` takes in order.

#include "host/index.h"

#include "host/registration.h"
#include "startup/startup_image.h"

#include <memory>
#include <span>

OstrelScript engine;
std::string path = " ";
std::vector<ButtonRectangle> buttons;
std::chrono::system_clock::time_point wtime = std::chrono::system_clock::now();
std::chrono::system_clock::time_point gtime = wtime;
std::string windowTitle;
WmWindow* win = nullptr;

void registerFunctions() {
    engine.setProcessPipes({.open = wm_windows_popen, .close = wm_windows_pclose});
    if (wm_has_window() != 0) registerMetalTable();
    registerSailfishTable();
    registerOstrelTable();
    registerUnavailableTables();
    registerPlushTable();
    registerPlushDrawing();
    registerPlushFilters();
    registerPlushFiles();
    registerUnavailablePlushEntries();
    registerGlobalHelpers();
    registerConstants();
    publishInputGlobals();
}

std::string executablePath(const char* directory, int argc, const char* const* argv) {
    constexpr const char* name = "Velmaris.exe"; // whatever the file is called: only its directory is used
    if (directory) return engine.normalisePath(std::string(directory) + name);
    return argv && argc >= 1 && argv[0] ? engine.normalisePath(argv[0]) : std::string();
}

std::string runtimeDirectory(const std::string& executablePath) {
    const std::size_t separator = executablePath.find_last_of("/\\");
    return separator == std::string::npos ? "./" : executablePath.substr(0, separator + 1);
}

std::string startupSourcePath() { return engine.normalisePath(path + "../Resources/lua.os"); }

std::string sourceDirectoryForPath(const std::string& filePath) {
    const std::size_t separator = filePath.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : filePath.substr(0, separator);
}

void runEmbeddedStartupScript(const std::string& sourcePath) {
    const std::span<const unsigned char> image = startupImage();
    const std::vector<unsigned char> bytes(image.begin(), image.end());
    const auto program = std::make_shared<BytecodeProgram>(engine.deserialiseBytecode(bytes, sourcePath));
    retargetBytecodeSource(*program, sourcePath);
    engine.runBytecodeProgram(program);
}
