// The table `Plush`, as far as it concerns the engine's own image files.

#include "host/image_arguments.h"
#include "host/index.h"
#include "host/registration.h"
#include "plush/pmg.h"

namespace {

Variable savePlushImageBinding(const Arguments& arguments) {
    const PlushImage* image = imageHandle(arguments, 0, "image");
    return savePlushImage(image, engine.normalisePath(arguments.text(1, "path")));
}

Variable loadPlushImageBinding(const Arguments& arguments) {
    PlushImage* image = loadPlushImage(engine.normalisePath(arguments.text(0, "path")));
    if (!image) return {};
    return returnValues({image, image->width, image->height});
}

} // namespace

void registerPlushFiles() {
    constexpr ModuleEntry entries[] = {
        {"savePlushImage", savePlushImageBinding},
        {"loadPlushImage", loadPlushImageBinding},
    };
    extendModule("Plush", entries);
}
