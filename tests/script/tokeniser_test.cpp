// Cutting a line into tokens, and what is known about each token.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

using Tokens = std::vector<std::string>;

Tokens tokensOf(const std::string& line) {
    OstrelScript engine;
    return engine.tokenise(line);
}

/// One token that stays whole.
Tokens alone(const std::string& token) { return {token}; }

} // namespace

// --- Cutting ---

TEST(Tokeniser, AnEmptyLineHasNoTokens) {
    EXPECT_TRUE(tokensOf("").empty());
    EXPECT_TRUE(tokensOf(" \t\r\v\f").empty());
    EXPECT_TRUE(tokensOf("@@ only a comment").empty());
}

TEST(Tokeniser, WhiteSpaceOfEveryKindSeparates) {
    EXPECT_EQ(tokensOf(" a\tb\rc\vd\fe\nf "), (Tokens{"a", "b", "c", "d", "e", "f"}));
}

TEST(Tokeniser, EveryDelimiterIsATokenOfItsOwn) {
    for (const char delimiter : std::string("!#%()*+,-/:;<=>[\\]^{}")) {
        const std::string text(1, delimiter);
        EXPECT_EQ(tokensOf("a" + text + "b"), (Tokens{"a", text, "b"})) << text;
        EXPECT_EQ(tokensOf(text + " " + text), (Tokens{text, text})) << text;
    }
}

TEST(Tokeniser, EveryTwoByteOperatorIsOneToken) {
    for (const char* pair :
         {"!=", "%=", "*=", "+=", "/=", "==", ">=", "\\=", "^=", "&&", "-=", "->", "<-", "<=", "||", "~="}) {
        EXPECT_EQ(tokensOf(std::string("a") + pair + "b"), (Tokens{"a", pair, "b"})) << pair;
        EXPECT_EQ(tokensOf(pair), alone(pair)) << pair;
    }
}

TEST(Tokeniser, OtherPairsAreTwoTokensOrAWord) {
    EXPECT_EQ(tokensOf("a=>b"), (Tokens{"a", "=", ">", "b"}));
    EXPECT_EQ(tokensOf("a<>b"), (Tokens{"a", "<", ">", "b"}));
    EXPECT_EQ(tokensOf("a--b"), (Tokens{"a", "-", "-", "b"}));
    EXPECT_EQ(tokensOf("a=-b"), (Tokens{"a", "=", "-", "b"}));
    EXPECT_EQ(tokensOf("a:=b"), (Tokens{"a", ":", "=", "b"}));
    EXPECT_EQ(tokensOf("a===b"), (Tokens{"a", "==", "=", "b"}));
    EXPECT_EQ(tokensOf("a<--b"), (Tokens{"a", "<-", "-", "b"}));
    EXPECT_EQ(tokensOf("a|b&c~d"), alone("a|b&c~d"));
    EXPECT_EQ(tokensOf("a|||b"), (Tokens{"a", "||", "|b"}));
}

TEST(Tokeniser, AnOperatorEndsAWordOnlyWhereItStands) {
    EXPECT_EQ(tokensOf("a&b&&c"), (Tokens{"a&b", "&&", "c"}));
    EXPECT_EQ(tokensOf("x~=y"), (Tokens{"x", "~=", "y"}));
    EXPECT_EQ(tokensOf("x~y"), alone("x~y"));
    EXPECT_EQ(tokensOf("x ~ y"), (Tokens{"x", "~", "y"}));
}

TEST(Tokeniser, DotsAndOtherBytesMakeWords) {
    for (const char* word : {"1.5", "...", "a.b", "x&y", ".", "?", "$", "_", "a?b$c_d", "`", "\xC3\xA9t\xC3\xA9",
                             "\x01", "\x7F", "\xFF", "t.x"})
        EXPECT_EQ(tokensOf(word), alone(word)) << word;
    EXPECT_EQ(tokensOf(std::string("a\0b", 3)), alone(std::string("a\0b", 3)));
}

TEST(Tokeniser, AnExponentWithASignFallsApart) {
    EXPECT_EQ(tokensOf("1e-5"), (Tokens{"1e", "-", "5"}));
    EXPECT_EQ(tokensOf("1e+5"), (Tokens{"1e", "+", "5"}));
    EXPECT_EQ(tokensOf("1e5"), alone("1e5"));
}

