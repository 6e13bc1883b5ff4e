#pragma once

// What is said of blocks whose parts don't belong together. Of a missing end the compiler says it for a whole text, the
// walker over parsed lines when it gets there.

#include "script/parsed_line.h"

/// Said where a `break` leaves a function or a script.
constexpr const char* strayBreakMessage = "break used outside a loop";

/// The fault of a block that this kind of line opens and nothing closes.
constexpr const char* missingEndMessage(LineKind kind) {
    switch (kind) {
    case LineKind::If:
    case LineKind::Elseif:
    case LineKind::Else: return "Missing 'end' for if block";
    case LineKind::While: return "Missing 'end' for while block";
    case LineKind::Repeat: return "Missing 'until' for repeat block";
    case LineKind::For: return "Missing 'end' for for block";
    case LineKind::Nest: return "Missing 'end' for nest block";
    default: return "Missing 'end' for function block";
    }
}
