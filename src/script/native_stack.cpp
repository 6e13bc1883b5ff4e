#include "script/native_stack.h"

#include <cstdint>
#include <stdexcept>

std::uintptr_t lowestStackAddress = 0;

namespace {

constexpr std::size_t assumedSize = 4U << 20U; // bytes; below every platform's default for a first thread
// What stays free below the limit: enough for the library calls and the error report that follow a refusal.
constexpr std::size_t reserve = 512U << 10U;

void measureFromHere(std::size_t bytes) {
    const std::uintptr_t here = nativeStackAddress();
    const std::size_t usable = bytes > 2 * reserve ? bytes - reserve : bytes / 2;
    lowestStackAddress = here > usable ? here - usable : 1;
}

} // namespace

std::uintptr_t nativeStackAddress() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

void setNativeStackSize(std::size_t bytes) { measureFromHere(bytes); }

void measureOrFailNativeStack() {
    if (lowestStackAddress != 0) throw std::runtime_error("native stack exhausted");
    measureFromHere(assumedSize);
}
