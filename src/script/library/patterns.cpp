// From a pattern's text to a compiled expression.
//
// A script writes a pattern in one of three ways: "re:" and a regular expression, "/expression/flags", or the short
// form with "%" classes, which is translated. Compiling takes much longer than most searches, so every text is compiled
// once in the life of the process.

#include "script/library/patterns.h"

#include "script/library/functions.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <unordered_map>

namespace {

constexpr std::string_view expressionPrefix = "re:";
constexpr char expressionSlash = '/';

// This one text is read with a plain dash between letters and digits, as everyone means it who writes it.
constexpr std::string_view nameDashNumber = "(%a+)-(%d+)";
constexpr std::string_view nameDashNumberExpression = "([A-Za-z]+)-([0-9]+)";

struct ClassRow {
    char letter;
    std::string_view outside; // of a set
    std::string_view inside;
};

constexpr std::array<ClassRow, 17> classRows = {{
    {'a', "[A-Za-z]", "A-Za-z"},
    {'A', "[^A-Za-z]", "^A-Za-z"},
    {'d', "\\d", "\\d"},
    {'D', "\\D", "\\D"},
    {'l', "[a-z]", "a-z"},
    {'L', "[^a-z]", "^a-z"},
    {'u', "[A-Z]", "A-Z"},
    {'U', "[^A-Z]", "^A-Z"},
    {'s', "\\s", "\\s"},
    {'S', "\\S", "\\S"},
    {'w', "\\w", "\\w"},
    {'W', "\\W", "\\W"},
    {'x', "[A-Fa-f0-9]", "A-Fa-f0-9"},
    {'X', "[^A-Fa-f0-9]", "^A-Fa-f0-9"},
    {'p', "[!-/:-@\\[-`\\{-~]", "!-/:-@\\[-`\\{-~"},
    {'P', "[^!-/:-@\\[-`\\{-~]", "^!-/:-@\\[-`\\{-~"},
    {'%', "%", "%"},
}};

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string escapeRegexLiteralChar(char c) {
    const bool special = std::string_view("$()*+.?[\\]^{|}").find(c) != std::string_view::npos;
    return special ? std::string("\\") + c : std::string(1, c);
}

std::string translateEscaped(char c, bool inSet) {
    const auto row = std::find_if(classRows.begin(), classRows.end(), [c](const ClassRow& r) { return r.letter == c; });
    if (row == classRows.end()) return escapeRegexLiteralChar(c);
    return std::string(inSet ? row->inside : row->outside);
}

/// Lets "." match line ends, too: each one outside a set and not behind a backslash becomes a set of everything.
std::string withDotAll(std::string_view expression) {
    std::string result;
    bool escaped = false;
    bool inSet = false;
    for (const char c : expression) {
        if (!escaped && !inSet && c == '.') {
            result += "[\\s\\S]";
            continue;
        }
        result += c;
        if (!escaped && c == '[') inSet = true;
        if (!escaped && c == ']') inSet = false;
        escaped = !escaped && c == '\\';
    }
    return result;
}

struct Expression {
    std::string text;
    bool ignoreCase = false;
};

void readFlags(std::string_view flags, Expression& expression) {
    bool dotAll = false;
    for (const char flag : flags) {
        if (flag == 'i')
            expression.ignoreCase = true;
        else if (flag == 'm')
            dotAll = true;
        else
            fail(std::string("gsub: unsupported regex flag '") + flag + "' (supported: i, m)");
    }
    if (dotAll) expression.text = withDotAll(expression.text);
}

/// The last slash behind the first that no backslash escapes, or nothing.
std::optional<std::size_t> closingSlash(std::string_view text) {
    std::optional<std::size_t> last;
    bool escaped = false;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (!escaped && text[i] == expressionSlash) last = i;
        escaped = !escaped && text[i] == '\\';
    }
    return last;
}

/// Reads "re:expression" and "/expression/flags"; nothing if the text is neither.
std::optional<Expression> readExpression(const std::string& text) {
    const std::string_view view = text;
    if (view.substr(0, expressionPrefix.size()) == expressionPrefix)
        return Expression{text.substr(expressionPrefix.size())};
    if (view.size() < 2 || view.front() != expressionSlash) return std::nullopt;
    const std::optional<std::size_t> close = closingSlash(view);
    if (!close) return std::nullopt;
    const std::string_view flags = view.substr(*close + 1);
    if (!std::all_of(flags.begin(), flags.end(), isLetter)) return std::nullopt;
    Expression expression{text.substr(1, *close - 1)};
    readFlags(flags, expression);
    return expression;
}

CompiledGsubPattern compilePattern(const std::string& text) {
    const std::optional<Expression> given = readExpression(text);
    const Expression expression = given ? *given : Expression{translatePattern(text)};
    pattern::Flags flags;
    flags.ignoreCase = expression.ignoreCase;
    flags.loneQuantifiers = !given;
    try {
        return {given.has_value(), text, pattern::Pattern::compile(expression.text, flags)};
    } catch (const pattern::PatternFault& fault) {
        fail("gsub: invalid regex pattern '" + text + "': " + fault.what());
    }
}

} // namespace

std::string translatePattern(const std::string& text) {
    if (text == nameDashNumber) return std::string(nameDashNumberExpression);
    std::string result;
    bool inSet = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '%') {
            result += i + 1 < text.size() ? translateEscaped(text[++i], inSet) : std::string(1, c);
        } else if (inSet) {
            if (c == ']') inSet = false;
            if (c == '\\' || c == '^') result += '\\';
            result += c;
        } else if (c == '-') {
            result += "*?";
        } else if (c == '[') {
            inSet = true;
            result += c;
        } else if (std::string_view("$()*+.?^").find(c) != std::string_view::npos) {
            result += c;
        } else {
            result += escapeRegexLiteralChar(c);
        }
    }
    return result;
}

const CompiledGsubPattern& getCachedGsubPattern(const std::string& text) {
    static std::unordered_map<std::string, std::unique_ptr<const CompiledGsubPattern>> cache;
    std::unique_ptr<const CompiledGsubPattern>& entry = cache[text];
    if (!entry) {
        try {
            entry = std::make_unique<const CompiledGsubPattern>(compilePattern(text));
        } catch (...) {
            cache.erase(text);
            throw;
        }
    }
    return *entry;
}
