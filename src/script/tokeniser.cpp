// Tokens: cutting a logical line into them and finding out what each of them is.

#include "script/ostrel_script.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$'; }
bool isNameByte(char c) { return isNameStart(c) || isDigit(c); }
bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr std::string_view delimiters = "!#%()*+,-/:;<=>[\\]^{}";

constexpr std::array<std::string_view, 16> twoByteOperators = {
    "!=", "%=", "*=", "+=", "/=", "==", ">=", "\\=", "^=", "&&", "-=", "->", "<-", "<=", "||", "~="};

bool isTwoByteOperator(std::string_view pair) {
    return std::find(twoByteOperators.begin(), twoByteOperators.end(), pair) != twoByteOperators.end();
}

struct OperatorRow {
    std::string_view token;
    BinaryOperator binaryOperator;
};

constexpr std::array<OperatorRow, 20> operatorRows = {{
    {"or", BinaryOperator::Or},
    {"||", BinaryOperator::Or},
    {"and", BinaryOperator::And},
    {"&&", BinaryOperator::And},
    {"==", BinaryOperator::Equal},
    {"!=", BinaryOperator::NotEqual},
    {"~=", BinaryOperator::NotEqual},
    {"<", BinaryOperator::Less},
    {">", BinaryOperator::Greater},
    {"<=", BinaryOperator::LessOrEqual},
    {">=", BinaryOperator::GreaterOrEqual},
    {"+", BinaryOperator::Add},
    {"-", BinaryOperator::Subtract},
    {"*", BinaryOperator::Multiply},
    {"/", BinaryOperator::Divide},
    {"\\", BinaryOperator::IntegerDivide},
    {"%", BinaryOperator::Modulo},
    {"^", BinaryOperator::Power},
    {"<-", BinaryOperator::Tetration},
    {"->", BinaryOperator::Pentation},
}};

// Behind the word `not`, these make it the nil literal. The minus sign is among them, so `not -1` is nil minus 1.
constexpr std::array<std::string_view, 28> notBoundaries = {
    "!=", "%",  "*",  "+",  "/", "\\", "^",   "&&",  ")",    ",",      "]",  "}",     "-",  "->",
    "<",  "<=", "<-", "==", ">", ">=", "and", "end", "else", "elseif", "or", "until", "||", "~="};

constexpr unsigned explicitScopeCount = 4;

} // namespace

std::vector<std::string> OstrelScript::tokenise(const std::string& line) {
    position_.text = &line;
    position_.token = noLine;

    std::vector<std::string> tokens;
    tokens.reserve(line.size() / 2);
    std::size_t start = std::string::npos; // of the token in progress
    const auto flush = [&](std::size_t end) {
        if (start != std::string::npos) tokens.emplace_back(line, start, end - start);
        start = std::string::npos;
    };

    std::size_t i = 0;
    for (; i < line.size(); ++i) {
        const char c = line[i];
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        if (c == '@' && next == '@') break;
        if (c == '"' || c == '\'') {
            flush(i);
            std::size_t close = i + 1;
            while (close < line.size() && line[close] != c) close += line[close] == '\\' ? 2 : 1;
            if (close >= line.size()) throwError("Unterminated string literal", std::string_view(line).substr(i));
            tokens.emplace_back(line, i, close + 1 - i);
            i = close;
        } else if (isSpace(c)) {
            flush(i);
        } else if (i + 1 < line.size() && isTwoByteOperator(std::string_view(line).substr(i, 2))) {
            flush(i);
            tokens.emplace_back(line, i, 2);
            ++i;
        } else if (c == '#' && start != std::string::npos && isDigit(next)) {
            // stays in the token: a name with an explicit scope
        } else if (delimiters.find(c) != std::string_view::npos) {
            flush(i);
            tokens.emplace_back(1, c);
        } else if (start == std::string::npos) {
            start = i;
        }
    }
    flush(i);
    return tokens;
}

TokenAnalysis OstrelScript::analyseToken(const std::string& token) const {
    TokenAnalysis analysis;
    analysis.binaryOperator = classifyBinaryOperator(token);
    analysis.endsNegation = isStandaloneNotBoundary(token);

    std::string name;
    unsigned char scope = 0;
    void* pointer = nullptr;
    if (parsePointerLiteral(token, pointer)) {
        analysis.kind = TokenKind::Pointer;
        return analysis;
    }
    if (isIdentifier(token)) {
        analysis.isIdentifier = true;
        analysis.kind = isTrueToken(token)    ? TokenKind::True
                        : isFalseToken(token) ? TokenKind::False
                        : token == "not"      ? TokenKind::Nil
                                              : TokenKind::Identifier;
        if (parseScopedVariableToken(token, name, scope)) {
            analysis.explicitScope = static_cast<ExplicitScope>(scope);
            analysis.name = names_.intern(name);
        } else {
            analysis.name = names_.intern(token);
        }
    } else if (!token.empty() && (token[0] == '"' || token[0] == '\'')) {
        analysis.kind = TokenKind::String;
        analysis.text = names_.texts().intern(decodeStringToken(token));
    } else if (token == "...") {
        analysis.kind = TokenKind::Varargs;
    } else if (tokenLooksNumeric(token)) {
        const bool hasFloatForm = token.find('.') != std::string::npos;
        const bool isInteger = !hasFloatForm && parseIntStrict(token, analysis.intValue);
        analysis.kind = isInteger ? TokenKind::Integer : TokenKind::Float;
    }
    return analysis;
}

