// Decoding and encoding of PNG files beside libspng and libpng, on the same files in one run.
//
// Speeds are in bytes of RGBA pixels per second. Before anything is timed, the decoded pixels are compared, so that
// nobody wins by doing less.

#include "plush/png.h"
#include "png_peers.h"
#include "png_pictures.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace velmaris::bench {

namespace {

struct Case {
    std::string name;
    Picture picture;
    std::vector<std::uint8_t> file;
};

Case makeCase(const char* name, const Picture& picture, Storage storage) {
    return {name, picture, makeFile(picture, storage)};
}

void fail(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(1);
}

void checkDecoders(const Case& sample) {
    wm::png::Image image;
    if (!wm::png::load_memory(sample.file.data(), sample.file.size(), image)) fail(sample.name + ": does not load");
    const auto ours = image.pixels.data();
    const auto libpng = decodeWithLibpng(sample.file);
    const auto libspng = decodeWithLibspng(sample.file);
    if (libspng == nullptr) fail(sample.name + ": libspng does not load it");
    const bool samePixels = std::memcmp(ours, libpng.get(), image.pixels.size()) == 0;
    if (!samePixels) fail(sample.name + ": pixels differ from libpng's");
}

void registerDecoding(const Case& sample) {
    const std::size_t bytes = sample.picture.pixels.size();
    const auto add = [&](const char* decoder, auto decode) {
        benchmark::RegisterBenchmark(("decode/" + sample.name + "/" + decoder).c_str(), [&sample, bytes, decode](
                                                                                            benchmark::State& state) {
            for (auto _ : state) decode(sample.file);
            state.SetBytesProcessed(static_cast<std::int64_t>(bytes * state.iterations()));
        })->Unit(benchmark::kMicrosecond);
    };
    add("velmaris", [](const std::vector<std::uint8_t>& file) {
        wm::png::Image image;
        wm::png::load_memory(file.data(), file.size(), image);
        benchmark::DoNotOptimize(image.pixels.data());
    });
    add("libspng", [](const std::vector<std::uint8_t>& file) { benchmark::DoNotOptimize(decodeWithLibspng(file)); });
    add("libpng", [](const std::vector<std::uint8_t>& file) { benchmark::DoNotOptimize(decodeWithLibpng(file)); });
}

void registerEncoding(const char* name, const Picture& picture, const std::string& path) {
    const std::size_t bytes = picture.pixels.size();
    const auto add = [&](const char* encoder, auto encode) {
        benchmark::RegisterBenchmark((std::string("encode/") + name + "/" + encoder).c_str(),
                                     [bytes, encode](benchmark::State& state) {
                                         for (auto _ : state) encode();
                                         state.SetBytesProcessed(static_cast<std::int64_t>(bytes * state.iterations()));
                                     })
            ->Unit(benchmark::kMicrosecond);
    };
    add("velmaris", [&picture, path] {
        wm::png::save_png_rgba8_file(path, picture.pixels.data(), static_cast<int>(picture.width),
                                     static_cast<int>(picture.height));
    });
    add("libpng-level0", [&picture, path] { saveWithLibpng(path, picture, Filters::searched); });
    add("libpng-level0-nofilter", [&picture, path] { saveWithLibpng(path, picture, Filters::none); });
}

} // namespace

} // namespace velmaris::bench

int main(int argc, char** argv) {
    using namespace velmaris::bench;
    benchmark::Initialize(&argc, argv);
    const Picture photograph = photo(1024, 768);
    const Picture interface = flat(1024, 768);
    const Picture sprite = flat(64, 64);
    const std::vector<Case> cases = {
        makeCase("photo_rgba", photograph, Storage::rgba),
        makeCase("photo_rgb", photograph, Storage::rgb),
        makeCase("photo_rgb16", photograph, Storage::rgb16),
        makeCase("photo_grey", photograph, Storage::grey),
        makeCase("photo_interlaced", photograph, Storage::rgbaInterlaced),
        makeCase("flat_rgba", interface, Storage::rgba),
        makeCase("flat_rgb", interface, Storage::rgb),
        makeCase("flat_palette", interface, Storage::indexed),
        makeCase("flat_interlaced", interface, Storage::rgbaInterlaced),
        makeCase("sprite_rgba", sprite, Storage::rgba),
    };
    for (const Case& sample : cases) {
        checkDecoders(sample);
        registerDecoding(sample);
    }
    const std::string path = (std::filesystem::temp_directory_path() / "velmaris_png_bench.png").string();
    registerEncoding("photo", photograph, path);
    registerEncoding("flat", interface, path);
    registerEncoding("sprite", sprite, path);
    benchmark::RunSpecifiedBenchmarks();
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}
