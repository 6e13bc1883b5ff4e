// Named classes and named bytes, as two tables that are searched from the top: names are met only while a pattern is
// compiled, and are few.

#include "pattern/byte_classes.h"

#include <algorithm>
#include <array>

namespace pattern {

namespace {

struct NamedClass {
    std::string_view name;
    ByteSet set;
};

constexpr ByteSet graph = ByteSet::range('!', '~');

constexpr std::array<NamedClass, 15> namedClasses{{
    {"alnum", classes::alnum},
    {"alpha", classes::alpha},
    {"blank", ByteSet::of(' ') | ByteSet::of('\t')},
    {"cntrl", ByteSet::range(0, 31) | ByteSet::of(127)},
    {"d", classes::digits},
    {"digit", classes::digits},
    {"graph", graph},
    {"lower", classes::lower},
    {"print", graph | ByteSet::of(' ')},
    {"punct", graph & ~classes::alnum},
    {"s", classes::space},
    {"space", classes::space},
    {"upper", classes::upper},
    {"w", classes::word},
    {"xdigit", classes::digits | ByteSet::range('a', 'f') | ByteSet::range('A', 'F')},
}};

// The name of each byte below 128, by its code. A letter's name is the letter itself and left empty here.
constexpr std::array<std::string_view, 128> byteNames{
    "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "alert", "backspace", "tab", "newline", "vertical-tab",
    "form-feed", "carriage-return", "SO", "SI", "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB", "CAN", "EM",
    "SUB", "ESC", "IS4", "IS3", "IS2", "IS1",
    // from the blank on
    "space", "exclamation-mark", "quotation-mark", "number-sign", "dollar-sign", "percent-sign", "ampersand",
    "apostrophe", "left-parenthesis", "right-parenthesis", "asterisk", "plus-sign", "comma", "hyphen", "period",
    "slash", "zero", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "colon", "semicolon",
    "less-than-sign", "equals-sign", "greater-than-sign", "question-mark",
    // from the commercial at on
    "commercial-at", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "",
    "", "left-square-bracket", "backslash", "right-square-bracket", "circumflex", "underscore",
    // from the grave accent on
    "grave-accent", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "",
    "", "left-curly-bracket", "vertical-line", "right-curly-bracket", "tilde", "DEL"};

bool sameWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(static_cast<Byte>(x)) == lowered(static_cast<Byte>(y)); });
}

} // namespace

ByteSet foldedByte(Byte byte, Case letters) {
    ByteSet set = ByteSet::of(byte);
    if (letters == Case::Ignored) set |= ByteSet::of(lowered(byte)) | ByteSet::of(raised(byte));
    return set;
}

ByteSet foldedRange(Byte low, Byte high, Case letters) {
    const ByteSet range = ByteSet::range(low, high);
    if (letters == Case::Sensitive) return range;
    ByteSet set = range;
    for (unsigned code = 0; code < 256; ++code) {
        const Byte byte = static_cast<Byte>(code);
        if (range.contains(lowered(byte)) || range.contains(raised(byte))) set.add(byte);
    }
    return set;
}

std::optional<ByteSet> namedClass(std::string_view name, Case letters) {
    const auto found = std::find_if(namedClasses.begin(), namedClasses.end(),
                                    [name](const NamedClass& known) { return sameWithoutCase(known.name, name); });
    if (found == namedClasses.end()) return std::nullopt;
    const bool isOneCase = found->set == classes::upper || found->set == classes::lower;
    return letters == Case::Ignored && isOneCase ? classes::alpha : found->set;
}

std::optional<Byte> namedByte(std::string_view name) {
    if (name.empty()) return std::nullopt;
    if (name.size() == 1) {
        const Byte byte = static_cast<Byte>(name.front());
        return isLetter(byte) ? std::optional(byte) : std::nullopt;
    }
    const auto found = std::find(byteNames.begin(), byteNames.end(), name);
    if (found == byteNames.end()) return std::nullopt;
    return static_cast<Byte>(found - byteNames.begin());
}

} // namespace pattern
