// The flat entry points. A PNG file is decoded straight into the block that the caller receives; other formats come
// through an `Image`.

#include "plush/png_entry.h"

#include "plush/png.h"
#include "plush/png_decode.h"
#include "plush/png_load.h"

#include <algorithm>
#include <memory>
#include <new>

namespace {

using Block = std::unique_ptr<std::uint8_t[]>;

/// A picture that its caller will own.
struct Loaded {
    Block pixels; // null if loading failed
    int width = 0;
    int height = 0;
};

Loaded loadPng(const wm::png::FileBytes& bytes) {
    wm::png::ParsedPng png;
    if (!wm::png::open_png(bytes.span(), png)) return {};
    const std::size_t size = std::size_t{png.header.width} * png.header.height * wm::png::rgbaSize;
    Loaded loaded{std::make_unique_for_overwrite<std::uint8_t[]>(size), static_cast<int>(png.header.width),
                  static_cast<int>(png.header.height)};
    if (!wm::png::decode_png(png, loaded.pixels.get())) return {};
    return loaded;
}

Loaded loadOther(const wm::png::FileBytes& bytes) {
    wm::png::Image image;
    if (!wm::png::load_memory(bytes.data.get(), bytes.size, image)) return {};
    Loaded loaded{std::make_unique_for_overwrite<std::uint8_t[]>(image.pixels.size()), image.width, image.height};
    std::ranges::copy(image.pixels, loaded.pixels.get());
    return loaded;
}

} // namespace

std::uint8_t* wm_load_png(const char* path, int* width, int* height) {
    wm::png::FileBytes bytes;
    if (path == nullptr || width == nullptr || height == nullptr) return nullptr;
    if (!wm::png::read_picture_file(path, bytes)) return nullptr;
    try {
        const bool isPng = wm::png::detect_format(bytes.data.get(), bytes.size) == wm::png::pngFormat;
        Loaded loaded = isPng ? loadPng(bytes) : loadOther(bytes);
        if (loaded.pixels == nullptr) return nullptr;
        *width = loaded.width;
        *height = loaded.height;
        return loaded.pixels.release();
    } catch (const std::bad_alloc&) {
        return nullptr; // a picture within the limit can still be too large for the machine
    }
}

bool wm_save_png(const char* path, const std::uint8_t* pixels, int width, int height) {
    return path != nullptr && wm::png::save_rgba8_file(path, pixels, width, height);
}

bool wm_png_requires_postprocess() { return false; }
