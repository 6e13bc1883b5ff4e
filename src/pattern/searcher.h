// Finds the leftmost match in a text: skips the places where the plan of the pattern rules a match out, and runs the
// matcher at the others.

#pragma once

#include "pattern/matcher.h"

namespace pattern {

class Searcher {
public:
    /// A searcher in `text`. All arguments must outlive it.
    Searcher(const Program& program, std::string_view text, Match& match, StepBudget& budget);
    ~Searcher();
    Searcher(const Searcher&) = delete;
    Searcher& operator=(const Searcher&) = delete;

    /// Whether there is a match from `from` on; its spans are set then. `from` must not be less than in the search
    /// before. Throws PatternTooComplex.
    bool search(std::size_t from, const SearchFlags& flags);

private:
    bool searchFixed(std::size_t from, std::size_t length);
    bool searchRun(std::size_t from, const SearchFlags& flags);
    bool searchProgram(std::size_t from, const SearchFlags& flags);
    bool neededByteFollows(std::size_t begin);
    std::size_t nextCandidate(std::size_t from);
    std::size_t nextPrefix(std::size_t from);
    std::size_t nextLiteral(std::size_t from);
    std::size_t behindLeadingRun(std::size_t begin) const;
    bool setWholeMatch(std::size_t begin, std::size_t end);

    const Program& program_;
    const StartPlan& plan_;
    const Byte* text_;
    std::size_t end_;
    std::size_t* slots_;
    BacktrackStack& stack_;
    Matcher matcher_;
    std::size_t last_ = 0;        // the last place where a match may begin
    std::size_t neededPlace_ = 0; // where the plan's needed byte was last seen, if `hasSeenNeeded_`
    bool hasSeenNeeded_ = false;
};

} // namespace pattern
