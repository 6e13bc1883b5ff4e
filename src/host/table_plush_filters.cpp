// The table `Plush`, as far as it concerns operations on one whole image.
//
// Most of these don't insist on an image: nil and a handle of an image that was freed are passed over in silence.

#include "host/image_arguments.h"
#include "host/registration.h"
#include "plush/ascii_art.h"
#include "plush/dither.h"
#include "plush/grid_fill.h"
#include "plush/registry.h"
#include "plush/reshape.h"
#include "plush/upscale.h"

namespace {

Variable plushDither(const Arguments& arguments) {
    PlushImage* image = liveImage(arguments, 0, "image");
    const int amount = arguments.integer(1, "amount");
    const bool pixelate = arguments.flag(2);
    if (image && !ditherImage(*image, amount, pixelate)) failAsTooLarge(arguments);
    return {};
}

Variable printImage(const Arguments& arguments) {
    const PlushImage* image = liveImage(arguments, 0, "image");
    const int columns = arguments.integer(1, "width");
    const int rows = arguments.integer(2, "height");
    if (image && columns >= 1 && rows >= 1 && !imageSizeAllowed(columns, rows)) failAsTooLarge(arguments);
    printAsciiArt(image, columns, rows);
    return {};
}

Variable bilinear(const Arguments& arguments) {
    PlushImage* image = liveImage(arguments, 0, "image");
    const auto factor = static_cast<float>(arguments.number(1, "factor"));
    if (image && !upscalePlushImage(*image, factor)) failAsTooLarge(arguments);
    return {};
}

Variable bilinearFuzz(const Arguments& arguments) {
    PlushImage* image = liveImage(arguments, 0, "image");
    if (image) bilinearInPlace(*image);
    return {};
}

Variable trimImage(const Arguments& arguments) {
    PlushImage* image = liveImage(arguments, 0, "image");
    const int width = arguments.integer(1, "width");
    const int height = arguments.integer(2, "height");
    if (image) trimPlushImage(*image, width, height);
    return {};
}

Variable mirrorImage(const Arguments& arguments) {
    PlushImage& image = pixelImage(arguments, 0, "image");
    mirrorPlushImage(image, arguments.flag(1) ? Mirror::Columns : Mirror::Rows);
    return {};
}

Variable insertReflectionBinding(const Arguments& arguments) {
    PlushImage& image = pixelImage(arguments, 0, "image");
    const PlushImage& map = pixelImage(arguments, 1, "reflectmap");
    insertReflection(image, map);
    return {};
}

} // namespace

void registerPlushFilters() {
    constexpr ModuleEntry entries[] = {
        {"printImage", printImage},
        {"dither", plushDither},
        {"bilinear", bilinear},
        {"trimImage", trimImage},
        {"bilinearSolid", bilinearFuzz},
        {"mirrorImage", mirrorImage},
        {"insertReflection", insertReflectionBinding},
    };
    extendModule("Plush", entries);
}