bool OstrelScript::isIdentifier(const std::string& token) const {
    if (token.empty() || !isNameStart(token[0])) return false;
    void* pointer = nullptr;
    if (parsePointerLiteral(token, pointer)) return false;
    if (std::all_of(token.begin(), token.end(), isNameByte)) return true;
    std::string name;
    unsigned char scope = 0;
    return parseScopedVariableToken(token, name, scope);
}

bool OstrelScript::parseScopedVariableToken(const std::string& token, std::string& name, unsigned char& scope) const {
    const std::size_t hash = token.find('#');
    if (hash == std::string::npos || hash == 0 || hash + 1 == token.size()) return false;
    if (!isNameStart(token[0]) ||
        !std::all_of(token.begin(), token.begin() + static_cast<std::ptrdiff_t>(hash), isNameByte))
        return false;
    unsigned number = 0;
    for (std::size_t i = hash + 1; i < token.size(); ++i) {
        if (!isDigit(token[i])) return false;
        number = std::min(number * 10 + static_cast<unsigned>(token[i] - '0'), explicitScopeCount);
    }
    if (number >= explicitScopeCount) return false;
    name.assign(token, 0, hash);
    scope = static_cast<unsigned char>(number);
    return true;
}

int binaryLevel(BinaryOperator binaryOperator) {
    switch (binaryOperator) {
    case BinaryOperator::None: return 0;
    case BinaryOperator::Or: return 1;
    case BinaryOperator::And: return 2;
    case BinaryOperator::Equal:
    case BinaryOperator::NotEqual: return 3;
    case BinaryOperator::Less:
    case BinaryOperator::Greater:
    case BinaryOperator::LessOrEqual:
    case BinaryOperator::GreaterOrEqual: return 4;
    case BinaryOperator::Add:
    case BinaryOperator::Subtract: return 5;
    case BinaryOperator::Multiply:
    case BinaryOperator::Divide:
    case BinaryOperator::IntegerDivide: return 6;
    case BinaryOperator::Modulo:
    case BinaryOperator::Power:
    case BinaryOperator::Tetration:
    case BinaryOperator::Pentation: return 7;
    }
    return 0;
}

bool isRightAssociative(BinaryOperator binaryOperator) { return binaryOperator >= BinaryOperator::Power; }

BinaryOperator classifyBinaryOperator(const std::string& token) {
    for (const OperatorRow& row : operatorRows)
        if (row.token == token) return row.binaryOperator;
    return BinaryOperator::None;
}

std::string_view operatorToken(BinaryOperator binaryOperator) {
    for (const OperatorRow& row : operatorRows)
        if (row.binaryOperator == binaryOperator) return row.token;
    return {};
}

std::string decodeStringToken(const std::string& token) {
    if (token.size() < 2 || (token.front() != '"' && token.front() != '\'') || token.back() != token.front())
        return token;
    std::string text;
    text.reserve(token.size() - 2);
    const std::size_t end = token.size() - 1;
    for (std::size_t i = 1; i < end; ++i) {
        char c = token[i];
        if (c == '\\' && i + 1 < end) {
            c = token[++i];
            if (c == 't') c = '\t';
            if (c == 'r') c = '\r';
            if (c == 'n') c = '\n';
        }
        text.push_back(c);
    }
    return text;
}

bool parsePointerLiteral(const std::string& token, void*& out) {
    if (token.size() < 2 || token[0] != '$') return false;
    std::uint64_t address = 0;
    const char* const end = token.data() + token.size();
    const auto result = std::from_chars(token.data() + 1, end, address, 16);
    if (result.ec != std::errc() || result.ptr != end) return false;
    out = reinterpret_cast<void*>(static_cast<std::uintptr_t>(address));
    return true;
}

bool isTrueToken(const std::string& token) {
    return token == "true" || token == "ture" || token == "tre" || token == "tue";
}

bool isFalseToken(const std::string& token) {
    return token == "false" || token == "flase" || token == "fasle" || token == "flse";
}

bool tokenLooksNumeric(const std::string& token) {
    std::size_t digits = 0;
    std::size_t dots = 0;
    const std::size_t first = !token.empty() && (token[0] == '+' || token[0] == '-') ? 1 : 0;
    for (std::size_t i = first; i < token.size(); ++i) {
        if (isDigit(token[i]))
            ++digits;
        else if (token[i] == '.')
            ++dots;
        else
            return false;
    }
    return digits > 0 && dots <= 1;
}

bool parseIntStrict(const std::string& text, int& out) {
    const char* first = text.data();
    const char* const end = first + text.size();
    if (first != end && *first == '+') {
        ++first;
        if (first != end && *first == '-') return false; // from_chars would take the sign
    }
    const auto result = std::from_chars(first, end, out);
    return result.ec == std::errc() && result.ptr == end;
}

bool parseFloatStrict(const std::string& text, float& out) {
    errno = 0;
    char* stop = nullptr;
    out = std::strtof(text.c_str(), &stop);
    return !text.empty() && stop == text.c_str() + text.size() && errno != ERANGE;
}

bool isStandaloneNotBoundary(const std::string& word) {
    return std::find(notBoundaries.begin(), notBoundaries.end(), word) != notBoundaries.end();
}
