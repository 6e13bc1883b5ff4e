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

/// Where the stack has got to. Not the address of a local object, which a sanitizer may keep elsewhere; and a function
/// of its own, because one that asks for its frame must not be passed by an exception on Windows: there GCC 12
/// describes such a frame wrongly to the unwinder, and numbers that callers keep in vector registers are lost.
[[gnu::noinline]] std::uintptr_t nativeStackAddress();

/// Fails with the std::runtime_error "native stack exhausted" when little of the stack is left.
inline void checkNativeStack() {
    if (nativeStackAddress() - 1 < lowestStackAddress - 1) [[unlikely]]
        measureOrFailNativeStack();
}
