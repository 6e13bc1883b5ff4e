#include "found.h"

#include "comparison.h"
#include "pattern/match_iterator.h"

namespace pattern {

namespace {

std::string textOf(const Match& match) {
    std::string text;
    for (std::size_t group = 0; group < match.size(); ++group) {
        if (group > 0) text += ' ';
        const Span span = match[group];
        text += span.matched() ? std::to_string(span.begin) + "-" + std::to_string(span.end) : "-";
    }
    return text;
}

bool matchesWhole(const Pattern& compiled, const std::string& subject) {
    Match match;
    return compiled.search(subject, 0, match) && match[0] == Span{0, subject.size()};
}

} // namespace

std::string found(std::string_view source, std::string_view subject, const Flags& flags, std::size_t from) {
    Match match;
    return Pattern::compile(source, flags).search(subject, from, match) ? textOf(match) : "none";
}

std::string foundAll(std::string_view source, std::string_view subject, const Flags& flags) {
    const Pattern compiled = Pattern::compile(source, flags);
    std::string text;
    Match match;
    for (MatchIterator matches(compiled, subject, match); matches.next();)
        text += (text.empty() ? "" : " | ") + textOf(match);
    return text.empty() ? "none" : text;
}

std::string matchedBytes(std::string_view source, const Flags& flags) {
    const Pattern compiled = Pattern::compile(source, flags);
    const auto isMatched = [&](int code) {
        return code < 256 && matchesWhole(compiled, std::string(1, static_cast<char>(code)));
    };
    std::string text;
    for (int code = 0; code < 256; ++code) {
        if (!isMatched(code)) continue;
        const int first = code;
        while (isMatched(code + 1)) ++code;
        text += (text.empty() ? "" : " ") + printable(std::string(1, static_cast<char>(first)));
        if (code > first) text += "-" + printable(std::string(1, static_cast<char>(code)));
    }
    return text;
}

std::string faultOf(std::string_view source, const Flags& flags) try {
    Pattern::compile(source, flags);
    return "none";
} catch (const PatternFault& fault) {
    return fault.what();
}

} // namespace pattern
