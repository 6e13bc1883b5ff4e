// The matcher: one loop over instructions, and one function that goes back to the last choice.
//
// A slot is overwritten only after its old value was put on the stack, so that taking entries off the stack in order
// restores, on the way, all that was set since. As long as the stack holds no way to come back to, there is nothing to
// restore for, and the old value isn't kept.

#include "pattern/matcher.h"

#include "pattern/byte_classes.h"
#include "pattern/byte_scan.h"

#include <algorithm>
#include <cstring>

namespace pattern {

namespace {

using Kind = BacktrackEntry::Kind;

constexpr std::size_t maxRoundsAtOnePlace = 2; // of a loop whose rounds may be empty
constexpr std::size_t bytesPerStep = 16;       // that a scan passes over in the time of one instruction, about

/// The largest place that a run from `place` may reach: `maximum` bytes on, but not behind `end`.
std::size_t reach(std::size_t place, std::uint32_t maximum, std::size_t end) {
    return maximum == noMaximum || end - place <= maximum ? end : place + maximum;
}

/// The steps that a scan from one place to another costs.
std::int64_t scanCost(std::size_t low, std::size_t high) {
    return static_cast<std::int64_t>((high - low) / bytesPerStep);
}

/// Moves `place` down to where the rest of the pattern can go on. False if that is nowhere down to `limit`.
bool giveBack(const ByteTable& follow, const Byte* text, std::size_t& place, std::size_t limit, std::size_t end) {
    if (place == end) return true;
    std::size_t at = place;
    while (at > limit && !follow.has[text[at]]) --at;
    place = at;
    return follow.has[text[at]];
}

/// Moves `place` up, over bytes of `run`, to where the rest of the pattern can go on. False if that is nowhere up to
/// `limit`.
bool takeMore(const ByteTable& run, const ByteTable& follow, const Byte* text, std::size_t& place, std::size_t limit,
              std::size_t end) {
    std::size_t at = place;
    while (at < limit && !follow.has[text[at]] && run.has[text[at]]) ++at;
    place = at;
    return at == end || follow.has[text[at]];
}

bool equalUnderMasks(const Byte* text, const Byte* bytes, const Byte* masks, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        if ((text[i] & masks[i]) != bytes[i]) return false;
    return true;
}

bool equalFolded(const Byte* a, const Byte* b, std::size_t size) {
    return std::equal(a, a + size, b, [](Byte x, Byte y) { return lowered(x) == lowered(y); });
}

} // namespace

Matcher::Matcher(const Program& program, std::string_view text, std::size_t* slots, BacktrackStack& stack,
                 StepBudget& budget)
    : program_(program), text_(reinterpret_cast<const Byte*>(text.data())), end_(text.size()), slots_(slots),
      stack_(stack), budget_(budget) {
    stack_.cutTo(0);
    stack_.push({Kind::Bottom, 0, 0});
}

inline void Matcher::setSlot(std::uint32_t slot, std::size_t value) {
    if (stack_.size() > 1) stack_.push({Kind::OldSlot, slot, slots_[slot]});
    slots_[slot] = value;
}

/// Whether the loop may begin a further round at `place`.
inline bool Matcher::mayEnter(const Instruction& loop, std::size_t place) const {
    return slots_[loop.a] != place || slots_[loop.a + 1] < maxRoundsAtOnePlace;
}

/// Marks that a round begins at `place`.
inline void Matcher::enterRound(const Instruction& loop, std::size_t place) {
    const std::size_t rounds = slots_[loop.a] == place ? slots_[loop.a + 1] : 0;
    setSlot(loop.a, place);
    setSlot(loop.a + 1, rounds + 1);
}

/// Behind the last instruction of a look ahead that succeeded: its untried ways are dropped, but what it captured can
/// still be undone.
void Matcher::leaveAhead() {
    const std::size_t outer = stack_.at(look_ - 1).place;
    std::size_t kept = look_ - 1;
    for (std::size_t height = look_ + 1; height < stack_.size(); ++height)
        if (stack_.at(height).kind == Kind::OldSlot) stack_.at(kept++) = stack_.at(height);
    stack_.cutTo(kept);
    look_ = outer;
}

/// Behind the last instruction of a look ahead that should not have succeeded: all that it did is undone.
void Matcher::undoNotAhead() {
    for (; stack_.size() - 1 > look_; stack_.pop())
        if (stack_.top().kind == Kind::OldSlot) slots_[stack_.top().index] = stack_.top().place;
    look_ = stack_.second();
    stack_.popWithSecond();
}

/// Goes back to the last untried way. False if there is none.
inline bool Matcher::resume(const Instruction*& at, std::size_t& place, std::int64_t& steps) {
    const Instruction* const code = program_.code.data();
    for (;; stack_.pop()) {
        BacktrackEntry& entry = stack_.top();
        switch (entry.kind) {
        case Kind::Bottom: return false;
        case Kind::OldSlot: slots_[entry.index] = entry.place; break;
        case Kind::Way:
            at = code + entry.index;
            place = entry.place;
            stack_.pop();
            return true;
        case Kind::Round:
            at = code + entry.index;
            place = entry.place;
            if (!mayEnter(*at, place)) break;
            stack_.pop();
            enterRound(*at, place);
            at = code + at->b;
            return true;
        case Kind::GreedyRun: {
            const Instruction& run = code[entry.index];
            const std::size_t limit = stack_.second();
            place = entry.place - 1;
            const bool goesOn = giveBack(program_.tables[run.d], text_, place, limit, end_);
            steps -= scanCost(place, entry.place);
            if (!goesOn) break;
            at = &run + 1;
            entry.place = place;
            if (place == limit) stack_.popWithSecond();
            return true;
        }
        case Kind::LazyRun: {
            const Instruction& run = code[entry.index];
            const ByteTable& bytes = program_.tables[run.a];
            const std::size_t limit = stack_.second();
            place = entry.place + 1;
            const bool goesOn = takeMore(bytes, program_.tables[run.d], text_, place, limit, end_);
            steps -= scanCost(entry.place, place);
            if (!goesOn) break;
            at = &run + 1;
            entry.place = place;
            if (place == limit || !bytes.has[text_[place]]) stack_.popWithSecond();
            return true;
        }
        case Kind::Ahead: look_ = stack_.second(); break;
        case Kind::NotAhead:
            look_ = stack_.second();
            at = code + entry.index;
            place = entry.place;
            stack_.popWithSecond();
            return true;
        case Kind::Second: break; // of an entry that is used up
        }
    }
}

bool Matcher::matchAt(std::size_t begin) {
    const Instruction* const code = program_.code.data();
    const ByteTable* const tables = program_.tables.data();
    const Byte* const literals = reinterpret_cast<const Byte*>(program_.literals.data());
    const Byte* const text = text_;
    const std::size_t end = end_;

    const std::size_t spanSlots = 2 * (program_.groups + std::size_t{1});
    for (std::size_t slot = 2; slot < spanSlots; ++slot) slots_[slot] = Span::nowhere;
    for (std::size_t slot = spanSlots; slot < program_.slots; ++slot) slots_[slot] = 0;
    stack_.cutTo(1);
    look_ = 0;

    std::int64_t steps = budget_.left_;
    const Instruction* at = code;
    std::size_t place = begin;
    // An instruction that fails leaves the switch, one that succeeds goes on with the loop.
    for (;;) {
        if (--steps < 0) throw PatternTooComplex();
        switch (at->op) {
        case Op::Accept:
            if (flags_.behindEmpty && place == from_) break;
            budget_.left_ = steps;
            slots_[0] = begin;
            slots_[1] = place;
            return true;

        case Op::Single:
            if (place == end || text[place] != at->a) break;
            ++place;
            ++at;
            continue;
        case Op::Literal:
            if (end - place < at->b || std::memcmp(text + place, literals + at->a, at->b) != 0) break;
            place += at->b;
            ++at;
            continue;
        case Op::MaskedLiteral: {
            const Byte* const bytes = literals + at->a;
            if (end - place < at->b || !equalUnderMasks(text + place, bytes, bytes + at->b, at->b)) break;
            place += at->b;
            ++at;
            continue;
        }
        case Op::Set:
            if (place == end || !tables[at->a].has[text[place]]) break;
            ++place;
            ++at;
            continue;

        case Op::Jump: at = code + at->b; continue;
        case Op::Branch: {
            const bool isFirst = place < end && tables[at->a].has[text[place]];
            at = code + (isFirst ? at->b : at->c);
            continue;
        }
        case Op::Fork:
            stack_.push({Kind::Way, at->c, place});
            at = code + at->b;
            continue;
        case Op::ForkIf:
            if (place < end && tables[at->a].has[text[place]]) {
                stack_.push({Kind::Way, at->c, place});
                at = code + at->b;
            } else {
                at = code + at->c;
            }
            continue;
        case Op::ForkEither:
            if (place < end && tables[at->a].has[text[place]]) {
                if (tables[at->d].has[text[place]]) stack_.push({Kind::Way, at->c, place});
                at = code + at->b;
            } else {
                at = code + at->c;
            }
            continue;
        case Op::ForkLazily:
            if (place < end && tables[at->a].has[text[place]]) stack_.push({Kind::Way, at->b, place});
            at = code + at->c;
            continue;

        case Op::FullRun: {
            const std::size_t top = endOfRun(tables[at->a], text, place, reach(place, at->c, end));
            steps -= scanCost(place, top);
            if (top - place < at->b) break;
            place = top;
            ++at;
            continue;
        }
        case Op::GreedyRun: {
            std::size_t top = endOfRun(tables[at->a], text, place, reach(place, at->c, end));
            steps -= scanCost(place, top);
            if (top - place < at->b) break;
            const std::size_t limit = place + at->b;
            if (!giveBack(tables[at->d], text, top, limit, end)) break;
            if (top > limit) stack_.push({Kind::GreedyRun, static_cast<std::uint32_t>(at - code), top}, limit);
            place = top;
            ++at;
            continue;
        }
        case Op::LazyRun: {
            const ByteTable& run = tables[at->a];
            const std::size_t limit = reach(place, at->c, end);
            if (end - place < at->b) break;
            std::size_t top = place + at->b;
            if (endOfRun(run, text, place, top) < top) break;
            const bool goesOn = takeMore(run, tables[at->d], text, top, limit, end);
            steps -= scanCost(place, top);
            if (!goesOn) break;
            if (top < limit && run.has[text[top]])
                stack_.push({Kind::LazyRun, static_cast<std::uint32_t>(at - code), top}, limit);
            place = top;
            ++at;
            continue;
        }
        case Op::LastOfRun:
            if (place > slots_[at->a]) {
                setSlot(at->b, place - 1);
                setSlot(at->b + 1, place);
            }
            ++at;
            continue;

        case Op::Save:
            setSlot(at->a, place);
            ++at;
            continue;
        case Op::EnterRound:
            if (mayEnter(*at, place)) {
                stack_.push({Kind::Way, at->c, place});
                enterRound(*at, place);
                at = code + at->b;
            } else {
                at = code + at->c;
            }
            continue;
        case Op::EnterLazily:
            stack_.push({Kind::Round, static_cast<std::uint32_t>(at - code), place});
            at = code + at->c;
            continue;
        case Op::MarkStack:
            slots_[at->a] = stack_.size();
            ++at;
            continue;
        case Op::CutStack:
            stack_.cutTo(slots_[at->a]);
            ++at;
            continue;

        case Op::TextBegin:
            if (!isTextBegin(place)) break;
            ++at;
            continue;
        case Op::TextEnd:
            if (place != end) break;
            ++at;
            continue;
        case Op::WordBoundary:
            if (!isWordBoundary(place)) break;
            ++at;
            continue;
        case Op::NoWordBoundary:
            if (isWordBoundary(place)) break;
            ++at;
            continue;
        case Op::BackReference:
        case Op::FoldedBackReference: {
            if (slots_[at->a + 1] == Span::nowhere) break;
            const std::size_t length = slots_[at->a + 1] - slots_[at->a];
            const Byte* const captured = text + slots_[at->a];
            if (end - place < length) break;
            const bool isEqual = at->op == Op::BackReference ? std::equal(captured, captured + length, text + place)
                                                             : equalFolded(captured, text + place, length);
            steps -= scanCost(0, length);
            if (!isEqual) break;
            place += length;
            ++at;
            continue;
        }

        case Op::Ahead:
        case Op::NotAhead:
            std::fill(slots_ + at->c, slots_ + at->d, 0);
            stack_.push({at->op == Op::Ahead ? Kind::Ahead : Kind::NotAhead, at->b, place}, look_);
            look_ = stack_.size() - 1;
            ++at;
            continue;
        case Op::AheadEnd:
            place = stack_.at(look_).place;
            at = code + stack_.at(look_).index;
            leaveAhead();
            continue;
        case Op::NotAheadEnd: undoNotAhead(); break;
        }
        --steps;
        if (!resume(at, place, steps)) {
            budget_.left_ = steps;
            return false;
        }
    }
}

} // namespace pattern
