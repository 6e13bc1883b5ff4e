#pragma once

// The patterns of the string functions: from the text that a script gives to a compiled expression.

#include "pattern/pattern.h"

#include <string>

/// One per distinct pattern text.
struct CompiledGsubPattern {
    bool isRegex = false; // the script gave a regular expression, not a pattern
    std::string source;   // the pattern text
    pattern::Pattern regex;
};

/// The compiled form of a pattern text, made on first use and kept for good. Fails with the texts of an unknown flag
/// and of an invalid expression.
const CompiledGsubPattern& getCachedGsubPattern(const std::string& text);

/// A pattern's text as a regular expression in ECMAScript's grammar.
std::string translatePattern(const std::string& text);
