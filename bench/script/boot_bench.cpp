// From the start of the process to the first line of the game script, as a player waits for it: the whole executable in
// a game directory, timed until the first byte that the script prints arrives.

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

/// A throw-away game whose script prints one word and ends.
class GameDirectory {
public:
    GameDirectory() : root_(fs::temp_directory_path() / ("velmaris-boot-" + std::to_string(std::rand()))) {
        for (const char* folder : {"bin", "Resources/package", "Resources/scripts", "Resources/volatile", "Libraries"})
            fs::create_directories(root_ / folder);
        fs::copy_file(VELMARIS_EXECUTABLE, executable());
        std::ofstream(root_ / "Resources/package/graphics.os");
        std::ofstream(root_ / "Resources/scripts/visual-novel.os") << "print(\"ready\")\n";
    }
    GameDirectory(const GameDirectory&) = delete;
    GameDirectory& operator=(const GameDirectory&) = delete;
    ~GameDirectory() { fs::remove_all(root_); }

    fs::path executable() const { return root_ / "bin" / "Velmaris"; }

private:
    fs::path root_;
};

void bootToFirstLine(benchmark::State& state) {
    const GameDirectory game;
    const std::string command = game.executable().string();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        std::FILE* output = popen(command.c_str(), "r");
        if (output == nullptr || std::fgetc(output) != 'r') {
            state.SkipWithError("the game script did not run");
            break;
        }
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        pclose(output);
        state.SetIterationTime(elapsed.count());
    }
}
BENCHMARK(bootToFirstLine)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
