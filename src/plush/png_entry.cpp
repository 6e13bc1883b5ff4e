// The flat entry points. A picture is decoded straight into the block that the caller receives.

#include "plush/png_entry.h"

#include "plush/png.h"
#include "plush/png_load.h"

#include <memory>

std::uint8_t* wm_load_png(const char* path, int* width, int* height) {
    wm::png::FileBytes bytes;
    if (path == nullptr || width == nullptr || height == nullptr) return nullptr;
    if (!wm::png::read_picture_file(path, bytes)) return nullptr;
    std::unique_ptr<std::uint8_t[]> pixels;
    int loadedWidth = 0;
    int loadedHeight = 0;
    const auto allocate = [&](std::int32_t pictureWidth, std::int32_t pictureHeight) {
        const std::size_t count = static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight);
        pixels = std::make_unique_for_overwrite<std::uint8_t[]>(count * wm::png::rgbaSize);
        loadedWidth = pictureWidth;
        loadedHeight = pictureHeight;
        return pixels.get();
    };
    if (!wm::png::decode_picture(bytes.span(), allocate)) return nullptr;
    *width = loadedWidth;
    *height = loadedHeight;
    return pixels.release();
}

bool wm_save_png(const char* path, const std::uint8_t* pixels, int width, int height) {
    return path != nullptr && wm::png::save_rgba8_file(path, pixels, width, height);
}

bool wm_save_bmp(const char* path, const std::uint8_t* pixels, int width, int height) {
    return path != nullptr && wm::png::save_bmp_rgba8_file(path, pixels, width, height);
}

bool wm_save_tga(const char* path, const std::uint8_t* pixels, int width, int height) {
    return path != nullptr && wm::png::save_tga_rgba8_file(path, pixels, width, height);
}

bool wm_save_xcf(const char* path, const std::uint8_t* pixels, int width, int height) {
    return path != nullptr && wm::png::save_xcf_rgba8_file(path, pixels, width, height);
}

bool wm_png_requires_postprocess() { return false; }
