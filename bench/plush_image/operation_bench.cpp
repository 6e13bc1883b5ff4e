// The operations on whole images, each beside a plain loop of its formula, in one run. The number behind a name is the
// number of threads that the operation may use; the loop has one.

#include "plain_operations.h"
#include "plush/dither.h"
#include "plush/grid_fill.h"
#include "plush/registry.h"
#include "plush/rows.h"
#include "plush/upscale.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

constexpr int frameWidth = 960;  // pixels
constexpr int frameHeight = 544; // pixels
constexpr float factor = 2.0F;
constexpr int amount = 12;
constexpr int step = 4;
constexpr Corners corners{{100, 20}, {900, 90}, {40, 530}, {800, 460}};

PlushImage* randomImage(int width, int height) {
    PlushImage* image = createSolidColourImage(width, height, 0, 0, 0, 0);
    std::mt19937 random(1);
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel;
    for (std::size_t at = 0; at < bytes; ++at) image->pixels[at] = static_cast<PixelByte>(random());
    return image;
}

/// Pixels are those of the result, a frame in each case.
void finish(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * std::int64_t{frameWidth} * frameHeight);
}

void upscale(benchmark::State& state) {
    AllowedThreads = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        PlushImage* image = randomImage(frameWidth / 2, frameHeight / 2);
        state.ResumeTiming();
        upscalePlushImage(*image, factor);
        benchmark::ClobberMemory();
        state.PauseTiming();
        killImage(image);
        state.ResumeTiming();
    }
    finish(state);
}

void upscalePlain(benchmark::State& state) {
    PlushImage* image = randomImage(frameWidth / 2, frameHeight / 2);
    std::vector<PixelByte> result;
    for (auto _ : state) {
        plainUpscale(result, *image, factor);
        benchmark::ClobberMemory();
    }
    killImage(image);
    finish(state);
}

/// Runs an operation again and again on one frame.
template <typename Operation> void onFrame(benchmark::State& state, Operation operation) {
    PlushImage* image = randomImage(frameWidth, frameHeight);
    for (auto _ : state) {
        operation(*image);
        benchmark::ClobberMemory();
    }
    killImage(image);
    finish(state);
}

/// The same with the threads that the benchmark's argument allows.
template <typename Operation> void onFrameThreaded(benchmark::State& state, Operation operation) {
    AllowedThreads = static_cast<int>(state.range(0));
    onFrame(state, operation);
}

void gridFill(benchmark::State& state) {
    samplingStep = step;
    onFrameThreaded(state, [](PlushImage& image) { bilinearInPlace(image); });
}
void gridFillPlain(benchmark::State& state) {
    onFrame(state, [](PlushImage& image) { plainGridFill(image, step); });
}
void dither(benchmark::State& state) {
    onFrameThreaded(state, [](PlushImage& image) { ditherImage(image, amount, false); });
}
void ditherPlain(benchmark::State& state) {
    onFrame(state, [](PlushImage& image) { plainDither(image, amount); });
}
void skew(benchmark::State& state) {
    PlushImage* input = randomImage(frameWidth, frameHeight);
    onFrameThreaded(state, [input](PlushImage& image) { skewImage(corners, *input, image); });
    killImage(input);
}
void skewPlain(benchmark::State& state) {
    PlushImage* input = randomImage(frameWidth, frameHeight);
    onFrame(state, [input](PlushImage& image) { plainSkew(corners, *input, image); });
    killImage(input);
}

BENCHMARK(upscale)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(upscalePlain)->UseRealTime();
BENCHMARK(gridFill)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(gridFillPlain)->UseRealTime();
BENCHMARK(dither)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(ditherPlain)->UseRealTime();
BENCHMARK(skew)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(skewPlain)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
