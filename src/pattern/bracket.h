// The brackets of a pattern: [a-z_], [^\s,], [[:alpha:][.hyphen.][=e=]].

#pragma once

#include "pattern/byte_classes.h"
#include "pattern/pattern_text.h"

namespace pattern {

/// Reads what follows a "[" up to and over its "]" and gives the set of bytes that it matches.
ByteSet readBracket(PatternText& text, Case letters);

} // namespace pattern
