// The comparison, and the list of the places where we don't follow std::regex of libstdc++:
//
// * Ends of ranges are compared as unsigned bytes. libstdc++ compares chars, which are signed on some platforms, so
//   that [a-\xFF] is a fault on one and a range on another.
// * A number between { and } that is too large is a fault. libstdc++ lets it wrap around, or runs out of states; the
//   number of a back reference wraps around, too.
// * Captures made within a look ahead vanish when the matcher goes back before it. libstdc++ keeps them, so that
//   (?:(?=(a))b|a) reports a group that took no part in the match, and a back reference finds it.
// * Within a look ahead, "^", "\b" and "\B" see the same text as outside. libstdc++ takes the place where the look
// ahead
//   begins for the begin of the text, if the match begins where the search does.
// * Behind an empty match, the next one must not be empty; what a look ahead sees may be. libstdc++ lets a look ahead
//   fail there if it matches the empty text.

#include "comparison.h"

#include "pattern/match_iterator.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <vector>

namespace pattern {

namespace {

constexpr std::size_t maxMatches = 64;    // compared in one subject
constexpr std::int64_t maxSteps = 20'000; // of our matcher; std::regex needs more
constexpr std::size_t maxLoops = 5;       // more may take std::regex very long
constexpr std::size_t maxNestedLoops = 1;
constexpr std::size_t maxWays = 7;              // loops and alternatives together, when loops stand within loops
constexpr std::size_t nestedSubject = 10;       // bytes; longer ones may, when loops stand within loops
constexpr std::size_t maxCountDigits = 2;       // of a number between { and }: std::regex writes all copies out
constexpr std::size_t maxNestedCountDigits = 1; // when loops stand within loops: copies multiply the ways
constexpr std::size_t maxReferenceDigits = 9;

using Spans = std::vector<Span>; // of one match

bool has(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::size_t countOf(std::string_view text, std::string_view bytes) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [bytes](char c) { return has(bytes, std::string_view(&c, 1)); }));
}

/// Whether a byte above 127 may be the end of a range.
bool mayHaveHighRange(std::string_view source) {
    const bool hasHigh = std::any_of(source.begin(), source.end(), [](char c) { return (c & 0x80) != 0; });
    return has(source, "[") && has(source, "-") && (hasHigh || has(source, "\\x") || has(source, "\\u"));
}

/// Whether a number between { and } has more than so many digits.
bool hasLongCount(std::string_view source, std::size_t maxDigits) {
    for (std::size_t at = source.find('{'); at != std::string_view::npos; at = source.find('{', at + 1)) {
        std::size_t digits = 0;
        for (const char c : source.substr(at + 1)) {
            if (c != ',' && std::isdigit(static_cast<unsigned char>(c)) == 0) break;
            digits = c == ',' ? 0 : digits + 1;
            if (digits > maxDigits) return true;
        }
    }
    return false;
}

/// A back reference whose number overflows in libstdc++.
bool hasLongReference(std::string_view source) {
    for (std::size_t at = source.find('\\'); at != std::string_view::npos; at = source.find('\\', at + 1)) {
        const std::size_t first = at + 1;
        const std::size_t end = std::min(source.find_first_not_of("0123456789", first), source.size());
        if (end - first > maxReferenceDigits) return true;
    }
    return false;
}

bool hasGroupThatCaptures(std::string_view source) {
    for (std::size_t at = source.find('('); at != std::string_view::npos; at = source.find('(', at + 1))
        if (!source.substr(at).starts_with("(?")) return true;
    return false;
}

/// Loops within loops, and loops over alternatives, are what std::regex can spend minutes on.
bool mayTakeLong(std::string_view source, std::string_view subject) {
    constexpr std::string_view quantifiers = "*+?{";
    std::size_t loops = countOf(source, quantifiers);
    std::size_t nested = 0; // quantifiers of groups and of other quantifiers
    for (std::size_t i = 0; i + 1 < source.size(); ++i) {
        const bool isGroup = source[i] == '(' && source[i + 1] == '?';
        if (isGroup) --loops;
        if (has(")*+?}", source.substr(i, 1)) && has(quantifiers, source.substr(i + 1, 1))) ++nested;
    }
    if (loops > maxLoops || nested > maxNestedLoops) return true;
    if (nested > 0 && hasLongCount(source, maxNestedCountDigits)) return true;
    const std::size_t ways = loops + nested + countOf(source, "|");
    return nested > 0 && (ways > maxWays || subject.size() > nestedSubject);
}

std::string textOf(const Spans& spans) {
    std::string text;
    for (const Span& span : spans)
        text += span.matched() ? "(" + std::to_string(span.begin) + "," + std::to_string(span.end) + ")" : "-";
    return text;
}

