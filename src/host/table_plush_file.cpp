// The table `Plush`, as far as it concerns the engine's own image files.

#include "host/image_arguments.h"
#include "host/index.h"
#include "host/registration.h"
#include "plush/pmg.h"

namespace {

Variable saveImageRaw(const Arguments& arguments) {
    const PlushImage* image = liveImage(arguments, 0, "image");
    return savePlushImage(image, arguments.text(1, "path"));
}

Variable loadImageRaw(const Arguments& arguments) {
    PlushImage* image = loadPlushImage(arguments.text(0, "path"));
    if (!image) return {};
    return returnValues({image, image->width, image->height});
}

} // namespace

void registerPlushFiles() {
    constexpr ModuleEntry entries[] = {
        {"savePlushImage", saveImageRaw},
        {"loadPlushImage", loadImageRaw},
    };
    extendModule("Plush", entries);
}
