// Scaled and turned images beside SDL2_gfx's zoom and rotozoom, on one thread.
//
// SDL2_gfx gives a new surface that just holds the whole result. Ours does the same work: a new, transparent image of
// that size is made each time and the blit draws on it. Neither filters.

#include "plush/blit.h"
#include "plush/registry.h"
#include "plush/rows.h"

#include <SDL.h>
#include <SDL2_rotozoom.h>
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

constexpr int frameWidth = 960;  // pixels
constexpr int frameHeight = 544; // pixels
constexpr int frameStride = frameWidth * bytesPerPixel;

/// A frame of random bytes, as both know it.
class Frame {
public:
    Frame() : bytes_(std::size_t{frameStride} * frameHeight) {
        std::mt19937 random(1);
        for (PixelByte& byte : bytes_) byte = static_cast<PixelByte>(random());
        image = {frameWidth, frameHeight, bytes_.data(), 0, 0, nullptr};
        surface = SDL_CreateRGBSurfaceWithFormatFrom(bytes_.data(), frameWidth, frameHeight, 32, frameStride,
                                                     SDL_PIXELFORMAT_ABGR8888);
    }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    ~Frame() { SDL_FreeSurface(surface); }

    PlushImage image;
    SDL_Surface* surface = nullptr;

private:
    std::vector<PixelByte> bytes_;
};

struct Size {
    int width = 0;  // pixels
    int height = 0; // pixels
};

Size resultSize(double scale, double rotation) {
    Size size;
    if (rotation == 0.0) {
        zoomSurfaceSize(frameWidth, frameHeight, scale, scale, &size.width, &size.height);
    } else {
        rotozoomSurfaceSize(frameWidth, frameHeight, rotation, scale, &size.width, &size.height);
    }
    return size;
}

/// Pixels are those of the result.
void finish(benchmark::State& state, Size size) {
    state.SetItemsProcessed(state.iterations() * std::int64_t{size.width} * size.height);
}

void ours(benchmark::State& state, double scale, double rotation) {
    const Frame frame;
    const Size size = resultSize(scale, rotation);
    const int left = (size.width - static_cast<int>(scale * frameWidth)) / 2;
    const int top = (size.height - static_cast<int>(scale * frameHeight)) / 2;
    AllowedThreads = 1;
    for (auto _ : state) {
        PlushImage* result = createSolidColourImage(size.width, size.height, 0, 0, 0, 0);
        blitImage(*result, frame.image, left, top, Blend::Replace, static_cast<float>(scale),
                  static_cast<float>(rotation));
        benchmark::DoNotOptimize(result->pixels);
        killImage(result);
    }
    finish(state, size);
}

void rotozoom(benchmark::State& state, double scale, double rotation) {
    const Frame frame;
    for (auto _ : state) {
        SDL_Surface* result = rotation == 0.0 ? zoomSurface(frame.surface, scale, scale, SMOOTHING_OFF)
                                              : rotozoomSurface(frame.surface, rotation, scale, SMOOTHING_OFF);
        benchmark::DoNotOptimize(result->pixels);
        SDL_FreeSurface(result);
    }
    finish(state, resultSize(scale, rotation));
}

BENCHMARK_CAPTURE(ours, enlarged, 1.5, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(rotozoom, enlarged, 1.5, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(ours, reduced, 0.6, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(rotozoom, reduced, 0.6, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(ours, turned, 1.0, 30.0)->UseRealTime();
BENCHMARK_CAPTURE(rotozoom, turned, 1.0, 30.0)->UseRealTime();
BENCHMARK_CAPTURE(ours, turned_enlarged, 1.5, 30.0)->UseRealTime();
BENCHMARK_CAPTURE(rotozoom, turned_enlarged, 1.5, 30.0)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
