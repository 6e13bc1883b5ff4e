// Any pattern on any subject, both short: the engine and std::regex must accept the same and find the same.
//
// An input is a byte of flags, then the pattern, a line end, and the subject; without a line end all of it is pattern.
// A pattern that std::regex would work on for long is compiled and searched by our engine alone, under a small budget.

#include "comparison.h"
#include "pattern/match_iterator.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t maxPattern = 24;
constexpr std::size_t maxSubject = 24;
constexpr std::int64_t maxSteps = 200'000;

enum InputFlag : unsigned { ignoreCase = 1, loneQuantifiers = 2 };

/// Searches all matches by our engine alone; whatever it finds must be spans of the subject.
void searchAlone(std::string_view source, std::string_view subject, const pattern::Flags& flags) try {
    const pattern::Pattern compiled = pattern::Pattern::compile(source, flags);
    pattern::Match match;
    pattern::MatchIterator matches(compiled, subject, match, pattern::StepBudget::ofSteps(maxSteps));
    while (matches.next())
        for (std::size_t group = 0; group < match.size(); ++group) {
            const pattern::Span span = match[group];
            if (span.matched() && (span.begin > span.end || span.end > subject.size())) std::abort();
        }
} catch (const pattern::PatternFault&) {
} catch (const pattern::PatternTooComplex&) {
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t lineEnd = std::min(input.find('\n'), input.size());
    const std::string_view source = input.substr(0, std::min(lineEnd, maxPattern));
    const std::string_view subject = input.substr(std::min(lineEnd + 1, input.size())).substr(0, maxSubject);
    const bool ignoresCase = (data[0] & ignoreCase) != 0;

    searchAlone(source, subject, {ignoresCase, (data[0] & loneQuantifiers) != 0});
    if (const auto difference = pattern::differenceFromStandard(source, subject, ignoresCase)) {
        std::fprintf(stderr, "%s\n", difference->c_str());
        std::abort();
    }
    return 0;
}
