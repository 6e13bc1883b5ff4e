// Images and the files they come from: what lies between the codec's bare blocks of pixels and the live images.

#include "plush/image_file.h"

#include "plush/png_entry.h"
#include "plush/registry.h"
#include "plush/render_size.h"

#include <memory>

PlushImage* loadImageFile(const std::string& path) {
    auto image = std::make_unique<PlushImage>();
    image->pixels = wm_load_png(path.c_str(), &image->width, &image->height);
    if (!image->pixels) return nullptr;
    renderSize = {image->width, image->height};
    registerImage(image.get());
    return image.release();
}

bool saveImageFile(const PlushImage& image, const std::string& path) {
    return wm_save_png(path.c_str(), image.pixels, image.width, image.height);
}
