// The string functions that search with patterns: find, match, gmatch, gsub.

#include "pattern/match_iterator.h"
#include "script/library/functions.h"
#include "script/library/patterns.h"

#include <algorithm>

namespace {

/// Kept from search to search, because it holds the memory that searching takes. No search calls a script, so no two
/// searches are ever under way at the same time.
pattern::Match& searchMemory() {
    static pattern::Match match;
    return match;
}

/// Runs a search; one that explodes fails in the words of the function that asked for it.
template <typename Search> auto guarded(const char* function, const Search& search) {
    try {
        return search();
    } catch (const pattern::PatternTooComplex&) {
        fail(std::string(function) + ": pattern is too complex for this text");
    }
}

/// A capture as a string, or nil if its group took no part.
Variable captureValue(const pattern::Match& match, std::size_t group, std::string_view text) {
    return match[group].matched() ? Variable(match[group].in(text)) : Variable();
}

void appendCaptures(std::vector<Variable>& values, const pattern::Match& match, std::string_view text) {
    for (std::size_t group = 1; group < match.size(); ++group) values.push_back(captureValue(match, group, text));
}

/// The byte, from 0, at which a search begins; a nil or missing position is the first one, one below 1 too.
std::size_t searchStart(const Variable* arguments, std::size_t count) {
    const int begin = count > 2 && !arguments[2].isNil() ? std::max(toInt(arguments[2]), 1) : 1;
    return static_cast<std::size_t>(begin) - 1;
}

constexpr std::string_view patternBytes = "$()*+-.?[^%"; // all others stand for themselves

/// True if the pattern means its own text: nothing in it repeats, selects or groups, and it is no regular expression.
bool isPlainText(std::string_view text) {
    return text.substr(0, 3) != "re:" && text.substr(0, 1) != "/" &&
           text.find_first_of(patternBytes) == std::string_view::npos;
}

Variable findPlain(std::string_view text, std::string_view searched, std::size_t start) {
    const std::size_t place = text.find(searched, start);
    if (place == std::string_view::npos) return {};
    return makeMulti({static_cast<int>(place) + 1, static_cast<int>(place + searched.size())});
}

} // namespace

Variable findFunctionImpl(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count < 2 || count > 4 || !arguments[0].isString() || !arguments[1].isString())
        fail("string['find'](s, pattern[, init[, plain]]) requires a string and a pattern");
    const std::string_view text = arguments[0].asString();
    const std::size_t start = searchStart(arguments, count);
    if (start > text.size()) return {};
    const bool plain = count > 3 && engine.isTruthy(arguments[3]);
    if (plain || isPlainText(arguments[1].asString())) return findPlain(text, arguments[1].asString(), start);

    const CompiledGsubPattern& compiled = getCachedGsubPattern(arguments[1].asString());
    pattern::Match& match = searchMemory();
    if (!guarded("string['find']", [&] { return compiled.regex.search(text, start, match); })) return {};
    std::vector<Variable> values{static_cast<int>(match[0].begin) + 1, static_cast<int>(match[0].end)};
    appendCaptures(values, match, text);
    return makeMulti(std::move(values));
}

Variable matchFunctionImpl(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count < 2 || count > 3 || !arguments[0].isString() || !arguments[1].isString())
        fail("string['match'](s, pattern[, init]) requires a string and a pattern");
    const std::string_view text = arguments[0].asString();
    const std::size_t start = searchStart(arguments, count);
    if (start > text.size()) return {};
    const CompiledGsubPattern& compiled = getCachedGsubPattern(arguments[1].asString());
    pattern::Match& match = searchMemory();
    if (!guarded("string['match']", [&] { return compiled.regex.search(text, start, match); })) return {};
    if (match.size() == 1) return Variable(match[0].in(text));
    if (match.size() == 2) return captureValue(match, 1, text);
    std::vector<Variable> values;
    appendCaptures(values, match, text);
    return makeMulti(std::move(values));
}

