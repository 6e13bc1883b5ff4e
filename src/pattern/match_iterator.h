// All matches in a text, one after the other.

#pragma once

#include "pattern/searcher.h"

namespace pattern {

/// Steps through the matches that don't overlap, from left to right, exactly as std::regex_iterator does: a match
/// begins where the last one ended or later; behind an empty match, one that isn't empty is tried for at the same place
/// first. One budget of steps serves for the whole walk.
///
///     pattern::Match match;
///     for (pattern::MatchIterator matches(pattern, text, match);
///     matches.next();) use(match[0]);
class MatchIterator {
public:
    /// A walk over the matches of `pattern` in `text`. All three arguments must outlive it.
    MatchIterator(const Pattern& pattern, std::string_view text, Match& match)
        : MatchIterator(pattern, text, match, StepBudget(text.size())) {}

    /// The same with a budget of the caller's.
    MatchIterator(const Pattern& pattern, std::string_view text, Match& match, const StepBudget& budget)
        : text_(text), match_(match), budget_(budget), searcher_(*pattern.program_, text, match, budget_) {}

    /// Finds the next match, whose spans `match` then has. False behind the last one. Throws PatternTooComplex.
    bool next();

private:
    std::string_view text_;
    Match& match_;
    StepBudget budget_;
    Searcher searcher_;
    bool hasPrevious_ = false;
    Span last_; // the match before; nowhere at first
    bool ended_ = false;
};

} // namespace pattern
