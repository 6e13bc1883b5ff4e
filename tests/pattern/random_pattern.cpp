// The patterns are made from few letters, so that they match often, and have few loops, so that std::regex survives
// them.

#include "random_pattern.h"

#include <array>
#include <string_view>

namespace pattern {

namespace {

constexpr int maxDepth = 3;
constexpr int maxLoops = 5;
constexpr std::size_t maxSubject = 10;

template <std::size_t size> std::string oneOf(RandomPattern& random, const std::array<std::string_view, size>& pieces) {
    return std::string(pieces[random.below(size)]);
}

constexpr std::array<std::string_view, 14> letters{"a", "a", "a", "b", "b", "c",  "A",
                                                   "B", "1", "_", " ", "-", "ab", "\n"};
constexpr std::array<std::string_view, 20> escapes{"\\d", "\\D",  "\\w", "\\W",   "\\s",     "\\S", "\\n",
                                                   "\\t", "\\.",  "\\*", "\\x61", "\\u0062", "\\0", "\\a",
                                                   "\\_", "\\\\", "\\-", ".",     ".",       "."};
constexpr std::array<std::string_view, 4> places{"^", "$", "\\b", "\\B"};
constexpr std::array<std::string_view, 14> quantifiers{"*",   "+",    "?",     "*?",    "+?",   "??",     "{2}",
                                                       "{0}", "{1,}", "{0,2}", "{1,3}", "{0,}", "{1,2}?", "{2,}?"};
constexpr std::array<std::string_view, 26> bracketItems{
    "a",     "b",       "c",          "A",   "1",   "_",         "-",         "a-c",      "A-B",
    "B-b",   "\\d",     "\\w",        "\\s", "\\W", "[:alpha:]", "[:upper:]", "[:w:]",    "[=a=]",
    "[.a.]", "[.a.]-c", "[.hyphen.]", "\\n", "\\b", "\\]",       "^",         "[:punct:]"};
constexpr std::array<std::string_view, 51> soupPieces{
    "a",   "b",  "A",  "1",  "(",  ")",   "(",   ")",     "(?:",   "(?=", "(?!",  "(?",   "|",
    "*",   "+",  "?",  "{",  "}",  "{1",  "{2}", "{1,}",  "{0,1}", ",",   "[",    "]",    "[^",
    "-",   "^",  "$",  ".",  "\\", "\\b", "\\B", "\\d",   "\\1",   "\\2", "\\x",  "\\x6", "\\u00",
    "\\0", "[:", ":]", "[=", "=]", "[.",  ".]",  "alpha", "a-b",   "b-a", "\\w-", "-\\d"};

} // namespace

std::string RandomPattern::sound() {
    groups_ = loops_ = 0;
    return choice(0);
}

std::string RandomPattern::soup() {
    std::string text;
    for (std::size_t pieces = 1 + below(10); pieces > 0; --pieces) text += oneOf(*this, soupPieces);
    return text;
}

std::string RandomPattern::subject() {
    std::string text;
    for (std::size_t size = below(maxSubject + 1); text.size() < size;) text += "aaaabbbcAB1_ -\n\r"[below(16)];
    return text;
}

std::string RandomPattern::choice(int depth) {
    std::string text = sequence(depth);
    while (below(4) == 0) text += "|" + sequence(depth);
    return text;
}

std::string RandomPattern::sequence(int depth) {
    std::string text;
    for (std::size_t items = below(8) == 0 ? 0 : 1 + below(3); items > 0; --items) {
        if (below(12) == 0) {
            text += oneOf(*this, places);
        } else if (depth < maxDepth && below(16) == 0) {
            text += (below(2) == 0 ? "(?=" : "(?!") + choice(depth + 1) + ")";
        } else {
            text += atom(depth) + quantifier();
            if (below(20) == 0) text += quantifier();
        }
    }
    return text;
}

std::string RandomPattern::atom(int depth) {
    const std::size_t kind = below(20);
    if (depth < maxDepth && kind < 4) {
        ++groups_;
        return "(" + choice(depth + 1) + ")";
    }
    if (depth < maxDepth && kind < 7) return "(?:" + choice(depth + 1) + ")";
    if (kind < 9) return bracket();
    if (kind < 11) return oneOf(*this, escapes);
    if (kind == 11 && groups_ > 0) return "\\" + std::to_string(1 + below(static_cast<std::size_t>(groups_)));
    return oneOf(*this, letters);
}

std::string RandomPattern::quantifier() {
    if (loops_ == maxLoops || below(5) > 1) return "";
    ++loops_;
    return oneOf(*this, quantifiers);
}

std::string RandomPattern::bracket() {
    std::string text = below(3) == 0 ? "[^" : "[";
    for (std::size_t items = 1 + below(3); items > 0; --items) text += oneOf(*this, bracketItems);
    return text + "]";
}

} // namespace pattern
