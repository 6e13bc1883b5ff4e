// What can go wrong with a pattern: it cannot be read, or a search with it takes too much.

#pragma once

#include <stdexcept>
#include <string>

namespace pattern {

/// The text of a pattern breaks the grammar or a limit of size. what() says which, in words for the pattern's author.
class PatternFault : public std::runtime_error {
public:
    explicit PatternFault(const std::string& text) : std::runtime_error(text) {}
};

/// A search took more steps or more memory than its limit. The pattern is sound, and may do for another text.
class PatternTooComplex : public std::runtime_error {
public:
    PatternTooComplex() : std::runtime_error("pattern is too complex for this text") {}
};

} // namespace pattern
