// Compares the engine with std::regex on one pattern and one subject, all matches with all captures.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pattern {

/// What differs, in words; nothing if both agree. Patterns on which the two are meant to differ are compared as far as
/// they agree. A pattern for which std::regex would run or recurse too long is not tried, and counts as agreement.
std::optional<std::string> differenceFromStandard(std::string_view source, std::string_view subject, bool ignoreCase);

/// Bytes with all but printable ASCII as \xHH, for messages.
std::string printable(std::string_view bytes);

} // namespace pattern
