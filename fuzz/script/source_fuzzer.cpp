// Any bytes as source text: they must compile and run, or give an error report. The text is run by both walkers, the
// one over the compiled program and the one over parsed lines, and what was compiled must survive its file format.

#include "sandbox.h"
#include "script/ostrel_script.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

namespace {

void runCompiled(const std::string& source) {
    OstrelScript engine;
    confine(engine);
    const BytecodeProgram program = engine.compileToBytecode(source, "directory/input.os");
    const std::vector<unsigned char> stored = engine.serialiseBytecode(program);
    if (engine.serialiseBytecode(engine.deserialiseBytecode(stored, "stored.osb")) != stored) std::abort();
    engine.runBytecode(program);
}

void runLineByLine(const std::string& source) {
    OstrelScript engine;
    confine(engine);
    std::size_t position = 0;
    BlockSignal signal;
    engine.executeBlock({source}, position, signal);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    silenceOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto run : {runCompiled, runLineByLine}) {
        const MemoryBudget budget;
        try {
            run(std::string(reinterpret_cast<const char*>(data), size));
        } catch (const std::exception&) {
            // an error report, as it should be
        }
    }
    return 0;
}
