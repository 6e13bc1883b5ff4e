#pragma once

// Tokens and what is known about each of them.
//
// A line is cut into tokens once and every token is analysed once, when its text is first seen. From then on the
// expression machinery works on these records and never looks at the characters of a token again.

#include "script/name.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The part of a token's text that decides what an expression does with it.
enum class TokenKind : std::uint8_t {
    Other,      // brackets, separators, and words that no expression accepts
    Identifier, // a name, or a name with an explicit scope behind `#`
    True,
    False,
    Integer, // a decimal number that fits 32 bits
    Float,   // any other number
    String,  // a literal, quotes and escapes still in place
    Pointer, // `$` and hexadecimal digits
    Nil,     // the word `not`, which is also the logical negation
    Varargs, // `...`
};

/// Operators with two operands; the numbers are their order in the precedence table.
enum class BinaryOperator : std::uint8_t {
    None = 0,
    Or = 1,
    And = 2,
    Equal = 3,
    NotEqual = 4,
    Less = 5,
    Greater = 6,
    LessOrEqual = 7,
    GreaterOrEqual = 8,
    Add = 9,
    Subtract = 10,
    Multiply = 11,
    Divide = 12,
    IntegerDivide = 13,
    Modulo = 14,
    Power = 15,
    Tetration = 16,
    Pentation = 17,
};

/// Scopes that a name can ask for by number, as in `name#1`.
enum class ExplicitScope : std::uint8_t { External = 0, Global = 1, Native = 2, Block = 3, None = 255 };

struct TokenAnalysis {
    TokenKind kind = TokenKind::Other;
    BinaryOperator binaryOperator = BinaryOperator::None;
    ExplicitScope explicitScope = ExplicitScope::None; // of a name in the form `name#N`
    bool isIdentifier = false; // shaped like a name; words such as `true`, `not` or `end` are, too
    bool endsNegation = false; // behind the word `not`, this token makes it the nil literal
    int intValue = 0;          // of an Integer
    Name* name = nullptr;      // of an identifier, without the `#N`
    Ref<ScriptText> text;      // of a String: what it stands for

    bool isTrue() const { return kind == TokenKind::True; }
    bool isFalse() const { return kind == TokenKind::False; }
    bool isNumeric() const { return kind == TokenKind::Integer || kind == TokenKind::Float; }
    bool hasIntValue() const { return kind == TokenKind::Integer; }
};

/// The precedence of an operator: 1 binds least, 7 most.
int binaryLevel(BinaryOperator binaryOperator);
/// True for the operators that group from the right.
bool isRightAssociative(BinaryOperator binaryOperator);
/// The operator that this token is, or None.
BinaryOperator classifyBinaryOperator(const std::string& token);
/// The token that an operator is written as, in its first spelling; empty for None.
std::string_view operatorToken(BinaryOperator binaryOperator);
/// The level at which the operand of every unary operator is read.
constexpr int unaryLevel = 7;

/// The text of a string literal: the quotes go, `\t`, `\r` and `\n` become their characters, a backslash before
/// anything else gives that byte. A token that is no literal comes back unchanged.
std::string decodeStringToken(const std::string& token);
/// Reads `$` and hexadecimal digits, at most 64 bits.
bool parsePointerLiteral(const std::string& token, void*& out);
bool isTrueToken(const std::string& token);
bool isFalseToken(const std::string& token);
/// An optional sign, digits and at most one dot, with at least one digit.
bool tokenLooksNumeric(const std::string& token);
/// The whole text as a decimal integer of 32 bits, with an optional sign.
bool parseIntStrict(const std::string& text, int& out);
/// The whole text as the C library reads a float, without a range error.
bool parseFloatStrict(const std::string& text, float& out);
/// True if `word`, standing behind the word `not`, makes that the nil literal instead of the negation.
bool isStandaloneNotBoundary(const std::string& word);
