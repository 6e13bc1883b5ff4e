#pragma once

// What the script fuzzers put around an engine, so that a script found by chance can neither touch files, nor fill the
// memory, nor run on for minutes.

class OstrelScript;

/// Sends standard output away; the fuzzer's own words go to the error stream.
void silenceOutput();

/// Takes from the engine every function that reaches files or other programs, and limits how many statements it runs.
void confine(OstrelScript& engine);

/// While it lives, all allocations together are bounded; beyond that, large ones fail with std::bad_alloc, as they
/// would on a machine whose memory is used up. Bytes count when they are taken, not while they are held, so that a
/// script cannot pass its time by copying large texts either.
class MemoryBudget {
public:
    MemoryBudget();
    MemoryBudget(const MemoryBudget&) = delete;
    MemoryBudget& operator=(const MemoryBudget&) = delete;
    ~MemoryBudget();
};
