// Any bytes given to the reader of the engine's own image files. What it takes must come out of the writer as it went
// in, but for bytes behind the end.

#include "plush/pmg.h"

#include <algorithm>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const OwnedImage image = readPMG({data, size});
    if (!image) return 0;
    std::vector<std::uint8_t> written;
    if (!writePMG(*image, written) || written.size() > size) std::abort();
    if (!std::equal(written.begin(), written.end(), data)) std::abort();
    return 0;
}
