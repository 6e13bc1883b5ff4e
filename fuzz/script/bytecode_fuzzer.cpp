// Any bytes as a bytecode file: they must give a program or a message, and a program must run to its end or to a
// script error. A program that loads must also come back unchanged from a second trip through the format.

#include "bytecode_dump.h"
#include "sandbox.h"
#include "script/ostrel_script.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    silenceOutput();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryBudget budget;
    try {
        OstrelScript engine;
        confine(engine);
        const BytecodeProgram program = engine.deserialiseBytecode({data, data + size}, "input.osb");
        const std::vector<unsigned char> stored = engine.serialiseBytecode(program);
        const BytecodeProgram again = engine.deserialiseBytecode(stored, "stored.osb");
        if (engine.serialiseBytecode(again) != stored) std::abort();
        dumpBytecode(program);
        engine.runBytecode(program);
    } catch (const std::exception&) {
        // a message or a script error, as it should be
    }
    return 0;
}
