// The text of a pattern under a reading mark, and the escape sequences that both the plain text and the brackets of a
// pattern have.

#pragma once

#include "pattern/byte_set.h"
#include "pattern/faults.h"

#include <string_view>

namespace pattern {

class PatternText {
public:
    explicit PatternText(std::string_view text) : text_(text) {}

    bool atEnd() const { return at_ == text_.size(); }

    /// True if the rest of the text begins with `part`.
    bool isNext(std::string_view part) const { return text_.substr(at_).starts_with(part); }

    /// Steps over `part` if it is next.
    bool take(std::string_view part) {
        if (!isNext(part)) return false;
        at_ += part.size();
        return true;
    }

    /// The next byte, which must exist.
    Byte peek() const { return static_cast<Byte>(text_[at_]); }

    /// Steps over the next byte, which must exist, and gives it.
    Byte next() { return static_cast<Byte>(text_[at_++]); }

    /// Steps over the text up to `mark` and over the mark. Without a mark, the fault `missing` is thrown.
    std::string_view takeUntil(std::string_view mark, const char* missing) {
        const std::size_t found = text_.find(mark, at_);
        if (found == std::string_view::npos) throw PatternFault(missing);
        const std::string_view taken = text_.substr(at_, found - at_);
        at_ = found + mark.size();
        return taken;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// What an escape sequence stands for.
struct Escape {
    enum class Kind : std::uint8_t { OneByte, Class, WordBoundary, NoWordBoundary, BackReference };

    Kind kind = Kind::OneByte;
    Byte byte = 0;         // of OneByte
    ByteSet set;           // of Class
    std::size_t group = 0; // of BackReference; held to maxGroupNumber
};

constexpr std::size_t maxGroupNumber = 1'000'000'000; // larger numbers in a pattern are read as this one

/// Reads what follows a backslash. \b is a word boundary.
Escape readEscape(PatternText& text);

/// Reads what follows a backslash within a bracket: a OneByte or a Class. \b is the backspace; there are no boundaries
/// and back references.
Escape readBracketEscape(PatternText& text);

/// Reads a run of decimal digits, held to maxGroupNumber. At least one must be next.
std::size_t readNumber(PatternText& text);

} // namespace pattern
