// How long a frame takes from the script's push to the finished back buffers, without the copy to the screen.
//
// Each case is run twice: by the engine, and by a plain scalar loop that follows the presentation rule pixel by pixel
// and writes the same two buffers. The loop is the peer: what the engine gains over it is what its column map, row
// reuse and opaque path are worth.

#include "host/presentation.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace {

enum Alphas : std::int64_t { opaque, sprites, translucent };

struct Scene {
    WmWindow window;
    std::vector<unsigned char> pixels;
    PlushImage image;

    explicit Scene(const benchmark::State& state) {
        image.width = static_cast<std::int32_t>(state.range(0));
        image.height = static_cast<std::int32_t>(state.range(1));
        window.clientWidth = static_cast<int>(state.range(2));
        window.clientHeight = static_cast<int>(state.range(3));
        pixels.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * bytesPerPixel);
        std::mt19937 random(1); // the same picture in every run
        for (unsigned char& byte : pixels) byte = static_cast<unsigned char>(random());
        const auto width = static_cast<std::size_t>(image.width);
        for (std::size_t i = 0; i < pixels.size() / bytesPerPixel; ++i) {
            // "sprites": one tile in eight of a frame's row is transparent.
            const bool hole = state.range(4) == sprites && (i % width) / 40 % 8 == 0;
            if (state.range(4) != translucent) pixels[i * bytesPerPixel + 3] = hole ? 0 : 255;
        }
        image.pixels = pixels.data();
        wm_clearWindow(&window, 10, 20, 30);
        wm_pushImage(&window, &image);
        resizeBackbuffer(window);
    }
};

void renderPlainly(WmWindow& window) {
    const DrawnRectangle drawn =
        drawnRectangle(window.pixelsWidth, window.pixelsHeight, window.clientWidth, window.clientHeight);
    const int clear[3] = {window.clearRed, window.clearGreen, window.clearBlue};
    for (int y = 0; y < window.clientHeight; ++y) {
        for (int x = 0; x < window.clientWidth; ++x) {
            int colour[3] = {clear[0], clear[1], clear[2]};
            if (x >= drawn.left && x < drawn.left + drawn.width && y >= drawn.top && y < drawn.top + drawn.height) {
                const int sourceX =
                    std::clamp((x - drawn.left) * window.pixelsWidth / drawn.width, 0, window.pixelsWidth - 1);
                const int sourceY =
                    std::clamp((y - drawn.top) * window.pixelsHeight / drawn.height, 0, window.pixelsHeight - 1);
                const unsigned char* source =
                    &window.pixels[static_cast<std::size_t>(sourceX + sourceY * window.pixelsWidth) * bytesPerPixel];
                const int alpha = source[3];
                for (int c = 0; c < 3; ++c) colour[c] = (source[c] * alpha + clear[c] * (255 - alpha)) / 255;
            }
            const auto target = static_cast<std::size_t>(x + y * window.clientWidth);
            for (std::size_t c = 0; c < 3; ++c) {
                window.rgbaBackbuffer[target * bytesPerPixel + c] = static_cast<unsigned char>(colour[c]);
            }
            window.rgbaBackbuffer[target * bytesPerPixel + 3] = 255;
            window.backbuffer[target] =
                0xff000000U | static_cast<std::uint32_t>(colour[0] << 16 | colour[1] << 8 | colour[2]);
        }
    }
}

void engineRender(benchmark::State& state) {
    Scene scene(state);
    for (auto round : state) {
        renderIntoBackbuffer(scene.window);
        benchmark::DoNotOptimize(scene.window.backbuffer.data());
        benchmark::ClobberMemory();
    }
}

void plainRender(benchmark::State& state) {
    Scene scene(state);
    for (auto round : state) {
        renderPlainly(scene.window);
        benchmark::DoNotOptimize(scene.window.backbuffer.data());
        benchmark::ClobberMemory();
    }
}

void enginePush(benchmark::State& state) {
    Scene scene(state);
    for (auto round : state) {
        wm_pushImage(&scene.window, &scene.image);
        benchmark::ClobberMemory();
    }
}

/// Image size, client size, kind of picture.
void cases(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"iw", "ih", "cw", "ch", "alpha"});
    bench->Unit(benchmark::kMicrosecond);
    bench->Args({960, 544, 960, 544, opaque});
    bench->Args({960, 544, 960, 544, sprites});
    bench->Args({960, 544, 960, 544, translucent});
    bench->Args({960, 544, 1920, 1080, opaque});
    bench->Args({960, 544, 1920, 1080, translucent});
    bench->Args({1920, 1080, 960, 544, opaque});
}

BENCHMARK(engineRender)->Apply(cases);
BENCHMARK(plainRender)->Apply(cases);
BENCHMARK(enginePush)->Args({960, 544, 960, 544, opaque})->Unit(benchmark::kMicrosecond);

} // namespace
