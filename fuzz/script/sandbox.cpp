#include "sandbox.h"

#include "script/ostrel_script.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

constexpr std::uint64_t stepLimit = 20000;
constexpr std::size_t budget = std::size_t{64} << 20U; // bytes
constexpr std::size_t alwaysGranted = 4096;            // bytes; so that reporting a failure does not fail itself

// The fuzzers run one thread.
bool isBounded = false;
std::size_t granted = 0;

} // namespace

void silenceOutput() {
    if (!std::freopen("/dev/null", "w", stdout)) std::abort();
}

void confine(OstrelScript& engine) {
    for (const char* name : {"io", "os", "loadFile", "runFile", "readScript"}) engine.pushVariable(name, Variable());
    engine.setStepLimit(stepLimit);
}

MemoryBudget::MemoryBudget() {
    granted = 0;
    isBounded = true;
}

MemoryBudget::~MemoryBudget() { isBounded = false; }

void* operator new(std::size_t size) {
    if (isBounded) {
        if (size > alwaysGranted && (size > budget || granted > budget - size)) throw std::bad_alloc();
        granted += size;
    }
    if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}

void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size > 0 ? size : 1); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size > 0 ? size : 1); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
