// What is measured: patterns, and the text that they are searched in.

#pragma once

#include <string>
#include <vector>

namespace pattern::bench {

struct Case {
    const char* name;
    const char* source;        // for our engine and for std::regex
    const char* lua = nullptr; // the same for Lua's matcher, if it can say it
    bool ignoreCase = false;
};

/// Patterns of every kind that scripts use, about half of which Lua can say, too.
const std::vector<Case>& cases();

/// 64 KiB of lines: prose, assignments, dates, addresses, lists, quotations, tags. The same in every run.
const std::string& subject();

} // namespace pattern::bench
