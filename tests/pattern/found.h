// What a pattern finds, as text that tests can spell out: "1-3" for a span, "-" for a group that took no part, a blank
// between the spans of one match, and " | " between matches.

#pragma once

#include "pattern/pattern.h"

#include <string>
#include <string_view>

namespace pattern {

constexpr Flags ignoringCase{true, false};
constexpr Flags withLoneQuantifiers{false, true};

/// The spans of the first match in `subject` from `from` on, or "none".
std::string found(std::string_view source, std::string_view subject, const Flags& flags = {}, std::size_t from = 0);

/// The spans of all matches in `subject`, or "none".
std::string foundAll(std::string_view source, std::string_view subject, const Flags& flags = {});

/// The bytes that a pattern matches as whole subjects of one byte, as ranges: "0-9 A a-c"; bytes outside printable
/// ASCII as \xHH.
std::string matchedBytes(std::string_view source, const Flags& flags = {});

/// The text of the fault in `source`, or "none".
std::string faultOf(std::string_view source, const Flags& flags = {});

} // namespace pattern
