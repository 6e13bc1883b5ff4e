// Reads a bracket.
//
// The difficulty is the hyphen, which makes a range, stands for itself at either end of the bracket and behind a range,
// and is a fault beside a class. So the last single byte is held back until the next item shows whether it begins a
// range. Ends of ranges are compared as unsigned bytes on every platform.

#include "pattern/bracket.h"

namespace pattern {

namespace {

constexpr const char* unclosed = "a [ has no ]";

class BracketReader {
public:
    BracketReader(PatternText& text, Case letters) : text_(text), letters_(letters) {}

    ByteSet read() {
        const bool negated = text_.take("^");
        if (text_.take("-")) hold('-'); // a first hyphen is a byte, which may even begin a range
        while (!text_.take("]")) readItem();
        flush();
        return negated ? ~set_ : set_;
    }

private:
    enum class Last : std::uint8_t { Nothing, OneByte, Class }; // what stands before the reading mark

    void readItem() {
        if (text_.atEnd()) throw PatternFault(unclosed);
        if (text_.take("[:")) {
            const auto named = namedClass(text_.takeUntil(":]", "a [: has no :]"), letters_);
            if (!named) throw PatternFault("a class between [: and :] is unknown");
            addClass(*named);
        } else if (text_.take("[=")) {
            const Byte byte = known(namedByte(text_.takeUntil("=]", "a [= has no =]")));
            addClass(foldedByte(byte, Case::Ignored)); // the two cases of a letter are equivalent
        } else if (text_.take("[.")) {
            hold(known(namedByte(text_.takeUntil(".]", "a [. has no .]"))));
        } else if (text_.take("-")) {
            readHyphen();
        } else if (text_.take("\\")) {
            const Escape escape = readBracketEscape(text_);
            if (escape.kind == Escape::Kind::Class)
                addClass(escape.set);
            else
                hold(escape.byte);
        } else {
            hold(text_.next());
        }
    }

    void readHyphen() {
        if (text_.isNext("]") || last_ == Last::Nothing) {
            hold('-');
            return;
        }
        if (last_ == Last::Class) throw PatternFault("a range between brackets begins with a class");
        const Byte low = held_;
        const Byte high = readRangeEnd();
        if (low > high) throw PatternFault("a range between brackets has its ends the wrong way round");
        last_ = Last::Nothing;
        set_ |= foldedRange(low, high, letters_);
    }

    Byte readRangeEnd() {
        if (text_.atEnd()) throw PatternFault(unclosed);
        if (text_.isNext("[:") || text_.isNext("[=") || text_.isNext("[."))
            throw PatternFault("a range between brackets ends with a class");
        if (!text_.take("\\")) return text_.next();
        const Escape escape = readBracketEscape(text_);
        if (escape.kind == Escape::Kind::Class) throw PatternFault("a range between brackets ends with a class");
        return escape.byte;
    }

    static Byte known(std::optional<Byte> named) {
        if (!named) throw PatternFault("a name between brackets is unknown");
        return *named;
    }

    void hold(Byte byte) {
        flush();
        last_ = Last::OneByte;
        held_ = byte;
    }

    void flush() {
        if (last_ == Last::OneByte) set_ |= foldedByte(held_, letters_);
        last_ = Last::Nothing;
    }

    void addClass(const ByteSet& set) {
        flush();
        last_ = Last::Class;
        set_ |= set;
    }

    PatternText& text_;
    Case letters_;
    ByteSet set_;
    Last last_ = Last::Nothing;
    Byte held_ = 0; // of Last::OneByte: not yet in the set
};

} // namespace

ByteSet readBracket(PatternText& text, Case letters) { return BracketReader(text, letters).read(); }

} // namespace pattern