TEST(Tokeniser, TwoAtSignsStartAComment) {
    EXPECT_EQ(tokensOf("x = 1 @@ comment"), (Tokens{"x", "=", "1"}));
    EXPECT_EQ(tokensOf("x@@y"), alone("x"));
    EXPECT_EQ(tokensOf("x = \"@@\" + y"), (Tokens{"x", "=", "\"@@\"", "+", "y"}));
    EXPECT_EQ(tokensOf("a@b"), alone("a@b"));
    EXPECT_EQ(tokensOf("@"), alone("@"));
    EXPECT_EQ(tokensOf("@ @"), (Tokens{"@", "@"}));
    EXPECT_EQ(tokensOf("a@@@b"), alone("a"));
}

TEST(Tokeniser, AHashBeforeADigitStaysInAWord) {
    EXPECT_EQ(tokensOf("name#2"), alone("name#2"));
    EXPECT_EQ(tokensOf("name#x"), (Tokens{"name", "#", "x"}));
    EXPECT_EQ(tokensOf("a#"), (Tokens{"a", "#"}));
    EXPECT_EQ(tokensOf("a #2"), (Tokens{"a", "#", "2"}));
    EXPECT_EQ(tokensOf("#2"), (Tokens{"#", "2"}));
    EXPECT_EQ(tokensOf("#list"), (Tokens{"#", "list"}));
    EXPECT_EQ(tokensOf("a#1#2"), alone("a#1#2"));
    EXPECT_EQ(tokensOf("a#12b"), alone("a#12b"));
    EXPECT_EQ(tokensOf("5#2"), alone("5#2"));
    EXPECT_EQ(tokensOf(")#2"), (Tokens{")", "#", "2"}));
    EXPECT_EQ(tokensOf("a##1"), (Tokens{"a", "#", "#", "1"}));
}

TEST(Tokeniser, AStringIsOneTokenWithQuotesAndEscapes) {
    EXPECT_EQ(tokensOf("\"a b\""), alone("\"a b\""));
    EXPECT_EQ(tokensOf("'it\\'s'"), alone("'it\\'s'"));
    EXPECT_EQ(tokensOf("\"say \\\"hi\\\"\""), alone("\"say \\\"hi\\\"\""));
    EXPECT_EQ(tokensOf("\"a\\\\\""), alone("\"a\\\\\""));
    EXPECT_EQ(tokensOf("\"it's\""), alone("\"it's\""));
    EXPECT_EQ(tokensOf("''"), alone("''"));
    EXPECT_EQ(tokensOf("\"@@;([{\""), alone("\"@@;([{\""));
}

TEST(Tokeniser, NothingSeparatesAStringFromItsNeighbours) {
    EXPECT_EQ(tokensOf("a\"b\"c'd'e"), (Tokens{"a", "\"b\"", "c", "'d'", "e"}));
    EXPECT_EQ(tokensOf("\"a\"\"b\""), (Tokens{"\"a\"", "\"b\""}));
    EXPECT_EQ(tokensOf("\"a\"+1"), (Tokens{"\"a\"", "+", "1"}));
}

TEST(Tokeniser, AStringThatDoesNotCloseIsReportedFromItsQuote) {
    OstrelScript engine;
    struct Row {
        std::string line, rest;
    };
    for (const Row& row : {Row{"x = \"abc", "\"abc"}, Row{"x = 'abc\"", "'abc\""}, Row{"\"", "\""},
                           Row{"f(\"a\", \"b\\\")", "\"b\\\")"}, Row{"\"a\\", "\"a\\"}}) {
        const std::string report = messageOf([&] { engine.tokenise(row.line); });
        EXPECT_EQ(firstLineOf(report), "Unterminated string literal") << row.line;
        EXPECT_EQ(tokenOf(report), row.rest);
        EXPECT_NE(report.find("\n  " + row.line + "\n"), std::string::npos) << report;
    }
}

TEST(Tokeniser, AnyBytesGiveTokensOrTheOneFault) {
    OstrelScript engine;
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '"' && byte != '\'') all.push_back(static_cast<char>(byte));
    EXPECT_FALSE(engine.tokenise(all).empty());
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = std::string("a") + static_cast<char>(byte);
        const std::string fault = firstLineOf(messageOf([&] { engine.tokenise(text); }));
        EXPECT_EQ(fault, byte == '"' || byte == '\'' ? "Unterminated string literal" : "") << byte;
    }
}

// --- The text of a string ---

TEST(StringToken, LosesItsQuotes) {
    EXPECT_EQ(decodeStringToken("\"abc\""), "abc");
    EXPECT_EQ(decodeStringToken("'abc'"), "abc");
    EXPECT_EQ(decodeStringToken("\"\""), "");
    EXPECT_EQ(decodeStringToken("'\"'"), "\"");
}

