// Reads the text of a pattern into its tree.

#pragma once

#include "pattern/byte_classes.h"
#include "pattern/syntax.h"

#include <string_view>

namespace pattern {

/// What a quantifier does that has nothing before it to repeat.
enum class LoneQuantifier : std::uint8_t {
    IsFault,
    RepeatsNothing, // it stands for the empty text
};

/// Reads `source`. A text that breaks the grammar, nests too deeply or is too long throws PatternFault.
Syntax parse(std::string_view source, Case letters, LoneQuantifier loneQuantifier);

} // namespace pattern
