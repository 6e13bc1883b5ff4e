#include "allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> allocations{0};

} // namespace

std::size_t allocationCount() { return allocations; }

void* operator new(std::size_t size) {
    ++allocations;
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
