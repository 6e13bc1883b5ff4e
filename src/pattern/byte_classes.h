// The bytes that have a name in a pattern: classes such as \d and [:alpha:], and the collating elements of brackets
// such as [.hyphen.]. ASCII only, whatever the platform's locale says: a byte above 127 belongs to no class.

#pragma once

#include "pattern/byte_set.h"

#include <array>
#include <optional>
#include <string_view>

namespace pattern {

enum class Case : std::uint8_t { Sensitive, Ignored };

namespace classes {

constexpr ByteSet lineEnds = ByteSet::of('\n') | ByteSet::of('\r');
constexpr ByteSet digits = ByteSet::range('0', '9');
constexpr ByteSet upper = ByteSet::range('A', 'Z');
constexpr ByteSet lower = ByteSet::range('a', 'z');
constexpr ByteSet alpha = upper | lower;
constexpr ByteSet alnum = alpha | digits;
constexpr ByteSet word = alnum | ByteSet::of('_');
constexpr ByteSet space = ByteSet::range('\t', '\r') | ByteSet::of(' ');

} // namespace classes

constexpr bool isLetter(Byte byte) { return classes::alpha.contains(byte); }

constexpr std::array<bool, 256> wordBytes = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = classes::word.contains(static_cast<Byte>(byte));
    return table;
}();

constexpr bool isWordByte(Byte byte) { return wordBytes[byte]; }
constexpr Byte lowered(Byte byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<Byte>(byte + 32) : byte; }
constexpr Byte raised(Byte byte) { return byte >= 'a' && byte <= 'z' ? static_cast<Byte>(byte - 32) : byte; }

/// `byte`, and its counterpart in the other case if case is ignored.
ByteSet foldedByte(Byte byte, Case letters);

/// The bytes from `low` to `high`. If case is ignored, also those whose counterpart lies between them.
ByteSet foldedRange(Byte low, Byte high, Case letters);

/// The class that a bracket names as [:name:], in any case: the twelve of POSIX, and d, s and w. If case is ignored,
/// `upper` and `lower` are all letters. Nothing for an unknown name.
std::optional<ByteSet> namedClass(std::string_view name, Case letters);

/// The byte that a bracket names as [.name.]: a letter stands for itself, all other bytes of ASCII go by the names that
/// POSIX gives them. Nothing for an unknown name.
std::optional<Byte> namedByte(std::string_view name);

} // namespace pattern
