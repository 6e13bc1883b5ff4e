#pragma once

// A bound on recursion. Scripts may nest expressions, calls and data as deep as they like, and most of what walks
// them recurses; before the thread's stack is used up, the walk fails with a script error instead of killing the
// process.

#include <cstddef>
#include <cstdint>

/// Says how much stack the calling thread has from here on. Without it a modest size is assumed, measured from the
/// first check.
void setNativeStackSize(std::size_t bytes);

/// The lowest address that the scripts' thread may use; 0 until its stack has been measured.
extern std::uintptr_t lowestStackAddress;
/// The rest of checkNativeStack: measures the stack on the first call, fails on the later ones.
void measureOrFailNativeStack();

/// Fails with the std::runtime_error "native stack exhausted" when little of the stack is left.
inline void checkNativeStack() {
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (here - 1 < lowestStackAddress - 1) [[unlikely]]
        measureOrFailNativeStack();
}
