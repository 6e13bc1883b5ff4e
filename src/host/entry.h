#pragma once

// What the process asks of its platform before anything else runs.

#include <cstddef>

/// Makes the standard streams write the same bytes on every platform, and the main thread's stack as large as deeply
/// nested scripts deserve. Returns how many bytes of stack may be used from here on.
std::size_t prepareProcess();