Variable gmatchFunctionImpl(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 2 || !arguments[0].isString() || !arguments[1].isString())
        fail("string['gmatch'](s, pattern) requires a string and a pattern");
    const std::string_view text = arguments[0].asString();
    const CompiledGsubPattern& compiled = getCachedGsubPattern(arguments[1].asString());
    pattern::Match& match = searchMemory();
    Elements found;
    pattern::MatchIterator matches(compiled.regex, text, match);
    while (guarded("string['gmatch']", [&] { return matches.next(); })) {
        requireResultElements(found.size() + 1, "string['gmatch']");
        if (match.size() <= 2) {
            found.push_back(captureValue(match, match.size() - 1, text));
            continue;
        }
        std::vector<Variable> captures;
        appendCaptures(captures, match, text);
        found.push_back(makeArray(std::move(captures)));
    }
    return makeArray(std::move(found));
}

// ---------------------------------------------------------------------------------------------------------------------
// gsub
// ---------------------------------------------------------------------------------------------------------------------

namespace {

constexpr const char* gsubName = "gsub";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Appends a replacement text, in which a backslash calls for parts of the match.
class ReplacementWriter {
public:
    ReplacementWriter(std::string_view replacement, std::string_view text, const pattern::Match& match)
        : replacement_(replacement), text_(text), match_(match) {}

    void append(std::string& out) const {
        for (std::size_t i = 0; i < replacement_.size(); ++i) {
            if (replacement_[i] != '\\' || i + 1 == replacement_.size())
                out += replacement_[i];
            else
                appendEscape(out, ++i);
        }
        requireResultSize(out.size(), gsubName);
    }

private:
    static void appendText(std::string& out, std::string_view text) {
        requireResultSize(out.size() + text.size(), gsubName);
        out += text;
    }

    void appendEscape(std::string& out, std::size_t& i) const {
        const char c = replacement_[i];
        if (c == '&' || c == '0')
            appendText(out, match_[0].in(text_));
        else if (c == '\'')
            appendText(out, text_.substr(match_[0].end));
        else if (c == '`')
            appendText(out, text_.substr(0, match_[0].begin));
        else if (c == '+')
            appendGroup(out, match_.size() - 1);
        else if (isDigit(c))
            appendGroup(out, readGroup(i));
        else
            out += c;
    }

    /// Takes further digits for as long as the number is that of a capture; leaves `i` on the last one.
    std::size_t readGroup(std::size_t& i) const {
        auto group = static_cast<std::size_t>(replacement_[i] - '0');
        while (i + 1 < replacement_.size() && isDigit(replacement_[i + 1])) {
            const std::size_t longer = group * 10 + static_cast<std::size_t>(replacement_[i + 1] - '0');
            if (longer >= match_.size()) break;
            group = longer;
            ++i;
        }
        return group;
    }

    void appendGroup(std::string& out, std::size_t group) const {
        if (group > 0 && group < match_.size()) appendText(out, match_[group].in(text_));
    }

    std::string_view replacement_;
    std::string_view text_;
    const pattern::Match& match_;
};

void appendTableValue(std::string& out, const Table& table, std::string_view key) {
    const Variable* value = table.find(key);
    if (value == nullptr) fail("gsub replacement table missing key: " + std::string(key));
    value->appendTo(out);
}

} // namespace

Variable gsubImpl(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 3) fail("gsub(string, pattern, replacement) requires exactly 3 arguments");
    if (!arguments[0].isString()) fail("gsub(string, pattern, replacement): first argument must be a string");
    if (!arguments[1].isString()) fail("gsub(string, pattern, replacement): second argument must be a string pattern");
    const Variable& replacement = arguments[2];
    if (!replacement.isString() && !replacement.isTable())
        fail("gsub(string, pattern, replacement): replacement must be a string or table");

    const std::string_view text = arguments[0].asString();
    const CompiledGsubPattern& compiled = getCachedGsubPattern(arguments[1].asString());
    pattern::Match& match = searchMemory();
    std::string result;
    std::size_t copied = 0; // bytes of the text that are in the result or were replaced
    int replaced = 0;
    pattern::MatchIterator matches(compiled.regex, text, match);
    while (guarded(gsubName, [&] { return matches.next(); })) {
        result += text.substr(copied, match[0].begin - copied);
        if (replacement.isString())
            ReplacementWriter(replacement.asString(), text, match).append(result);
        else
            appendTableValue(result, *replacement.asTable(), match[0].in(text));
        copied = match[0].end;
        ++replaced;
    }
    requireResultSize(result.size() + (text.size() - copied), gsubName);
    result += text.substr(copied);
    return makeMulti({Variable(std::move(result)), replaced});
}
