#pragma once

#include <cstddef>

/// How often this program has called `operator new` so far. The operators that count stand in a file of their own, so
/// that no compiler sees them and their callers together and takes what they do for a mistake.
std::size_t allocationCount();
