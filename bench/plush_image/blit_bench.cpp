// Blits of a whole frame, each beside the plainest thing that could do the same work, in one run.
//
// The frame has the engine's usual size. A straight copy stands beside one memcpy of as many bytes, the blend beside
// its formula written as a loop over bytes. Scaled and turned blits have no such neighbour; their pixels per second
// stand alone. The number behind each name is the number of threads that the blit may use.

#include "plush/blit.h"
#include "plush/rows.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int frameWidth = 960;  // pixels
constexpr int frameHeight = 544; // pixels
constexpr std::size_t framePixels = std::size_t{frameWidth} * frameHeight;
constexpr std::size_t frameBytes = framePixels * bytesPerPixel;

/// Two frames of random bytes, the same in every run.
struct Frames {
    std::vector<PixelByte> targetBytes = std::vector<PixelByte>(frameBytes);
    std::vector<PixelByte> sourceBytes = std::vector<PixelByte>(frameBytes);
    PlushImage target;
    PlushImage source;

    Frames() {
        std::mt19937 random(1);
        for (PixelByte& byte : targetBytes) byte = static_cast<PixelByte>(random());
        for (PixelByte& byte : sourceBytes) byte = static_cast<PixelByte>(random());
        target.width = source.width = frameWidth;
        target.height = source.height = frameHeight;
        target.pixels = targetBytes.data();
        source.pixels = sourceBytes.data();
    }
};

Frames& frames() {
    static Frames both;
    return both;
}

void countPixels(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(framePixels));
}

void blitFrame(benchmark::State& state, Blend blend, float scale, float rotation) {
    Frames& both = frames();
    AllowedThreads = static_cast<int>(state.range(0));
    for (auto _ : state) {
        blitImage(both.target, both.source, 0, 0, blend, scale, rotation);
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

void plainMemcpy(benchmark::State& state) {
    Frames& both = frames();
    for (auto _ : state) {
        std::memcpy(both.targetBytes.data(), both.sourceBytes.data(), frameBytes);
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

void plainBlendLoop(benchmark::State& state) {
    Frames& both = frames();
    for (auto _ : state) {
        for (std::size_t at = 0; at < frameBytes; at += bytesPerPixel) {
            const PixelByte* source = &both.sourceBytes[at];
            PixelByte* target = &both.targetBytes[at];
            const unsigned a = source[3];
            for (int channel = 0; channel < 3; ++channel) {
                target[channel] = static_cast<PixelByte>((a * source[channel] + (255 - a) * target[channel]) / 255);
            }
            target[3] = static_cast<PixelByte>(target[3] + a - target[3] * a / 255);
        }
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

void blitCopy(benchmark::State& state) { blitFrame(state, Blend::Replace, 1.0F, 0.0F); }
void blitOver(benchmark::State& state) { blitFrame(state, Blend::Over, 1.0F, 0.0F); }
void blitScaled(benchmark::State& state) { blitFrame(state, Blend::Replace, 1.5F, 0.0F); }
void blitScaledOver(benchmark::State& state) { blitFrame(state, Blend::Over, 1.5F, 0.0F); }
void blitTurned(benchmark::State& state) { blitFrame(state, Blend::Replace, 1.0F, 30.0F); }
void blitTurnedOver(benchmark::State& state) { blitFrame(state, Blend::Over, 1.0F, 30.0F); }

BENCHMARK(plainMemcpy)->UseRealTime();
BENCHMARK(blitCopy)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(plainBlendLoop)->UseRealTime();
BENCHMARK(blitOver)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(blitScaled)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(blitScaledOver)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(blitTurned)->Arg(1)->Arg(2)->UseRealTime();
BENCHMARK(blitTurnedOver)->Arg(1)->Arg(2)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
