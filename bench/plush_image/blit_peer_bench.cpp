// Blits of a whole frame beside the same work done by pixman and by SDL2 on one thread.
//
// The alpha blend stands beside pixman's OVER, which expects colours multiplied by alpha and is given bytes as they
// are, since its time does not depend on that; and beside SDL2's blend of surfaces in memory, which works on straight
// alpha as ours does. Scaled and turned blits stand beside pixman with a transform and its nearest filter. "photo" has
// every alpha, "sprite" is a figure on transparent ground with a soft edge.

#include "plush/blit.h"
#include "plush/rows.h"

#include <SDL.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int frameWidth = 960;  // pixels
constexpr int frameHeight = 544; // pixels
constexpr int frameStride = frameWidth * bytesPerPixel;
constexpr std::size_t frameBytes = std::size_t{frameStride} * frameHeight;
constexpr double enlarging = 1.5;
constexpr double turn = 30.0; // degrees
constexpr double radiansPerDegree = 0.017453292519943295;

enum class Alpha { Any, Sprite };

/// An alpha that is 255 in the middle, 0 at the edges of the frame and anything in a narrow band between.
PixelByte spriteAlpha(std::size_t pixel) {
    const double dx = static_cast<double>(pixel % frameWidth) - frameWidth / 2.0;
    const double dy = static_cast<double>(pixel / frameWidth) - frameHeight / 2.0;
    const double inside = 240.0 - std::sqrt(dx * dx + dy * dy);
    return static_cast<PixelByte>(std::clamp(inside * 32.0, 0.0, 255.0));
}

/// A target and a source, as each of the three knows them.
class Frames {
public:
    explicit Frames(Alpha alpha) : targetBytes_(frameBytes), sourceBytes_(frameBytes) {
        std::mt19937 random(1);
        for (PixelByte& byte : targetBytes_) byte = static_cast<PixelByte>(random());
        for (PixelByte& byte : sourceBytes_) byte = static_cast<PixelByte>(random());
        if (alpha == Alpha::Sprite) {
            for (std::size_t at = 0; at < frameBytes; at += bytesPerPixel) {
                sourceBytes_[at + 3] = spriteAlpha(at / bytesPerPixel);
            }
        }
        target = {frameWidth, frameHeight, targetBytes_.data(), 0, 0, nullptr};
        source = {frameWidth, frameHeight, sourceBytes_.data(), 0, 0, nullptr};
        pixmanTarget = pixmanImage(targetBytes_);
        pixmanSource = pixmanImage(sourceBytes_);
        sdlTarget = surface(targetBytes_);
        sdlSource = surface(sourceBytes_);
        SDL_SetSurfaceBlendMode(sdlSource, SDL_BLENDMODE_BLEND);
    }
    Frames(const Frames&) = delete;
    Frames& operator=(const Frames&) = delete;
    ~Frames() {
        pixman_image_unref(pixmanTarget);
        pixman_image_unref(pixmanSource);
        SDL_FreeSurface(sdlTarget);
        SDL_FreeSurface(sdlSource);
    }

    PlushImage target;
    PlushImage source;
    pixman_image_t* pixmanTarget = nullptr;
    pixman_image_t* pixmanSource = nullptr;
    SDL_Surface* sdlTarget = nullptr;
    SDL_Surface* sdlSource = nullptr;

private:
    static pixman_image_t* pixmanImage(std::vector<PixelByte>& bytes) {
        return pixman_image_create_bits(PIXMAN_a8b8g8r8, frameWidth, frameHeight,
                                        reinterpret_cast<std::uint32_t*>(bytes.data()), frameStride);
    }
    static SDL_Surface* surface(std::vector<PixelByte>& bytes) {
        return SDL_CreateRGBSurfaceWithFormatFrom(bytes.data(), frameWidth, frameHeight, 32, frameStride,
                                                  SDL_PIXELFORMAT_ABGR8888);
    }

    std::vector<PixelByte> targetBytes_;
    std::vector<PixelByte> sourceBytes_;
};

void finish(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * std::int64_t{frameWidth} * frameHeight);
}