TEST(StringToken, HasThreeEscapesForControlCharacters) {
    EXPECT_EQ(decodeStringToken("\"\\t\""), "\t");
    EXPECT_EQ(decodeStringToken("\"\\r\""), "\r");
    EXPECT_EQ(decodeStringToken("\"\\n\""), "\n");
}

TEST(StringToken, EveryOtherEscapedByteIsItself) {
    for (int byte = 1; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        if (c == 't' || c == 'r' || c == 'n') continue;
        EXPECT_EQ(decodeStringToken(std::string("\"\\") + c + "\""), std::string(1, c)) << byte;
    }
    EXPECT_EQ(decodeStringToken("\"\\065\\x41\""), "065x41");
    EXPECT_EQ(decodeStringToken("\"\\\\n\""), "\\n");
}

TEST(StringToken, ABackslashAtTheBodysEndStays) {
    EXPECT_EQ(decodeStringToken("\"a\\\""), "a\\");
    EXPECT_EQ(decodeStringToken("\"\\\""), "\\");
    EXPECT_EQ(decodeStringToken("\"\\\\\\\""), "\\\\");
}

TEST(StringToken, WhatIsNoLiteralStaysUnchanged) {
    for (const char* token : {"", "\"", "'", "abc", "\"abc", "abc\"", "\"abc'", "'abc\"", "a\\tb", "aa"})
        EXPECT_EQ(decodeStringToken(token), token);
}

// --- What a token is ---

namespace {

TokenAnalysis analysisOf(const std::string& token) {
    static OstrelScript engine;
    return engine.analyseToken(token);
}

void expectKind(TokenKind kind, std::initializer_list<const char*> tokens) {
    for (const char* token : tokens) EXPECT_EQ(analysisOf(token).kind, kind) << token;
}

} // namespace

TEST(TokenAnalysis, FourWordsAreTrueAndFourAreFalse) {
    expectKind(TokenKind::True, {"true", "ture", "tre", "tue"});
    expectKind(TokenKind::False, {"false", "flase", "fasle", "flse"});
    expectKind(TokenKind::Identifier, {"True", "TRUE", "truee", "tru", "rtue", "False", "fals", "falsee", "true_"});
    EXPECT_TRUE(isTrueToken("tre") && !isTrueToken("false") && !isTrueToken(""));
    EXPECT_TRUE(isFalseToken("flse") && !isFalseToken("true") && !isFalseToken(""));
    EXPECT_TRUE(analysisOf("tue").isTrue());
    EXPECT_TRUE(analysisOf("fasle").isFalse());
    EXPECT_TRUE(analysisOf("true").isIdentifier);
}

TEST(TokenAnalysis, NumbersAreDigitsWithASignAndADotAtMost) {
    expectKind(TokenKind::Integer, {"0", "7", "007", "2147483647", "+5", "-5", "-2147483648"});
    expectKind(TokenKind::Float, {"1.5", ".5", "5.", "0.0", "-1.5", "+.5", "2147483648", "-2147483649",
                                  "99999999999999999999999999999999999999999999999999"});
    expectKind(TokenKind::Other, {"1e5", "1E5", "1.5e3", "1..5", "1.2.3", ".", "+", "-", "+-1", "--1", "5-", "1a",
                                  "0x10", "1_0", "\xC2\xB2"});
    EXPECT_FALSE(tokenLooksNumeric(""));
    EXPECT_FALSE(tokenLooksNumeric("+."));
}

TEST(TokenAnalysis, AnIntegerKnowsItsValue) {
    EXPECT_EQ(analysisOf("42").intValue, 42);
    EXPECT_TRUE(analysisOf("42").hasIntValue());
    EXPECT_EQ(analysisOf("-2147483648").intValue, -2147483647 - 1);
    EXPECT_TRUE(analysisOf("42").isNumeric());
    EXPECT_TRUE(analysisOf("2147483648").isNumeric());
    EXPECT_FALSE(analysisOf("2147483648").hasIntValue());
    EXPECT_FALSE(analysisOf("1.0").hasIntValue());
}

TEST(TokenAnalysis, APointerIsADollarAndHexadecimalDigits) {
    expectKind(TokenKind::Pointer, {"$0", "$ff", "$FF", "$aBc9", "$FFFFFFFFFFFFFFFF", "$00000000000000000000001"});
    expectKind(TokenKind::Identifier, {"$", "$x", "$fg", "$$", "$10000000000000000", "$_", "f$f"});
    for (const char* token : {"$0", "$ff", "$FFFFFFFFFFFFFFFF"}) EXPECT_FALSE(analysisOf(token).isIdentifier) << token;
    void* address = nullptr;
    EXPECT_TRUE(parsePointerLiteral("$1aF", address));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(address), 0x1AFU);
    for (const char* token : {"", "$", "ff", "$g", "$-1", "$+1", "$ 1", "$1 ", "$0x1", "$10000000000000000"})
        EXPECT_FALSE(parsePointerLiteral(token, address)) << token;
}

