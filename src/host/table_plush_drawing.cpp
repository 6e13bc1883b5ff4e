// The table `Plush`, as far as it concerns drawing images on images.

#include "host/image_arguments.h"
#include "host/registration.h"
#include "plush/blit.h"
#include "plush/blit_rect.h"
#include "plush/skew.h"

namespace {

/// A number in single precision.
float singleNumber(const Arguments& arguments, std::size_t index, std::string_view name) {
    return static_cast<float>(arguments.number(index, name));
}

Blend blendFlag(const Arguments& arguments, std::size_t index) {
    return arguments.flag(index) ? Blend::Over : Blend::Replace;
}

Variable blitImageBinding(const Arguments& arguments) {
    constexpr std::size_t parameterCount = 7;
    if (arguments.count() != parameterCount) {
        arguments.fail("expected 7 arguments (target, image, x, y, blend, scale, rotation)");
    }
    PlushImage& target = pixelImage(arguments, 0, "target");
    const PlushImage& image = pixelImage(arguments, 1, "image");
    const int x = arguments.integer(2, "x");
    const int y = arguments.integer(3, "y");
    if (!touches(target, image, x, y)) return {}; // what follows is then not even read
    const Blend blend = blendFlag(arguments, 4);
    const float scale = singleNumber(arguments, 5, "scale");
    const float rotation = singleNumber(arguments, 6, "rotation");
    blitImage(target, image, x, y, blend, scale, rotation);
    return {};
}

Variable blitImageRectBinding(const Arguments& arguments) {
    constexpr std::size_t parameterCount = 10;
    if (arguments.count() != parameterCount) {
        arguments.fail("expected 10 arguments (target, image, sx, sy, width, height, x, y, blend, scale)");
    }
    PlushImage& target = pixelImage(arguments, 0, "target");
    const PlushImage& image = pixelImage(arguments, 1, "image");
    PixelRect rect;
    rect.x = arguments.integer(2, "sx");
    rect.y = arguments.integer(3, "sy");
    rect.width = arguments.integer(4, "width");
    rect.height = arguments.integer(5, "height");
    const int x = arguments.integer(6, "x");
    const int y = arguments.integer(7, "y");
    const Blend blend = blendFlag(arguments, 8);
    const float scale = singleNumber(arguments, 9, "scale");
    blitImageRect(target, image, rect, x, y, blend, scale);
    return {};
}

Corner corner(const Arguments& arguments, std::size_t index, std::string_view xName, std::string_view yName) {
    const int x = arguments.integer(index, xName);
    const int y = arguments.integer(index + 1, yName);
    return {x, y};
}

Variable skew(const Arguments& arguments) {
    const PlushImage* input = liveImage(arguments, 0, "input");
    PlushImage* output = liveImage(arguments, 1, "output");
    Corners corners;
    corners.leftTop = corner(arguments, 2, "ltx", "lty");
    corners.rightTop = corner(arguments, 4, "rtx", "rty");
    corners.leftBottom = corner(arguments, 6, "lbx", "lby");
    corners.rightBottom = corner(arguments, 8, "rbx", "rby");
    if (input && output) skewImage(corners, *input, *output);
    return {};
}

} // namespace

void registerPlushDrawing() {
    constexpr ModuleEntry entries[] = {
        {"blitImage", blitImageBinding},
        {"blitImageRect", blitImageRectBinding},
        {"skew", skew},
    };
    extendModule("Plush", entries);
}
