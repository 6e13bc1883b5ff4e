// The numbers under which expressions know some of the library's functions.
//
// The table is in the order of the numbers, so that a row's place is its number; a function that is registered under
// one of these names gets the number, whatever the script later does with the name.

#include "script/callable.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::array<std::string_view, 37> builtinNames = {
    "assert",       "getTimeMs",    "toString",     "toNumber",     "error",          "pcall",       "load",
    "pairs",        "ipairs",       "next",         "select",       "collectGarbage", "len",         "string.len",
    "string.upper", "string.sub",   "string.find",  "string.match", "string.gmatch",  "string.byte", "string.format",
    "string.gsub",  "table.insert", "table.remove", "table.concat", "table.sort",     "math.floor",  "math.ceil",
    "math.abs",     "math.min",     "math.max",     "math.sin",     "math.cos",       "math.rad",    "math.log",
    "math.sqrt",    "utf8.len",
};

static_assert(builtinNames.size() == static_cast<std::size_t>(BuiltinId::Utf8Len));

} // namespace

BuiltinId builtinIdFromName(std::string_view name) {
    const auto place = std::find(builtinNames.begin(), builtinNames.end(), name);
    if (place == builtinNames.end()) return BuiltinId::None;
    return static_cast<BuiltinId>(place - builtinNames.begin() + 1);
}
