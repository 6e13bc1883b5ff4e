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

constexpr std::size_t directoryBufferSize = 4096;

/// The directory in which the executable lies, as far as anybody can tell.
std::string findRuntimeDirectory(int argc, char** argv) {
    std::array<char, directoryBufferSize> directory{};
    const bool told = wm_executable_directory(directory.data(), static_cast<unsigned>(directory.size())) != 0;
    return runtimeDirectory(executablePath(told ? directory.data() : nullptr, argc, argv));
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
    path = findRuntimeDirectory(argc, argv);

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
