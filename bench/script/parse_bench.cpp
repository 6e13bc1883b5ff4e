// Source text to lines, lines to bytecode, bytecode to bytes and back, in bytes of source text per second. The text is
// the startup library, the longest script that every game runs.

#include "script/ostrel_script.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>

namespace {

const std::string& sourceText() {
    static const std::string text = [] {
        std::ifstream file(STARTUP_SOURCE, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }();
    return text;
}

void countBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(sourceText().size()));
}

void parse(benchmark::State& state) {
    OstrelScript engine;
    for (auto _ : state) benchmark::DoNotOptimize(engine.parseLines(sourceText()));
    countBytes(state);
}
BENCHMARK(parse)->Unit(benchmark::kMillisecond);

void parseAndCompile(benchmark::State& state) {
    OstrelScript engine;
    for (auto _ : state) benchmark::DoNotOptimize(engine.compileToBytecode(sourceText()));
    countBytes(state);
}
BENCHMARK(parseAndCompile)->Unit(benchmark::kMillisecond);

void readBytecode(benchmark::State& state) {
    OstrelScript engine;
    const std::vector<unsigned char> image = engine.serialiseBytecode(engine.compileToBytecode(sourceText()));
    for (auto _ : state) benchmark::DoNotOptimize(engine.deserialiseBytecode(image, "lua.os"));
    countBytes(state);
}
BENCHMARK(readBytecode)->Unit(benchmark::kMillisecond);

} // namespace
