#pragma once

// The bound on what a single operation of a script may produce. A few lines can ask for more than any machine holds: a
// text repeated a thousand million times, or the text of an array that holds the same arrays many times over. Whoever
// makes texts or lists from what a script hands over asks here first, and the script gets an error that it can catch.

#include "script/variable.h"

#include <cstddef>

/// The most that one operation makes, in bytes of text or of list elements.
constexpr std::size_t maximumResultBytes = std::size_t{1} << 30;
/// The same in list elements.
constexpr std::size_t maximumResultElements = maximumResultBytes / sizeof(Variable);

/// The rest of requireResultSize: fails with `subject` and ": result is too large".
[[noreturn]] void failResultSize(const char* subject);

/// Fails if a text would have more than `maximumResultBytes`. `subject` is the function that makes it, or what it
/// makes.
inline void requireResultSize(std::size_t bytes, const char* subject) {
    if (bytes > maximumResultBytes) [[unlikely]]
        failResultSize(subject);
}
/// The same for a list of so many elements.
void requireResultElements(std::size_t elements, const char* subject);