void ours(benchmark::State& state, Alpha alpha, Blend blend, double scale, double rotation) {
    Frames frames(alpha);
    AllowedThreads = 1;
    for (auto _ : state) {
        blitImage(frames.target, frames.source, 0, 0, blend, static_cast<float>(scale), static_cast<float>(rotation));
        benchmark::ClobberMemory();
    }
    finish(state);
}

/// @param scale, rotation  as for `ours`; the transform leads from the target to the source
void pixman(benchmark::State& state, Alpha alpha, pixman_op_t operation, double scale, double rotation) {
    Frames frames(alpha);
    if (scale != 1.0 || rotation != 0.0) {
        pixman_f_transform_t wide;
        pixman_transform_t transform;
        const double angle = rotation * radiansPerDegree;
        pixman_f_transform_init_translate(&wide, -scale * frameWidth / 2.0, -scale * frameHeight / 2.0);
        pixman_f_transform_rotate(&wide, nullptr, std::cos(angle), -std::sin(angle));
        pixman_f_transform_scale(&wide, nullptr, 1.0 / scale, 1.0 / scale);
        pixman_f_transform_translate(&wide, nullptr, frameWidth / 2.0, frameHeight / 2.0);
        pixman_transform_from_pixman_f_transform(&transform, &wide);
        pixman_image_set_transform(frames.pixmanSource, &transform);
        pixman_image_set_filter(frames.pixmanSource, PIXMAN_FILTER_NEAREST, nullptr, 0);
    }
    for (auto _ : state) {
        pixman_image_composite32(operation, frames.pixmanSource, nullptr, frames.pixmanTarget, 0, 0, 0, 0, 0, 0,
                                 frameWidth, frameHeight);
        benchmark::ClobberMemory();
    }
    finish(state);
}

void sdl(benchmark::State& state, Alpha alpha) {
    Frames frames(alpha);
    for (auto _ : state) {
        SDL_BlitSurface(frames.sdlSource, nullptr, frames.sdlTarget, nullptr);
        benchmark::ClobberMemory();
    }
    finish(state);
}

void plainMemcpy(benchmark::State& state) {
    Frames frames(Alpha::Any);
    for (auto _ : state) {
        std::memcpy(frames.target.pixels, frames.source.pixels, frameBytes);
        benchmark::ClobberMemory();
    }
    finish(state);
}

BENCHMARK_CAPTURE(ours, copy, Alpha::Any, Blend::Replace, 1.0, 0.0)->UseRealTime();
BENCHMARK(plainMemcpy)->UseRealTime();
BENCHMARK_CAPTURE(ours, over_photo, Alpha::Any, Blend::Over, 1.0, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(pixman, over_photo, Alpha::Any, PIXMAN_OP_OVER, 1.0, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(sdl, over_photo, Alpha::Any)->UseRealTime();
BENCHMARK_CAPTURE(ours, over_sprite, Alpha::Sprite, Blend::Over, 1.0, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(pixman, over_sprite, Alpha::Sprite, PIXMAN_OP_OVER, 1.0, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(sdl, over_sprite, Alpha::Sprite)->UseRealTime();
BENCHMARK_CAPTURE(ours, scaled, Alpha::Any, Blend::Replace, enlarging, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(pixman, scaled, Alpha::Any, PIXMAN_OP_SRC, enlarging, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(ours, scaled_over, Alpha::Any, Blend::Over, enlarging, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(pixman, scaled_over, Alpha::Any, PIXMAN_OP_OVER, enlarging, 0.0)->UseRealTime();
BENCHMARK_CAPTURE(ours, turned, Alpha::Any, Blend::Replace, 1.0, turn)->UseRealTime();
BENCHMARK_CAPTURE(pixman, turned, Alpha::Any, PIXMAN_OP_SRC, 1.0, turn)->UseRealTime();
BENCHMARK_CAPTURE(ours, turned_over, Alpha::Any, Blend::Over, 1.0, turn)->UseRealTime();
BENCHMARK_CAPTURE(pixman, turned_over, Alpha::Any, PIXMAN_OP_OVER, 1.0, turn)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
