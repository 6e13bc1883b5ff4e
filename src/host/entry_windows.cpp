// The start of the process on Windows. The stack's size stands in the executable; the linker was told it.

#include "host/entry.h"

#include <cstdio>

#include <fcntl.h>
#include <io.h>

namespace {

constexpr std::size_t linkedStack = std::size_t{64} << 20;  // bytes, as in CMakeLists.txt
constexpr std::size_t usedAtStart = std::size_t{256} << 10; // bytes

} // namespace

std::size_t prepareProcess() {
    // Text streams would write a carriage return before each line feed.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    return linkedStack - usedAtStart;
}
