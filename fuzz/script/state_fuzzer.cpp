// Any bytes as a state file: they must be taken in or give a message. What was taken in must come back unchanged from a
// second trip through the format, and the functions that it holds must run to their end or to a script error.

#include "sandbox.h"
#include "script/ostrel_script.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <span>
#include <vector>

namespace {

/// A world that holds what the bytes hold must write the same bytes as the one that it was copied from.
std::vector<unsigned char> copyOf(const std::vector<unsigned char>& state) {
    OstrelScript engine;
    confine(engine);
    engine.importState(state, "stored.state");
    return engine.exportState();
}

void callFunctions(OstrelScript& engine) {
    for (const char* name : {"f", "g", "h"}) {
        const Variable function = engine.pullVariable(name);
        if (!function.isFunction()) continue;
        try {
            engine.invokeCallable(function, {1, "text", function});
        } catch (const std::exception&) {
            // a script error, as it should be
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    silenceOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryBudget budget;
    try {
        OstrelScript engine;
        confine(engine);
        engine.importState(std::span<const unsigned char>(data, size), "input.state");
        const std::vector<unsigned char> stored = engine.exportState();
        if (copyOf(stored) != stored) std::abort();
        callFunctions(engine);
    } catch (const std::exception&) {
        // a message, as it should be
    }
    return 0;
}