TEST(TokenAnalysis, APointersTextCanBeReadBack) {
    int place = 0;
    void* address = nullptr;
    ASSERT_TRUE(parsePointerLiteral(Variable(static_cast<void*>(&place)).toString(), address));
    EXPECT_EQ(address, &place);
}

TEST(TokenAnalysis, IdentifiersAreNamesAndScopedNames) {
    const OstrelScript engine;
    for (const char* token : {"a",   "Z",     "_",    "$",   "a1",  "a_b", "a$b", "$x9",  "if",     "end",  "not",
                              "and", "local", "true", "a#0", "a#1", "a#2", "a#3", "a#03", "a#0000", "$ff#1"})
        EXPECT_TRUE(engine.isIdentifier(token)) << token;
    for (const char* token : {"",
                              "1",
                              "1a",
                              "a.b",
                              "t.x",
                              "a-b",
                              "$ff",
                              "$1",
                              "a#",
                              "a#4",
                              "a#10",
                              "a#x",
                              "a#1x",
                              "#1",
                              "#",
                              "a#1#1",
                              "a##1",
                              "1#2",
                              "a b",
                              "\xC3\xA9",
                              "...",
                              "\"a\"",
                              "a#-1",
                              "a#99999999999999999999",
                              "a#4294967296"})
        EXPECT_FALSE(engine.isIdentifier(token)) << token;
}

TEST(TokenAnalysis, AScopedNameGivesNameAndScope) {
    const OstrelScript engine;
    std::string name;
    unsigned char scope = 99;
    EXPECT_TRUE(engine.parseScopedVariableToken("abc#2", name, scope));
    EXPECT_EQ(name, "abc");
    EXPECT_EQ(scope, 2);
    EXPECT_TRUE(engine.parseScopedVariableToken("x#003", name, scope));
    EXPECT_EQ(name, "x");
    EXPECT_EQ(scope, 3);
    for (const char* token : {"abc", "#1", "abc#", "abc#4", "abc#1a", "1#1", "a-b#1", "a#1#1"})
        EXPECT_FALSE(engine.parseScopedVariableToken(token, name, scope)) << token;
}

TEST(TokenAnalysis, NamesAreOneObjectEach) {
    const OstrelScript engine;
    const TokenAnalysis plain = engine.analyseToken("abc");
    const TokenAnalysis scoped = engine.analyseToken("abc#3");
    EXPECT_EQ(plain.name, scoped.name);
    EXPECT_EQ(plain.name->text, "abc");
    EXPECT_EQ(plain.explicitScope, ExplicitScope::None);
    EXPECT_EQ(scoped.explicitScope, ExplicitScope::Block);
    EXPECT_EQ(engine.analyseToken("abc#0").explicitScope, ExplicitScope::External);
    EXPECT_EQ(engine.analyseToken("abc#1").explicitScope, ExplicitScope::Global);
    EXPECT_EQ(engine.analyseToken("abc#2").explicitScope, ExplicitScope::Native);
    EXPECT_NE(plain.name, engine.analyseToken("abd").name);
}

TEST(TokenAnalysis, KeywordsAreOrdinaryNames) {
    expectKind(TokenKind::Identifier,
               {"if", "end", "while", "function", "return", "local", "and", "or", "else", "nest", "in"});
    expectKind(TokenKind::Nil, {"not"});
}

TEST(TokenAnalysis, StringsAndVarargsHaveKindsOfTheirOwn) {
    expectKind(TokenKind::String, {"\"a\"", "'a'", "\"\""});
    expectKind(TokenKind::Varargs, {"..."});
    expectKind(TokenKind::Other, {"",  "..", "....", "(",  ")",   "[", "]", "{", "}", ",",
                                  ":", ";",  "=",    "+=", "a.b", "@", "?", "&", "|", "~"});
}

// --- Operators ---

