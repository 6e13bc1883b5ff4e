// Turns the tree of a pattern into a program.

#pragma once

#include "pattern/byte_classes.h"
#include "pattern/program.h"
#include "pattern/syntax.h"

namespace pattern {

/// Compiles the tree, plan of starts included. A tree whose counted repetitions make the program too large throws
/// PatternFault.
Program compile(const Syntax& syntax, Case letters);

} // namespace pattern
