// The face of the engine: compiles, and sets up a search.

#include "pattern/pattern.h"

#include "pattern/compiler.h"
#include "pattern/parser.h"
#include "pattern/searcher.h"

namespace pattern {

namespace {

// A step is one instruction of the matcher or one return to an earlier choice, and takes some ten nanoseconds at most.
// The constant part lets patterns with much to try succeed on ordinary texts, and bounds the time of a hopeless search
// to about half a second.
constexpr std::int64_t stepsOfAnySearch = 50'000'000;
constexpr std::int64_t stepsPerByte = 16;

} // namespace

StepBudget::StepBudget(std::size_t length)
    : left_(stepsOfAnySearch + stepsPerByte * static_cast<std::int64_t>(length)) {}

Pattern Pattern::compile(std::string_view source, const Flags& flags) {
    const Case letters = flags.ignoreCase ? Case::Ignored : Case::Sensitive;
    const LoneQuantifier lone = flags.loneQuantifiers ? LoneQuantifier::RepeatsNothing : LoneQuantifier::IsFault;
    return Pattern(std::make_shared<const Program>(pattern::compile(parse(source, letters, lone), letters)));
}

std::size_t Pattern::captureCount() const { return program_->groups; }

bool Pattern::search(std::string_view text, std::size_t from, Match& match) const {
    StepBudget budget(text.size() - from);
    return Searcher(*program_, text, match, budget).search(from, {});
}

} // namespace pattern
