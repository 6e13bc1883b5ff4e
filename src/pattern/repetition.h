// What a quantifier says.

#pragma once

#include <cstdint>
#include <limits>

namespace pattern {

constexpr std::uint32_t noMaximum = std::numeric_limits<std::uint32_t>::max();

/// How often something is repeated, and which number is tried first.
struct Repetition {
    std::uint32_t min = 0;
    std::uint32_t max = noMaximum;
    bool lazy = false;       // the smallest number first
    bool sharesBody = false; // a plus: all rounds are the same piece of program
};

} // namespace pattern
