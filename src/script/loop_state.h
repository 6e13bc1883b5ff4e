#pragma once

// How far a `for` has come. A walker keeps this on its own stack, a coroutine from turn to turn.

#include "script/variable.h"

#include <cstdint>
#include <vector>

/// The loop variable's course in a numeric `for`.
struct NumericLoop {
    std::int64_t current = 0;
    std::int64_t limit = 0;
    std::int64_t step = 1;

    bool isOver() const { return step > 0 ? current > limit : current < limit; }
};

/// What a generic `for` walks: a copy of the entries as they were at its start.
struct GenericLoop {
    std::vector<Variable> keys; // of pairs and ipairs; empty when `entries` holds the elements themselves
    std::vector<Variable> entries;
    bool isPairs = false;
};
