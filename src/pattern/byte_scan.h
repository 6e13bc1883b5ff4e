// The inner loops: how far bytes go on to belong to a table, and where the first of them stands.
//
// Most scans end after a few bytes, so each begins byte by byte, with a look into the table for each. Only a scan that
// lasts goes over to sixteen bytes at once, if the set of the table is a few ranges.

#pragma once

#include "pattern/program.h"

#include <algorithm>
#include <cstring>

namespace pattern {

constexpr std::size_t nearScan = 16; // bytes; the length from which on a scan counts as one that lasts

/// The place of the first byte in [from, limit) that is in `table`, or `limit`, sixteen bytes at once.
std::size_t farFirstOf(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit);

/// The place of the first byte in [from, limit) that isn't in `table`, or `limit`, sixteen bytes at once.
std::size_t farEndOfRun(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit);

/// The first place in [from, limit) where `literal` begins, or `limit`. The literal has two bytes at least, and the
/// text goes on for its length behind `limit`.
std::size_t firstOf(const PairedLiteral& literal, const Byte* text, std::size_t from, std::size_t limit);

/// The place of the first `byte` in [from, limit), or `limit`.
inline std::size_t firstOf(Byte byte, const Byte* text, std::size_t from, std::size_t limit) {
    if (from >= limit) return limit;
    const void* const found = std::memchr(text + from, byte, limit - from);
    return found == nullptr ? limit : static_cast<std::size_t>(static_cast<const Byte*>(found) - text);
}

/// The place of the first byte in [from, limit) that is in `table`, or `limit`.
inline std::size_t firstOf(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit) {
    const std::size_t near = std::min(limit, from + nearScan);
    for (std::size_t at = from; at < near; ++at)
        if (table.has[text[at]]) return at;
    return near == limit ? limit : farFirstOf(table, text, near, limit);
}

/// The place of the first byte in [from, limit) that isn't in `table`, or `limit`.
inline std::size_t endOfRun(const ByteTable& table, const Byte* text, std::size_t from, std::size_t limit) {
    const std::size_t near = std::min(limit, from + nearScan);
    for (std::size_t at = from; at < near; ++at)
        if (!table.has[text[at]]) return at;
    return near == limit ? limit : farEndOfRun(table, text, near, limit);
}

} // namespace pattern
