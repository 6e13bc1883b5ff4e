// Runs the program of a pattern at one place of a text.

#pragma once

#include "pattern/byte_classes.h"
#include "pattern/pattern.h"
#include "pattern/program.h"

namespace pattern {

/// How a search is made. All false is a search in a text of its own.
struct SearchFlags {
    bool hasPrevious = false; // the byte before `from` exists, and "^" and "\b" see it
    bool behindEmpty = false; // the match must begin at `from` and not be empty: an empty one was found there
};

class Matcher {
public:
    /// A matcher for searches in `text`. `slots` has room for all slots of the program. All arguments must outlive it.
    Matcher(const Program& program, std::string_view text, std::size_t* slots, BacktrackStack& stack,
            StepBudget& budget);

    /// Begins a search at `from`. The following attempts belong to it.
    void begin(std::size_t from, const SearchFlags& flags) {
        from_ = from;
        flags_ = flags;
    }

    /// Looks for a match that begins at `begin`. If there is one, the spans of the match are set. Throws
    /// PatternTooComplex if the budget or the stack is exhausted.
    bool matchAt(std::size_t begin);

    /// Whether the byte before `place` is a byte of a word. The begin of the text counts as the search sees it.
    bool isBehindWordByte(std::size_t place) const {
        return (place > from_ || flags_.hasPrevious) && isWordByte(text_[place - 1]);
    }

private:
    bool isTextBegin(std::size_t place) const { return place == from_ && !flags_.hasPrevious; }

    bool isWordBoundary(std::size_t place) const {
        return isBehindWordByte(place) != (place < end_ && isWordByte(text_[place]));
    }

    void setSlot(std::uint32_t slot, std::size_t value);
    bool mayEnter(const Instruction& loop, std::size_t place) const;
    void enterRound(const Instruction& loop, std::size_t place);
    void leaveAhead();
    void undoNotAhead();
    bool resume(const Instruction*& at, std::size_t& place, std::int64_t& steps);

    const Program& program_;
    const Byte* text_;
    std::size_t end_;
    std::size_t from_ = 0;
    SearchFlags flags_;
    std::size_t* slots_;
    BacktrackStack& stack_;
    StepBudget& budget_;
    std::size_t look_ = 0; // the height of the innermost look ahead's entry on the stack
};

} // namespace pattern
