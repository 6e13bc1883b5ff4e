// Escape sequences. A backslash before a byte without a meaning of its own makes that byte stand for itself, letters
// included.

#include "pattern/pattern_text.h"

#include "pattern/byte_classes.h"

#include <algorithm>
#include <optional>

namespace pattern {

namespace {

constexpr std::size_t hexDigitsOfX = 2;
constexpr std::size_t hexDigitsOfU = 4;
constexpr Byte backspace = 8;

Escape byteEscape(Byte byte) { return {Escape::Kind::OneByte, byte, {}, 0}; }

Escape classEscape(const ByteSet& set) { return {Escape::Kind::Class, 0, set, 0}; }

std::optional<unsigned> hexDigit(Byte byte) {
    if (byte >= '0' && byte <= '9') return byte - unsigned{'0'};
    const Byte letter = lowered(byte);
    if (letter >= 'a' && letter <= 'f') return letter - unsigned{'a'} + 10;
    return std::nullopt;
}

/// Reads exactly `digits` hexadecimal digits and gives the low byte of the number: the subject is bytes, not code
/// points.
Byte readHex(PatternText& text, std::size_t digits, const char* fault) {
    unsigned number = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        const std::optional<unsigned> digit = text.atEnd() ? std::nullopt : hexDigit(text.next());
        if (!digit) throw PatternFault(fault);
        number = number * 16 + *digit;
    }
    return static_cast<Byte>(number & 0xFFU);
}

/// The escapes that mean the same inside a bracket and outside.
Escape readCommonEscape(PatternText& text) {
    const Byte byte = text.next();
    switch (byte) {
    case '0': return byteEscape(0);
    case 'f': return byteEscape('\f');
    case 'n': return byteEscape('\n');
    case 'r': return byteEscape('\r');
    case 't': return byteEscape('\t');
    case 'v': return byteEscape('\v');
    case 'd': return classEscape(classes::digits);
    case 'D': return classEscape(~classes::digits);
    case 's': return classEscape(classes::space);
    case 'S': return classEscape(~classes::space);
    case 'w': return classEscape(classes::word);
    case 'W': return classEscape(~classes::word);
    case 'x': return byteEscape(readHex(text, hexDigitsOfX, "\\x is not followed by two hexadecimal digits"));
    case 'u': return byteEscape(readHex(text, hexDigitsOfU, "\\u is not followed by four hexadecimal digits"));
    case 'c':
        if (text.atEnd()) throw PatternFault("\\c is not followed by a letter");
        return byteEscape(text.next()); // the letter itself, as the standard library has it
    default: return byteEscape(byte);
    }
}

void requireEscaped(const PatternText& text) {
    if (text.atEnd()) throw PatternFault("nothing follows the last backslash");
}

} // namespace

Escape readEscape(PatternText& text) {
    requireEscaped(text);
    const Byte byte = text.peek();
    if (byte == 'b' || byte == 'B') {
        text.next();
        return {byte == 'b' ? Escape::Kind::WordBoundary : Escape::Kind::NoWordBoundary, 0, {}, 0};
    }
    if (byte >= '1' && byte <= '9') return {Escape::Kind::BackReference, 0, {}, readNumber(text)};
    return readCommonEscape(text);
}

Escape readBracketEscape(PatternText& text) {
    requireEscaped(text);
    const Byte byte = text.peek();
    if (byte == 'b') {
        text.next();
        return byteEscape(backspace);
    }
    if (byte == 'B') throw PatternFault("\\B has no meaning between brackets");
    if (byte >= '1' && byte <= '9') throw PatternFault("a back reference has no meaning between brackets");
    return readCommonEscape(text);
}

std::size_t readNumber(PatternText& text) {
    std::size_t number = 0;
    while (!text.atEnd() && classes::digits.contains(text.peek()))
        number = std::min(number * 10 + (text.next() - std::size_t{'0'}), maxGroupNumber);
    return number;
}

} // namespace pattern
