// Decides, from the tree of a pattern, how a search finds the places where a match could begin.

#pragma once

#include "pattern/program.h"
#include "pattern/syntax.h"

#include <functional>

namespace pattern {

/// The plan for the pattern `root`. `table` gives the number of the table for a set of bytes.
StartPlan planStarts(const Node& root, const std::function<std::uint32_t(const ByteSet&)>& table);

} // namespace pattern
