// Reading image handles from the arguments of native functions.

#include "host/image_arguments.h"

#include "plush/registry.h"

PlushImage* imageHandle(const Arguments& arguments, std::size_t index, std::string_view name) {
    return static_cast<PlushImage*>(arguments.pointer(index, name));
}

PlushImage& pixelImage(const Arguments& arguments, std::size_t index, std::string_view name) {
    PlushImage* image = imageHandle(arguments, index, name);
    if (!isLiveImage(image) || !image->pixels) arguments.fail(std::string(name) + " must be a valid image");
    return *image;
}

PlushImage* liveImage(const Arguments& arguments, std::size_t index, std::string_view name) {
    PlushImage* image = imageHandle(arguments, index, name);
    return isLiveImage(image) ? image : nullptr;
}

void failAsTooLarge(const Arguments& arguments) { arguments.fail("image is too large"); }
