// Random patterns and subjects for comparisons.

#pragma once

#include <random>
#include <string>

namespace pattern {

class RandomPattern {
public:
    explicit RandomPattern(std::uint64_t seed) : random_(seed) {}

    /// A pattern that follows the grammar, nearly always.
    std::string sound();

    /// Pieces of patterns in any order; more often than not it is a fault.
    std::string soup();

    /// A short text of the bytes that the patterns are about.
    std::string subject();

    /// A number from 0 to `limit` - 1.
    std::size_t below(std::size_t limit) { return random_() % limit; }

private:
    std::string choice(int depth);
    std::string sequence(int depth);
    std::string atom(int depth);
    std::string quantifier();
    std::string bracket();

    std::mt19937_64 random_;
    int groups_ = 0; // opened so far
    int loops_ = 0;  // quantifiers so far
};

} // namespace pattern
