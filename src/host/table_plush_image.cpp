// The table `Plush`, as far as it concerns the lives of images, their pixels and their files.

#include "host/image_arguments.h"
#include "host/index.h"
#include "host/registration.h"
#include "plush/image_file.h"
#include "plush/pixels.h"
#include "plush/registry.h"
#include "plush/rows.h"

namespace {

constexpr int channelMaximum = 255;

/// A channel of which only the low 8 bits are kept.
PixelByte wrappedChannel(const Arguments& arguments, std::size_t index, std::string_view name) {
    return static_cast<PixelByte>(arguments.integer(index, name) & channelMaximum);
}

/// A channel that must be one.
PixelByte checkedChannel(const Arguments& arguments, std::size_t index, std::string_view name) {
    const int channel = arguments.integer(index, name);
    if (channel < 0 || channel > channelMaximum) arguments.fail(std::string(name) + " must be between 0 and 255");
    return static_cast<PixelByte>(channel);
}

/// A pixel of an image, both tested.
struct PixelPlace {
    PlushImage* image = nullptr;
    int x = 0;
    int y = 0;
};

/// The first three arguments of the two pixel functions.
PixelPlace pixelPlace(const Arguments& arguments) {
    PixelPlace place;
    place.image = imageHandle(arguments, 0, "image");
    if (!cleanImage(place.image)) arguments.fail("image must be a valid image");
    place.x = arguments.integer(1, "x");
    place.y = arguments.integer(2, "y");
    if (!hasPixel(place.image, place.x, place.y)) arguments.fail("pixel coordinates are outside the image");
    return place;
}

Variable setThreading(const Arguments& arguments) {
    AllowedThreads = arguments.integer(0, "count");
    return {};
}

Variable createImage(const Arguments& arguments) {
    const int width = arguments.integer(0, "width");
    const int height = arguments.integer(1, "height");
    const PixelByte r = wrappedChannel(arguments, 2, "r");
    const PixelByte g = wrappedChannel(arguments, 3, "g");
    const PixelByte b = wrappedChannel(arguments, 4, "b");
    const PixelByte a = wrappedChannel(arguments, 5, "a");
    if (!imageSizeAllowed(width, height)) failAsTooLarge(arguments);
    return createSolidColourImage(width, height, r, g, b, a);
}

Variable checkImage(const Arguments& arguments) { return cleanImage(imageHandle(arguments, 0, "image")); }

Variable getImagePixel(const Arguments& arguments) {
    const PixelPlace place = pixelPlace(arguments);
    const PixelByte* pixel = getPixel(place.image, place.x, place.y);
    return returnValues({pixel[0], pixel[1], pixel[2], pixel[3]});
}

Variable setImagePixel(const Arguments& arguments) {
    const PixelPlace place = pixelPlace(arguments);
    const PixelByte r = checkedChannel(arguments, 3, "r");
    const PixelByte g = checkedChannel(arguments, 4, "g");
    const PixelByte b = checkedChannel(arguments, 5, "b");
    const PixelByte a = checkedChannel(arguments, 6, "a");
    setPixel(place.image, place.x, place.y, r, g, b, a);
    return {};
}

Variable saveImage(const Arguments& arguments) {
    const std::string filePath = engine.normalisePath(arguments.text(0, "path"));
    const PlushImage& image = pixelImage(arguments, 1, "image");
    saveImageFile(image, filePath); // a script that must know reads the file back
    return {};
}

Variable killImageBinding(const Arguments& arguments) {
    killImage(imageHandle(arguments, 0, "image"));
    return {};
}

Variable imageSize(const Arguments& arguments) {
    const PlushImage& image = pixelImage(arguments, 0, "image");
    return returnValues({image.width, image.height});
}

Variable loadPNG(const Arguments& arguments) {
    const std::string filePath = engine.normalisePath(arguments.text(0, "path"));
    PlushImage* image = loadImageFile(filePath);
    if (!image) arguments.fail("failed to load image: " + filePath);
    return returnValues({image, image->height, image->width});
}

} // namespace

void registerPlushTable() {
    constexpr ModuleEntry entries[] = {
        {"threads", setThreading},       {"createImage", createImage}, {"checkImage", checkImage},
        {"getPixel", getImagePixel},     {"setPixel", setImagePixel},  {"saveImage", saveImage},
        {"killImage", killImageBinding}, {"imageSize", imageSize},     {"loadPNG", loadPNG},
    };
    engine.pushVariable("Plush", makeModule("Plush", entries));
}