/// What the standard library makes of a pattern.
struct StandardPattern {
    std::optional<std::regex> compiled;
    bool isTooLarge = false; // it may be a pattern, but needs more states than libstdc++ allows
};

StandardPattern standardPattern(std::string_view source, bool ignoreCase) {
    auto flags = std::regex::ECMAScript;
    if (ignoreCase) flags |= std::regex::icase;
    try {
        return {std::regex(std::string(source), flags), false};
    } catch (const std::regex_error& error) {
        return {std::nullopt, error.code() == std::regex_constants::error_space};
    }
}

std::optional<Pattern> ourPattern(std::string_view source, bool ignoreCase) {
    try {
        return Pattern::compile(source, {ignoreCase, false});
    } catch (const PatternFault&) {
        return std::nullopt;
    }
}

std::vector<Spans> standardMatches(const std::regex& regex, const std::string& subject) {
    std::vector<Spans> matches;
    for (std::sregex_iterator at(subject.begin(), subject.end(), regex), end; at != end; ++at) {
        Spans spans;
        for (const auto& sub : *at)
            spans.push_back(sub.matched ? Span{static_cast<std::size_t>(sub.first - subject.begin()),
                                               static_cast<std::size_t>(sub.second - subject.begin())}
                                        : Span{});
        matches.push_back(std::move(spans));
        if (matches.size() == maxMatches) break;
    }
    return matches;
}

/// Nothing if there is so much to try that std::regex had better be spared.
std::optional<std::vector<Spans>> ourMatches(const Pattern& regex, const std::string& subject) try {
    std::vector<Spans> matches;
    Match match;
    for (MatchIterator iterator(regex, subject, match, StepBudget::ofSteps(maxSteps));
         matches.size() < maxMatches && iterator.next();) {
        Spans spans;
        for (std::size_t group = 0; group < match.size(); ++group) spans.push_back(match[group]);
        matches.push_back(std::move(spans));
    }
    return matches;
} catch (const PatternTooComplex&) {
    return std::nullopt;
}

/// Drops what was found after the first empty match.
void dropBehindEmpty(std::vector<Spans>& matches) {
    const auto empty =
        std::find_if(matches.begin(), matches.end(), [](const Spans& spans) { return spans[0].empty(); });
    if (empty != matches.end()) matches.erase(empty + 1, matches.end());
}

} // namespace

std::string printable(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const unsigned char byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte < 127)
            text += c;
        else
            text += std::string("\\x") + digits[byte / 16U] + digits[byte % 16U];
    }
    return text;
}

std::optional<std::string> differenceFromStandard(std::string_view source, std::string_view subject, bool ignoreCase) {
    if (mayHaveHighRange(source)) return std::nullopt;
    if (hasLongCount(source, maxCountDigits) || hasLongReference(source)) return std::nullopt;
    const std::string what =
        "/" + printable(source) + (ignoreCase ? "/i" : "/") + " on \"" + printable(subject) + "\": ";
    const StandardPattern standard = standardPattern(source, ignoreCase);
    if (standard.isTooLarge) return std::nullopt;
    const std::optional<std::regex>& theirs = standard.compiled;
    const std::optional<Pattern> ours = ourPattern(source, ignoreCase);
    if (theirs.has_value() != ours.has_value())
        return what + (theirs ? "std::regex accepts it" : "std::regex rejects it");
    if (!theirs || mayTakeLong(source, subject)) return std::nullopt;

    const std::string text(subject);
    std::optional<std::vector<Spans>> taken = ourMatches(*ours, text);
    if (!taken) return std::nullopt;
    std::vector<Spans>& found = *taken;
    std::vector<Spans> expected = standardMatches(*theirs, text);
    if (has(source, "(?=") || has(source, "(?!")) {
        if (has(source, "^") || has(source, "\\b") || has(source, "\\B")) return std::nullopt;
        if (hasGroupThatCaptures(source)) {
            if (has(source, "\\")) return std::nullopt; // there may be a back reference
            for (Spans& spans : expected) spans.resize(1);
            for (Spans& spans : found) spans.resize(1);
        }
        dropBehindEmpty(expected);
        dropBehindEmpty(found);
    }
    for (std::size_t i = 0; i < std::max(expected.size(), found.size()); ++i) {
        const std::string wanted = i < expected.size() ? textOf(expected[i]) : "none";
        const std::string got = i < found.size() ? textOf(found[i]) : "none";
        if (wanted != got) return what + "match " + std::to_string(i) + " is " + got + ", std::regex has " + wanted;
    }
    return std::nullopt;
}

} // namespace pattern
