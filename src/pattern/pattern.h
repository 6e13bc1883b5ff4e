// Regular expressions over bytes.
//
// A Pattern is compiled once from its text and never changes after; any number of threads may search with it. A search
// walks the ways through the pattern in the order in which the pattern names them and takes the first that succeeds at
// the leftmost place. What it has still to come back to lies on a stack of its own with a fixed limit, so neither the
// length of the text nor the shape of the pattern touches the native stack; and it counts its steps, so a search whose
// ways multiply ends in PatternTooComplex instead of running for years.
//
// The grammar is that of ECMAScript as the standard library's std::regex reads it, with the classes of POSIX between
// brackets. Letters, digits and cases are ASCII's; a byte above 127 is only itself. "^" and "$" match at the ends of
// the text alone, "." matches all bytes but \n and \r. A group keeps what its last round captured, a back reference to
// a group that has captured nothing fails, and the rounds of a loop may be empty twice at one place.
//
//     const auto words = pattern::Pattern::compile("([a-z]+)-(\\d+)");
//     pattern::Match match;
//     if (words.search(text, 0, match)) use(match[1].in(text));

#pragma once

#include "pattern/backtrack_stack.h"
#include "pattern/faults.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <string_view>
#include <vector>

namespace pattern {

struct Program;

/// How the text of a pattern is read.
struct Flags {
    bool ignoreCase = false; // the two cases of a letter are the same
    /// A quantifier with nothing before it to repeat stands for the empty text. Otherwise it is a fault.
    bool loneQuantifiers = false;
};

/// Where something stands in a text, in bytes from the text's begin.
struct Span {
    static constexpr std::size_t nowhere = std::numeric_limits<std::size_t>::max();

    std::size_t begin = nowhere;
    std::size_t end = nowhere;

    /// False for a group that took no part in the match.
    bool matched() const { return end != nowhere; }
    bool empty() const { return begin == end; }

    /// The bytes themselves; empty if nothing matched. `text` is the text that was searched.
    std::string_view in(std::string_view text) const {
        return matched() ? text.substr(begin, end - begin) : std::string_view();
    }

    friend bool operator==(const Span&, const Span&) = default;
};

/// What a search has found, and the memory that searching takes. Kept from search to search it spares allocations; a
/// thread needs its own. After a search that has found nothing the spans are without meaning.
class Match {
public:
    Match() = default;
    Match(const Match&) = delete;
    Match& operator=(const Match&) = delete;

    /// The number of spans: 1 for the whole match and 1 for each capturing group.
    std::size_t size() const { return size_; }

    /// The whole match for 0, else the group with this number, which must be below size().
    Span operator[](std::size_t group) const {
        const Span span{slots_[2 * group], slots_[2 * group + 1]};
        return span.matched() ? span : Span();
    }

private:
    friend class Searcher;

    /// Makes room for the spans and the other slots of a program.
    std::size_t* makeReady(std::size_t spans, std::size_t slots) {
        if (slots_.size() < slots) slots_.resize(slots);
        size_ = spans;
        return slots_.data();
    }

    std::size_t size_ = 0;
    std::vector<std::size_t> slots_; // the program's; the spans come first
    BacktrackStack stack_;
};

/// The steps that searches may still take. One budget can be shared by several searches.
class StepBudget {
public:
    /// A budget for going over `length` bytes once.
    explicit StepBudget(std::size_t length);

    /// A budget of exactly this many steps.
    static StepBudget ofSteps(std::int64_t steps) {
        StepBudget budget(0);
        budget.left_ = steps;
        return budget;
    }

private:
    friend class Matcher;

    std::int64_t left_;
};

class Pattern {
public:
    /// Compiles `source`. Throws PatternFault if it isn't a pattern, or too large a one.
    static Pattern compile(std::string_view source, const Flags& flags = {});

    /// The number of capturing groups.
    std::size_t captureCount() const;

    /// Searches the leftmost match in the part of `text` from `from` on, which counts as a text of its own: "^" matches
    /// at `from`. The spans count from the begin of `text`. `from` must not be past the end.
    /// @return whether there is a match. Throws PatternTooComplex if that can't be told in reasonable time and memory.
    bool search(std::string_view text, std::size_t from, Match& match) const;

private:
    friend class MatchIterator;

    explicit Pattern(std::shared_ptr<const Program> program) : program_(std::move(program)) {}

    std::shared_ptr<const Program> program_;
};

} // namespace pattern