namespace {

struct OperatorRow {
    const char* token;
    BinaryOperator binaryOperator;
    int number, level;
    bool isRight;
};

const OperatorRow operatorRows[] = {
    {"or", BinaryOperator::Or, 1, 1, false},
    {"||", BinaryOperator::Or, 1, 1, false},
    {"and", BinaryOperator::And, 2, 2, false},
    {"&&", BinaryOperator::And, 2, 2, false},
    {"==", BinaryOperator::Equal, 3, 3, false},
    {"!=", BinaryOperator::NotEqual, 4, 3, false},
    {"~=", BinaryOperator::NotEqual, 4, 3, false},
    {"<", BinaryOperator::Less, 5, 4, false},
    {">", BinaryOperator::Greater, 6, 4, false},
    {"<=", BinaryOperator::LessOrEqual, 7, 4, false},
    {">=", BinaryOperator::GreaterOrEqual, 8, 4, false},
    {"+", BinaryOperator::Add, 9, 5, false},
    {"-", BinaryOperator::Subtract, 10, 5, false},
    {"*", BinaryOperator::Multiply, 11, 6, false},
    {"/", BinaryOperator::Divide, 12, 6, false},
    {"\\", BinaryOperator::IntegerDivide, 13, 6, false},
    {"%", BinaryOperator::Modulo, 14, 7, false},
    {"^", BinaryOperator::Power, 15, 7, true},
    {"<-", BinaryOperator::Tetration, 16, 7, true},
    {"->", BinaryOperator::Pentation, 17, 7, true},
};

} // namespace

TEST(OperatorToken, HasClassLevelAndSide) {
    for (const OperatorRow& row : operatorRows) {
        EXPECT_EQ(classifyBinaryOperator(row.token), row.binaryOperator) << row.token;
        EXPECT_EQ(classifyBinaryOperator(std::string(operatorToken(row.binaryOperator))), row.binaryOperator);
        EXPECT_EQ(static_cast<int>(row.binaryOperator), row.number) << row.token;
        EXPECT_EQ(binaryLevel(row.binaryOperator), row.level) << row.token;
        EXPECT_EQ(isRightAssociative(row.binaryOperator), row.isRight) << row.token;
        EXPECT_EQ(analysisOf(row.token).binaryOperator, row.binaryOperator) << row.token;
    }
    EXPECT_EQ(unaryLevel, 7);
}

TEST(OperatorToken, OtherTokensAreNoOperators) {
    for (const char* token :
         {"", "=", "+=", "!", "#", "not", "Or", "AND", "&", "|", "~", "=>", "<>", ":", "x", "5", "\"+\""})
        EXPECT_EQ(classifyBinaryOperator(token), BinaryOperator::None) << token;
    EXPECT_EQ(binaryLevel(BinaryOperator::None), 0);
}

TEST(OperatorToken, TheseMakeNotBeforeThemTheNilLiteral) {
    for (const char* token :
         {"!=", "%",  "*",  "+",  "/", "\\", "^",   "&&",  ")",    ",",      "]",  "}",     "-",  "->",
          "<",  "<=", "<-", "==", ">", ">=", "and", "end", "else", "elseif", "or", "until", "||", "~="}) {
        EXPECT_TRUE(isStandaloneNotBoundary(token)) << token;
        EXPECT_TRUE(analysisOf(token).endsNegation) << token;
    }
    for (const char* token :
         {"", "!", "#", "(", "[", "{", "=", ":", ";", "not", "x", "5", "\"a\"", "...", "if", "in", "+=", "true"}) {
        EXPECT_FALSE(isStandaloneNotBoundary(token)) << token;
        EXPECT_FALSE(analysisOf(token).endsNegation) << token;
    }
}

// --- Strict readers ---

TEST(StrictReader, AnIntegerIsTheWholeTextWithin32Bits) {
    int number = 0;
    EXPECT_TRUE(parseIntStrict("+12", number));
    EXPECT_EQ(number, 12);
    EXPECT_TRUE(parseIntStrict("-2147483648", number));
    for (const char* text :
         {"", "+", "-", "+-1", "-+1", " 1", "1 ", "1.0", "1e1", "2147483648", "-2147483649", "0x1", "a"})
        EXPECT_FALSE(parseIntStrict(text, number)) << text;
}

TEST(StrictReader, AFloatIsTheWholeTextWithinRange) {
    float number = 0;
    EXPECT_TRUE(parseFloatStrict("340282346638528859811704183484516925440", number));
    EXPECT_EQ(number, 3.4028234663852886e38F);
    EXPECT_TRUE(parseFloatStrict("5.", number));
    EXPECT_TRUE(parseFloatStrict("-.5", number));
    EXPECT_EQ(number, -0.5F);
    EXPECT_TRUE(parseFloatStrict("0.0000000000000000000000000000000000000000000000000000", number));
    const std::vector<std::string> refused = {
        "", "1x", ".", "1e", "1" + std::string(39, '0'), "0." + std::string(45, '0') + "1", std::string("1\0", 2)};
    for (const std::string& text : refused) EXPECT_FALSE(parseFloatStrict(text, number)) << text;
}
