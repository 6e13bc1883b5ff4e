// The search over the places of a text.
//
// Every scan here goes forward only, so that all scans of one search together pass over the text once, whatever happens
// at the places between them. What is left to go wrong is the matcher, which has its budget of steps; a scan draws on
// the same budget at a cheaper rate.

#include "pattern/searcher.h"

#include "pattern/byte_classes.h"
#include "pattern/byte_scan.h"

#include <algorithm>
#include <cstring>

namespace pattern {

namespace {

constexpr std::size_t none = Span::nowhere; // of places: there is none

} // namespace

Searcher::Searcher(const Program& program, std::string_view text, Match& match, StepBudget& budget)
    : program_(program), plan_(program.plan), text_(reinterpret_cast<const Byte*>(text.data())), end_(text.size()),
      slots_(match.makeReady(program.groups + 1, program.slots)), stack_(match.stack_),
      matcher_(program, text, slots_, stack_, budget) {}

Searcher::~Searcher() { stack_.trim(); }

bool Searcher::search(std::size_t from, const SearchFlags& flags) {
    if (end_ - from < plan_.minLength) return false;
    last_ = flags.behindEmpty ? from : end_ - plan_.minLength;
    switch (program_.shortcut) {
    case Shortcut::Literal: return searchFixed(from, plan_.literal.bytes.size());
    case Shortcut::OneByte: return searchFixed(from, 1);
    case Shortcut::Run: return searchRun(from, flags);
    case Shortcut::None: break;
    }
    return searchProgram(from, flags);
}

/// Whatever the plan finds is a match of this length.
inline bool Searcher::searchFixed(std::size_t from, std::size_t length) {
    const std::size_t begin = nextCandidate(from);
    return begin != none && setWholeMatch(begin, begin + length);
}

inline bool Searcher::searchRun(std::size_t from, const SearchFlags& flags) {
    const ByteTable& table = program_.tables[program_.runTable];
    const std::size_t begin = program_.runMayBeEmpty ? from : nextCandidate(from);
    if (begin == none) return false;
    const std::size_t end = endOfRun(table, text_, begin, end_);
    return (end > begin || !flags.behindEmpty) && setWholeMatch(begin, end);
}

inline bool Searcher::searchProgram(std::size_t from, const SearchFlags& flags) {
    if (plan_.way == StartPlan::Way::TextBegin) {
        if (flags.hasPrevious) return false;
        last_ = from;
    }
    matcher_.begin(from, flags);
    const std::size_t first = plan_.maxFromEnd < end_ - from ? end_ - plan_.maxFromEnd : from;
    for (std::size_t begin = nextCandidate(first); begin != none; begin = nextCandidate(begin)) {
        if (plan_.hasNeededByte && !neededByteFollows(begin)) return false;
        if (plan_.atWordBegin && matcher_.isBehindWordByte(begin)) {
            do ++begin;
            while (begin < end_ && isWordByte(text_[begin]));
            continue;
        }
        if (matcher_.matchAt(begin)) return true;
        begin = plan_.leadingRun == noTable ? begin + 1 : behindLeadingRun(begin);
    }
    return false;
}

/// The next place behind a failed attempt that doesn't lead into the same run.
std::size_t Searcher::behindLeadingRun(std::size_t begin) const {
    const ByteTable& run = program_.tables[plan_.leadingRun];
    return endOfRun(run, text_, begin + plan_.leadingBytes, end_) + 1 - plan_.leadingBytes;
}

inline bool Searcher::setWholeMatch(std::size_t begin, std::size_t end) {
    slots_[0] = begin;
    slots_[1] = end;
    return true;
}

/// Whether the byte that every match has occurs late enough for a match from `begin` on.
bool Searcher::neededByteFollows(std::size_t begin) {
    const std::size_t from = begin + plan_.neededFrom;
    if (hasSeenNeeded_ && neededPlace_ >= from) return true;
    neededPlace_ = firstOf(plan_.neededByte, text_, from, end_);
    hasSeenNeeded_ = neededPlace_ < end_;
    return hasSeenNeeded_;
}

/// The first place from `from` on where a match could begin, or none.
std::size_t Searcher::nextCandidate(std::size_t from) {
    if (from > last_) return none;
    switch (plan_.way) {
    case StartPlan::Way::EveryPlace:
    case StartPlan::Way::TextBegin: return from;
    case StartPlan::Way::FirstByte: {
        const std::size_t found = firstOf(static_cast<Byte>(plan_.literal.bytes.front()), text_, from, last_ + 1);
        return found > last_ ? none : found;
    }
    case StartPlan::Way::FirstSet: return nextPrefix(from);
    case StartPlan::Way::FixedLiteral: return nextLiteral(from);
    }
    return none;
}

/// The first place from `from` on whose bytes are in the plan's sets for the first bytes of a match, or none.
inline std::size_t Searcher::nextPrefix(std::size_t from) {
    const ByteTable* const tables = program_.tables.data();
    const ByteTable& first = tables[plan_.prefixTables[0]];
    const std::size_t limit = last_ + 1;
    for (std::size_t begin = firstOf(first, text_, from, limit); begin < limit;
         begin = firstOf(first, text_, begin + 1, limit)) {
        std::size_t checked = 1;
        while (checked < plan_.prefix && tables[plan_.prefixTables[checked]].has[text_[begin + checked]]) ++checked;
        if (checked == plan_.prefix) return begin;
    }
    return none;
}

/// The first place from `from` on that has the plan's literal at the planned distance, or none.
inline std::size_t Searcher::nextLiteral(std::size_t from) {
    const PairedLiteral& literal = plan_.literal;
    const std::size_t limit = last_ + plan_.offset + 1;
    const std::size_t found = literal.bytes.size() == 1
                                  ? firstOf(static_cast<Byte>(literal.bytes.front()), text_, from + plan_.offset, limit)
                                  : firstOf(literal, text_, from + plan_.offset, limit);
    return found == limit ? none : found - plan_.offset;
}

} // namespace pattern
