// The process from its entry to its exit status.
//
// There is no main loop here. The startup library runs the game's script, the script owns every frame, and when it
// returns the process ends. Of the command line only the program's own name is looked at, and only where the platform
// can't tell the executable's directory.

#include "host/entry.h"
#include "host/index.h"
#include "script/native_stack.h"

#include <array>
#include <cstdio>
#include <exception>

namespace {

constexpr const char* executableName = "Velmaris.exe"; // whatever the file is called: only its directory is used
constexpr std::size_t directoryBufferSize = 4096;

/// The path of the executable, normalised, as the platform or else the first argument tells it; may be empty.
std::string findExecutable(int argc, char** argv) {
    std::array<char, directoryBufferSize> directory{};
    if (wm_executable_directory(directory.data(), static_cast<unsigned>(directory.size())) != 0) {
        return engine.normalisePath(std::string(directory.data()) + executableName);
    }
    return argv && argc >= 1 && argv[0] ? engine.normalisePath(argv[0]) : std::string();
}

/// Takes one step of the start. A failure is reported, and the steps that would follow are not taken.
template <typename Step> bool guarded(const Step& step) {
    try {
        step();
        return true;
    } catch (const std::exception& failure) {
        std::fflush(stdout); // what the script printed comes first
        std::fprintf(stderr, "Velmaris startup error: %s\n", failure.what());
        return false;
    }
}

} // namespace

int main(int argc, char** argv) {
    setNativeStackSize(prepareProcess());
    path = runtimeDirectory(findExecutable(argc, argv));

    std::string sourcePath;
    const bool succeeded = guarded([] { registerFunctions(); }) &&
                           guarded([&sourcePath] { sourcePath = startupSourcePath(); }) &&
                           guarded([&sourcePath] { runEmbeddedStartupScript(sourcePath); });

    if (win) {
        wm_destroyWindow(win);
        win = nullptr;
    }
    return succeeded ? 0 : 1;
}
