// Expressions by their tokens: the grammar, what it refuses and where, and what a short circuit leaves out.

#include "evaluating.h"

#include <gtest/gtest.h>

namespace {

/// An expression cut into tokens, evaluated by the token evaluator alone.
class TokenRoad {
public:
    explicit TokenRoad(std::string text, bool withAnalysis = true)
        : text_(std::move(text)), tokens_(engine_.tokenise(text_)) {
        for (const std::string& token : tokens_) analysis_.push_back(engine_.analyseToken(token));
        withAnalysis_ = withAnalysis;
    }

    Variable evaluate() { return engine_.evaluateExpression(tokens_, position_, analysis()); }
    void skip(int minimumLevel) { engine_.skipExpression(tokens_, position_, minimumLevel, analysis()); }
    std::size_t position() const { return position_; }
    OstrelScript& engine() { return engine_; }
    std::vector<std::string>& tokens() { return tokens_; }

private:
    const std::vector<TokenAnalysis>* analysis() const { return withAnalysis_ ? &analysis_ : nullptr; }

    OstrelScript engine_;
    std::string text_;
    std::vector<std::string> tokens_;
    std::vector<TokenAnalysis> analysis_;
    bool withAnalysis_ = true;
    std::size_t position_ = 0;
};

/// Type and text of an expression's value on the token road, or the first line of the message behind "! ".
std::string byTokens(const std::string& text, bool withAnalysis = true) {
    try {
        TokenRoad road(text, withAnalysis);
        const Variable value = road.evaluate();
        return road.engine().typeName(value.type) + " " + value.toString();
    } catch (const std::exception& error) {
        return "! " + firstLineOf(error.what());
    }
}

/// The message's first line and, behind " | ", the token that the report stands near.
std::string faultByTokens(const std::string& text) {
    const std::string report = messageOf([&] { TokenRoad(text).evaluate(); });
    return firstLineOf(report) + " | " + tokenOf(report);
}

} // namespace

// --- Entry ---

TEST(Expression, LeavesThePositionBehindIt) {
    TokenRoad road("1 + 2 , 3");
    EXPECT_EQ(road.evaluate().asInt(), 3);
    EXPECT_EQ(road.position(), 3U);
}

TEST(Expression, SkipsEmptyTokensAtItsStart) {
    TokenRoad road("x 5", false);
    road.tokens()[0].clear();
    EXPECT_EQ(road.evaluate().asInt(), 5);
    EXPECT_EQ(road.position(), 2U);
}

TEST(Expression, NeedsAToken) {
    EXPECT_EQ(faultByTokens(""), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("1 +"), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("-"), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("("), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("["), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("f("), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("a["), "Unexpected end of expression | EOF");
    TokenRoad allEmpty("x", false);
    allEmpty.tokens()[0].clear();
    EXPECT_EQ(firstLineOf(messageOf([&] { allEmpty.evaluate(); })), "Unexpected end of expression");
}

TEST(Expression, NeedsNoAnalysis) {
    for (const char* text : {"1 + 2 * 3", "not", "not 5", "\"a\"[1]", "[1, 2][2]", "{a = 1}[\"a\"]", "true and 5",
                             "$ff", "1 +", "t.x", "len(\"abc\")"})
        EXPECT_EQ(byTokens(text, false), byTokens(text, true)) << text;
}

// --- Primaries ---

TEST(Primary, LiteralsAreTheirValues) {
    EXPECT_EQ(byTokens("42"), "int 42");
    EXPECT_EQ(byTokens("1.5"), "float 1.500000");
    EXPECT_EQ(byTokens(".5"), "float 0.500000");
    EXPECT_EQ(byTokens("5."), "float 5.000000");
    EXPECT_EQ(byTokens("2147483648"), "float 2147483648.000000");
    EXPECT_EQ(byTokens("-2147483648"), "float -2147483648.000000");
    EXPECT_EQ(byTokens("\"a\\tb\""), "string a\tb");
    EXPECT_EQ(byTokens("'it\\'s'"), "string it's");
    EXPECT_EQ(byTokens("$Ff"), "pointer $FF");
    EXPECT_EQ(byTokens("not"), "not not");
}

TEST(Primary, MisspeltTruthIsTruth) {
    for (const char* word : {"true", "ture", "tre", "tue"}) EXPECT_EQ(byTokens(word), "bool true") << word;
    for (const char* word : {"false", "flase", "fasle", "flse"}) EXPECT_EQ(byTokens(word), "bool false") << word;
}

TEST(Primary, TruthWordsStandAheadOfVariables) {
    OstrelScript engine;
    for (const char* word : {"true", "ture", "tre", "tue", "false", "flase", "fasle", "flse"})
        engine.pushVariable(word, 5);
    EXPECT_EQ(textOf(engine, "[true, ture, tre, tue]"), "[true, true, true, true]");
    EXPECT_EQ(textOf(engine, "[false, flase, fasle, flse]"), "[false, false, false, false]");
    EXPECT_EQ(textOf(engine, "tre"), "true");
}

TEST(Primary, ANameThatIsFoundNowhereIsNil) {
    EXPECT_EQ(byTokens("nobody"), "not not");
    EXPECT_EQ(byTokens("nobody#1"), "not not");
    EXPECT_EQ(byTokens("nobody#3"), "not not");
}

TEST(Primary, VarargsOutsideAFunctionAreNil) { EXPECT_EQ(byTokens("..."), "not not"); }

TEST(Primary, VarargsAreOneMultiValue) {
    OstrelScript engine;
    engine.runScript("function f(...)\nreturn typeOf([...][1]) + #[...]\nend");
    EXPECT_EQ(textOf(engine, "f(1, 2, 3)"), "table1");
    EXPECT_EQ(textOf(engine, "f()"), "table1");
}

TEST(Primary, OtherTokensAreUnknown) {
    for (const char* token : {"a.b", "1e5", "1..2", "a#4", "5#2", "?", "@", "&", "|", "~",  "..",       "=",  ",",
                              ":",   ";",   ")",    "]",   "}",   "*", "/", "%", "<", "==", "\xC3\xA9", "+=", "->"})
        EXPECT_EQ(faultByTokens(token), std::string("Unknown token: ") + token + " | " + token);
}

TEST(Primary, ANumberWithoutAFloatIsAnInvalidFormat) {
    const std::string large = "1" + std::string(39, '0');
    EXPECT_EQ(faultByTokens(large), "Invalid numeric format | " + large);
    const std::string small = "0." + std::string(50, '0') + "1";
    EXPECT_EQ(faultByTokens(small), "Invalid numeric format | " + small);
    OstrelScript engine;
    EXPECT_EQ(faultOf(engine, "x = " + large), "Invalid numeric format") << "also where nodes would be compiled";
}

TEST(Primary, ParenthesesHoldOneExpression) {
    EXPECT_EQ(byTokens("(1 + 2) * 3"), "int 9");
    EXPECT_EQ(byTokens("((((5))))"), "int 5");
    EXPECT_EQ(faultByTokens("(1"), "Expected closing parenthesis | )");
    EXPECT_EQ(faultByTokens("(1, 2)"), "Expected closing parenthesis | )");
    EXPECT_EQ(faultByTokens("(1]"), "Expected closing parenthesis | )");
    EXPECT_EQ(faultByTokens("()"), "Unknown token: ) | )");
}

TEST(Primary, ParenthesesDontNarrowAMultiValue) {
    OstrelScript engine;
    engine.runScript("function pair()\nreturn 1, 2\nend");
    EXPECT_EQ(textOf(engine, "[(pair())]"), "[[multivalue]]");
    EXPECT_EQ(typedTextOf(engine, "((pair()))"), "multivalue [multivalue]");
}

// --- Postfixes ---

TEST(Postfix, FollowsEveryPrimary) {
    EXPECT_EQ(byTokens("[1, 2, 3][5]"), "not not");
    EXPECT_EQ(byTokens("\"abc\"[2]"), "string b");
    EXPECT_EQ(byTokens("{\"a\"}[1]"), "string a");
    EXPECT_EQ(byTokens("([[7]])[1][1]"), "int 7");
    EXPECT_EQ(byTokens("\"abc\"[\"upper\"]()[2]"), "string B");
    EXPECT_EQ(byTokens("len(\"abc\")"), "int 3");
    EXPECT_EQ(byTokens("5[1]"), "! Indexing requires an array, table, or string");
    EXPECT_EQ(byTokens("5(1)"), "! Attempted to call a non-function value of type int");
    EXPECT_EQ(byTokens("nobody(1)"), "! Attempted to call a non-function value of type not");
    EXPECT_EQ(byTokens("-\"5\"[1]"), "! Unary '-' requires a numeric value");
}

TEST(Postfix, ACallNeedsCommasAndAnEnd) {
    EXPECT_EQ(faultByTokens("len(1 2)"), "Expected ',' or ')' after function argument | 2");
    EXPECT_EQ(faultByTokens("len(1]"), "Expected ',' or ')' after function argument | ]");
    EXPECT_EQ(faultByTokens("len(1"), "Expected ',' or ')' after function argument | EOF");
    EXPECT_EQ(faultByTokens("len(1,)"), "Unknown token: ) | )");
    EXPECT_EQ(faultByTokens("len(,)"), "Unknown token: , | ,");
}

TEST(Postfix, AnIndexNeedsOneExpressionAndItsBracket) {
    EXPECT_EQ(faultByTokens("a[1"), "Expected closing bracket | ]");
    EXPECT_EQ(faultByTokens("a[1, 2]"), "Expected closing bracket | ]");
    EXPECT_EQ(faultByTokens("a[1)"), "Expected closing bracket | ]");
    EXPECT_EQ(faultByTokens("a[]"), "Unknown token: ] | ]");
}

TEST(Postfix, AMultiValueAsLastArgumentStaysOne) {
    OstrelScript engine;
    engine.runScript("function pair()\nreturn 1, 2\nend\nfunction second(a, b)\nreturn b\nend");
    EXPECT_EQ(textOf(engine, "second(pair())"), "not");
    EXPECT_EQ(textOf(engine, "second(0, pair())"), "[multivalue]");
    EXPECT_EQ(textOf(engine, "[pair(), pair()]"), "[[multivalue], [multivalue]]");
}

// --- Unary operators ---

TEST(Unary, BangNegatesTruth) {
    EXPECT_EQ(byTokens("!0"), "bool false");
    EXPECT_EQ(byTokens("!not"), "bool true");
    EXPECT_EQ(byTokens("!!\"\""), "bool true");
}

TEST(Unary, HashIsTheLength) {
    EXPECT_EQ(byTokens("#\"abc\""), "int 3");
    EXPECT_EQ(byTokens("#[1, not]"), "int 2");
    EXPECT_EQ(byTokens("#{1, 2, a = 3}"), "int 2");
    for (const char* operand : {"5", "1.5", "true", "not", "len", "$0"})
        EXPECT_EQ(byTokens(std::string("# ") + operand), "! len(x) expects an array, table, or string") << operand;
}

TEST(Unary, PlusIsItsOperand) {
    for (const char* operand : {"5", "1.5", "true", "\"a\"", "[1]", "nobody", "len", "$0"})
        EXPECT_EQ(byTokens(std::string("+ ") + operand), byTokens(operand));
    EXPECT_EQ(byTokens("+not"), "not not");
}

TEST(Unary, MinusNegatesNumbers) {
    EXPECT_EQ(byTokens("-5"), "int -5");
    EXPECT_EQ(byTokens("- -5"), "int 5");
    EXPECT_EQ(byTokens("-1.5"), "float -1.500000");
    EXPECT_EQ(byTokens("-0.0"), "float -0.000000");
    EXPECT_EQ(byTokens("-true"), "int -1");
    EXPECT_EQ(byTokens("-false"), "int 0");
    EXPECT_EQ(byTokens("-(0 - 2147483647 - 1)"), "int -2147483648");
    for (const char* operand : {"\"5\"", "[1]", "nobody", "len", "$0", "{}", "not"})
        EXPECT_EQ(byTokens(std::string("- ") + operand), "! Unary '-' requires a numeric value") << operand;
}

TEST(Unary, OperandsAreReadAtTheSeventhLevel) {
    EXPECT_EQ(byTokens("-2 ^ 2"), "int -4");
    EXPECT_EQ(byTokens("-7 % 4"), "int -3");
    EXPECT_EQ(byTokens("-7 % 4 + 1"), "int -2");
    EXPECT_EQ(byTokens("!2 % 0.5"), "bool false");
    EXPECT_EQ(byTokens("#\"abc\" + 1"), "int 4");
    EXPECT_EQ(byTokens("-2 * 3"), "int -6");
    EXPECT_EQ(byTokens("not 2 ^ 2"), "bool false");
    EXPECT_EQ(byTokens("-2 <- 2"), "int -4");
}

TEST(NotWord, IsNilBeforeABoundaryAndAtTheEnd) {
    OstrelScript engine;
    EXPECT_EQ(textOf(engine, "not"), "not");
    EXPECT_EQ(textOf(engine, "[not, 1]"), "[not, 1]");
    EXPECT_EQ(textOf(engine, "[1, not]"), "[1, not]");
    EXPECT_EQ(textOf(engine, "(not)"), "not");
    EXPECT_EQ(textOf(engine, "{a = not}"), "{a: not}");
    EXPECT_EQ(textOf(engine, "{not}"), "[not]");
    EXPECT_EQ(textOf(engine, "not == nobody"), "true");
    EXPECT_EQ(textOf(engine, "not != 1"), "true");
    EXPECT_EQ(textOf(engine, "not ~= 1"), "true");
    EXPECT_EQ(textOf(engine, "not or 5"), "5");
    EXPECT_EQ(textOf(engine, "not || 5"), "5");
    EXPECT_EQ(textOf(engine, "not and 5"), "not");
    EXPECT_EQ(textOf(engine, "not && 5"), "not");
    EXPECT_EQ(textOf(engine, "nobody or not"), "not");
    EXPECT_EQ(textOf(engine, "not + \"a\""), "nota");
}

TEST(NotWord, BeforeAnOperatorItIsTheNilThatTheOperatorRefuses) {
    OstrelScript engine;
    const std::pair<const char*, const char*> rows[] = {{"-", "-"}, {"*", "*"}, {"/", "/"}, {"\\", "\\\\"},
                                                        {"%", "%"}, {"^", "^"}, {"+", "+"}};
    for (const auto& [text, sign] : rows)
        EXPECT_EQ(faultOf(engine, std::string("return not ") + text + " 1"),
                  std::string("Unsupported operation '") + sign + "' between types");
    EXPECT_EQ(faultOf(engine, "return not -1"), "Unsupported operation '-' between types");
    for (const char* text : {"<", "<=", ">", ">="})
        EXPECT_EQ(faultOf(engine, std::string("return not ") + text + " 1"), "Cannot compare not with int");
    EXPECT_EQ(faultOf(engine, "return not <- 1"), "tetration requires numeric operands");
    EXPECT_EQ(faultOf(engine, "return not -> 1"), "pentation requires numeric operands");
}

TEST(NotWord, NegatesEverythingElse) {
    EXPECT_EQ(byTokens("not 5"), "bool false");
    EXPECT_EQ(byTokens("not nobody"), "bool true");
    EXPECT_EQ(byTokens("not not 5"), "bool true");
    EXPECT_EQ(byTokens("not not"), "bool true");
    EXPECT_EQ(byTokens("not true"), "bool false");
    EXPECT_EQ(byTokens("not (1)"), "bool false");
    EXPECT_EQ(byTokens("not []"), "bool false");
    EXPECT_EQ(byTokens("not {}"), "bool false");
    EXPECT_EQ(byTokens("not !5"), "bool true");
    EXPECT_EQ(byTokens("not #\"\""), "bool false");
    EXPECT_EQ(byTokens("not \"\""), "bool false");
    EXPECT_EQ(byTokens("not end"), "not not") << "some keywords are boundaries, too";
    EXPECT_EQ(byTokens("not ="), "! Unknown token: =");
}

// --- Precedence ---

TEST(Precedence, EveryPairOfLevelsNestsByItsLevel) {
    // Each row: without and with the parentheses that the levels imply.
    const std::pair<const char*, const char*> rows[] = {
        {"1 or 2 and 3", "1 or (2 and 3)"},
        {"false and 1 or 2", "(false and 1) or 2"},
        {"1 == 2 and 3", "(1 == 2) and 3"},
        {"3 == 1 < 2", "3 == (1 < 2)"},
        {"true == 1 < 2", "true == (1 < 2)"},
        {"1 + 2 < 4", "(1 + 2) < 4"},
        {"2 + 3 * 4", "2 + (3 * 4)"},
        {"2 * 7 % 4", "2 * (7 % 4)"},
        {"100 / 7 % 4", "100 / (7 % 4)"},
        {"100 \\ 7 % 4", "100 \\ (7 % 4)"},
        {"2 ^ 7 % 4", "2 ^ (7 % 4)"},
        {"7 % 4 ^ 2", "(7 % 4) ^ 2"},
        {"2 * 2 ^ 3", "2 * (2 ^ 3)"},
        {"2 ^ 3 ^ 2", "2 ^ (3 ^ 2)"},
        {"2 <- 2 <- 2", "2 <- (2 <- 2)"},
        {"2 -> 1 -> 2", "2 -> (1 -> 2)"},
        {"2 ^ 2 <- 2", "2 ^ (2 <- 2)"},
        {"10 - 3 - 2", "(10 - 3) - 2"},
        {"100 / 10 / 2", "(100 / 10) / 2"},
        {"100 % 7 % 2", "(100 % 7) % 2"},
        {"7 \\ 2 * 2", "(7 \\ 2) * 2"},
        {"3 > 2 > 1", "(3 > 2) > 1"},
        {"2 != 2 == false", "(2 != 2) == false"},
        {"1 + 2 + \"a\" + 1 + 2", "(((1 + 2) + \"a\") + 1) + 2"},
    };
    for (const auto& [bare, grouped] : rows) EXPECT_EQ(byTokens(bare), byTokens(grouped)) << bare;
    EXPECT_EQ(byTokens("2 ^ 3 ^ 2"), "int 512");
    EXPECT_EQ(byTokens("2 * 3 % 2"), "int 2");
    EXPECT_EQ(byTokens("3 <- 2"), "int 16");
    EXPECT_EQ(byTokens("2 -> 3"), "int 65536");
}

TEST(Precedence, SymbolsAndWordsAreTheSameOperators) {
    EXPECT_EQ(byTokens("not || 5"), byTokens("not or 5"));
    EXPECT_EQ(byTokens("1 && 5"), byTokens("1 and 5"));
    EXPECT_EQ(byTokens("1 ~= 2"), byTokens("1 != 2"));
}

// --- Short circuits ---

TEST(ShortCircuit, GivesAValue) {
    EXPECT_EQ(byTokens("0 or 5"), "int 0");
    EXPECT_EQ(byTokens("not or 5"), "int 5");
    EXPECT_EQ(byTokens("1 and \"a\""), "string a");
    EXPECT_EQ(byTokens("false and 5"), "bool false");
    EXPECT_EQ(byTokens("nobody and 5"), "not not");
    EXPECT_EQ(byTokens("false or not"), "not not");
    EXPECT_EQ(byTokens("1 and 2 and 3"), "int 3");
    EXPECT_EQ(byTokens("false or false or 3 or 4"), "int 3");
}

TEST(ShortCircuit, NeverRunsTheSideThatIsNotNeeded) {
    OstrelScript engine;
    engine.runScript("calls = 0\nfunction f()\ncalls += 1\nreturn true\nend");
    for (const char* text : {"true or f()", "false and f()", "[1 or f()]", "[not and f()]", "true or [f(), f()]",
                             "1 or {a = f()}", "false and (f() or f()) and f()", "true or f() and f()", "1 or f()[f()]",
                             "1 or -f()", "1 or not f()", "true or f() == f()"})
        textOf(engine, text);
    EXPECT_EQ(engine.pullVariable("calls").asInt(), 0);
    textOf(engine, "false or f() and f()");
    EXPECT_EQ(engine.pullVariable("calls").asInt(), 2);
}

TEST(ShortCircuit, SkipsWithoutFailingOnValues) {
    for (const char* text :
         {"1 or 5[1]", "1 or 5()", "1 or -\"a\"", "1 or #5", "1 or 1 / 0", "1 or not + 1", "1 or {[not] = 1}",
          "1 or 1 < \"a\"", "1 or 99999999999999999999999999999999999999999", "1 or nobody()[1]()"})
        EXPECT_EQ(byTokens(text), "int 1") << text;
}

TEST(ShortCircuit, StillParsesWhatItSkips) {
    EXPECT_EQ(faultByTokens("true or )"), "Unknown token: ) | )");
    EXPECT_EQ(faultByTokens("true or"), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("true or (1"), "Expected closing parenthesis | )");
    EXPECT_EQ(faultByTokens("true or f(1 2)"), "Expected ',' or ')' after function argument | 2");
    EXPECT_EQ(faultByTokens("true or a[1"), "Expected closing bracket | ]");
    EXPECT_EQ(faultByTokens("false and [1 2]"), "Expected ',' or ']' in array literal | 2");
    EXPECT_EQ(faultByTokens("false and {1 2}"), "Expected ',' or '}' in table literal | 2");
    EXPECT_EQ(faultByTokens("false and {1"), "Unexpected end of table literal | EOF");
    EXPECT_EQ(faultByTokens("false and {5 = 1}"), "Invalid table key | 5");
    EXPECT_EQ(faultByTokens("false and a.b"), "Unknown token: a.b | a.b");
    OstrelScript engine;
    EXPECT_EQ(faultOf(engine, "x = true or )"), "Unknown token: )");
}

TEST(ShortCircuit, SkipsExactlyTheSide) {
    TokenRoad road("1 or 2 and 3 == 4 , 5");
    EXPECT_EQ(road.evaluate().asInt(), 1);
    EXPECT_EQ(road.position(), 7U);
    TokenRoad level("2 + 3 == 4 and 5");
    level.skip(5);
    EXPECT_EQ(level.position(), 3U);
    TokenRoad all("f ( x ) [ 1 ] or { a = [ 1 ] }");
    all.skip(1);
    EXPECT_EQ(all.position(), 15U);
}

// --- Array literals ---

TEST(ArrayLiteral, IsAlwaysAnArray) {
    EXPECT_EQ(byTokens("[]"), "array []");
    EXPECT_EQ(byTokens("[1, [2], {}, not, not 1]"), "array [1, [2], {}, not, false]");
}

TEST(ArrayLiteral, NeedsCommasAndItsEnd) {
    EXPECT_EQ(faultByTokens("[1 2]"), "Expected ',' or ']' in array literal | 2");
    EXPECT_EQ(faultByTokens("[1)"), "Expected ',' or ']' in array literal | )");
    EXPECT_EQ(faultByTokens("[1"), "Expected ',' or ']' in array literal | EOF");
    EXPECT_EQ(faultByTokens("[a = 1]"), "Expected ',' or ']' in array literal | =");
    EXPECT_EQ(faultByTokens("[1,]"), "Unknown token: ] | ]");
    EXPECT_EQ(faultByTokens("[,]"), "Unknown token: , | ,");
    EXPECT_EQ(faultByTokens("[1,"), "Unexpected end of expression | EOF");
}

// --- Table literals ---

TEST(TableLiteral, WithPositionsAloneIsAnArray) {
    EXPECT_EQ(byTokens("{}"), "table {}");
    EXPECT_EQ(byTokens("{1, 2}"), "array [1, 2]");
    EXPECT_EQ(byTokens("{1, 2,}"), "array [1, 2]");
    EXPECT_EQ(byTokens("{not}"), "array [not]");
}

TEST(TableLiteral, WithAKeyIsATable) {
    EXPECT_EQ(byTokens("{a = 1}"), "table {a: 1}");
    EXPECT_EQ(byTokens("{a : 1,}"), "table {a: 1}");
    EXPECT_EQ(byTokens("{\"a b\" = 1}"), "table {a b: 1}");
    EXPECT_EQ(byTokens("{'a\\tb' : 1}"), "table {a\tb: 1}");
    EXPECT_EQ(byTokens("{[1 + 1] = 1}"), "table {2: 1}");
    EXPECT_EQ(byTokens("{[1.5] : 1}"), "table {1.500000: 1}");
    EXPECT_EQ(byTokens("{[true] = 1}"), "table {true: 1}");
    EXPECT_EQ(byTokens("{[\"k\"] = 1}"), "table {k: 1}");
    EXPECT_EQ(byTokens("{end = 1}"), "table {end: 1}");
    EXPECT_EQ(byTokens("{not = 1}"), "table {not: 1}");
    EXPECT_EQ(byTokens("{true = 1}"), "table {true: 1}");
    EXPECT_EQ(byTokens("{[1] = 1}"), "table {1: 1}") << "not an array, whatever the key";
}

TEST(TableLiteral, PositionsCountOnBehindAKey) {
    EXPECT_EQ(byTokens("{\"a\", k = 0, \"b\"}[2]"), "string b");
    EXPECT_EQ(byTokens("{\"a\", k = 0, \"b\"}[\"1\"]"), "string a");
    EXPECT_EQ(byTokens("#{5, k = 0, 6, 7}"), "int 3");
    EXPECT_EQ(byTokens("{[2] = \"x\", \"a\", \"b\"}[2]"), "string b") << "a position replaces an earlier key";
    EXPECT_EQ(byTokens("{\"a\", [1] = \"x\"}[1]"), "string x");
    EXPECT_EQ(byTokens("{a = 1, a = 2}"), "table {a: 2}");
}

TEST(TableLiteral, ItsFaultsHaveTheirTexts) {
    EXPECT_EQ(faultByTokens("{5 = 1}"), "Invalid table key | 5");
    EXPECT_EQ(faultByTokens("{1.5 : 1}"), "Invalid table key | 1.5");
    EXPECT_EQ(faultByTokens("{$ff = 1}"), "Invalid table key | $ff");
    EXPECT_EQ(faultByTokens("{a.b = 1}"), "Invalid table key | a.b");
    EXPECT_EQ(faultByTokens("{... = 1}"), "Invalid table key | ...");
    EXPECT_EQ(faultByTokens("{1 2}"), "Expected ',' or '}' in table literal | 2");
    EXPECT_EQ(faultByTokens("{a = 1 b = 2}"), "Expected ',' or '}' in table literal | b");
    EXPECT_EQ(faultByTokens("{a = 1 = 2}"), "Expected ',' or '}' in table literal | =");
    EXPECT_EQ(faultByTokens("{1]"), "Expected ',' or '}' in table literal | ]");
    EXPECT_EQ(faultByTokens("{"), "Unexpected end of table literal | EOF");
    EXPECT_EQ(faultByTokens("{1"), "Unexpected end of table literal | EOF");
    EXPECT_EQ(faultByTokens("{1,"), "Unexpected end of table literal | EOF");
    EXPECT_EQ(faultByTokens("{a = 1"), "Unexpected end of table literal | EOF");
    EXPECT_EQ(faultByTokens("{a ="), "Unexpected end of expression | EOF");
    EXPECT_EQ(faultByTokens("{,}"), "Unknown token: , | ,");
    EXPECT_EQ(faultByTokens("{1,,2}"), "Unknown token: , | ,");
    EXPECT_EQ(faultByTokens("{[1 = 2}"), "Expected ']' after table key | =");
    EXPECT_EQ(faultByTokens("{[1"), "Expected ']' after table key | EOF");
    EXPECT_EQ(faultByTokens("{[1, 2]}"), "Expected ']' after table key | ,");
    EXPECT_EQ(faultByTokens("{[1]}"), "Expected ':' after table key | }");
    EXPECT_EQ(faultByTokens("{[1] 2}"), "Expected ':' after table key | 2");
    EXPECT_EQ(faultByTokens("{[1]"), "Expected ':' after table key | EOF");
    for (const char* key : {"not", "[]", "{}", "len", "$0"})
        EXPECT_EQ(byTokens(std::string("{[") + key + "] = 1}"), "! Table key must be string, number, or bool") << key;
}

// --- Where a fault is reported ---

TEST(ExpressionFault, OfAnOperatorPointsAtTheLastTokenThatWasRead) {
    OstrelScript engine;
    const std::pair<const char*, const char*> rows[] = {
        {"x = 1 / 0", "0"},
        {"x = 1 / 0 + 5", "0"},
        {"x = 5 + (1 / false)", "false"},
        {"x = nobody + 1", "1"},
        {"x = 5[1] + 2", "]"},
        {"x = nobody(1, 2) + 3", ")"},
        {"x = -\"abc\" + 1", "\"abc\""},
        {"x = #5 + 1", "5"},
        {"x = 1 < \"a\"", "\"a\""},
        {"x = [1 / 0]", "0"},
        {"x = [nobody(1)]", ")"},
        {"x = \"a\"[true]", "]"},
    };
    for (const auto& [text, token] : rows) EXPECT_EQ(tokenOf(reportOf(engine, text)), token) << text;
}

TEST(ExpressionFault, HasTheWholeReport) {
    OstrelScript engine;
    EXPECT_EQ(reportOf(engine, "a = 1\nb = a + (2 * nobody)\nc = 3"),
              "OstrelScript error: Unsupported operation '*' between types\n"
              "  at line 2, near token 'nobody'\n"
              "  b = a + (2 * nobody)\n"
              "               ^~~~~~\n"
              "  hint: check spelling, operators, parentheses, and quote matching\n");
    EXPECT_EQ(reportOf(engine, "b = [1, 2 3]"), "OstrelScript error: Expected ',' or ']' in array literal\n"
                                                "  at line 1, near token '3'\n"
                                                "  b = [1, 2 3]\n"
                                                "            ^\n"
                                                "  hint: check spelling, operators, parentheses, and quote matching\n");
    EXPECT_EQ(reportOf(engine, "b = 1 +"), "OstrelScript error: Unexpected end of expression\n"
                                           "  at line 1, near token 'EOF'\n"
                                           "  b = 1 +\n"
                                           "         ^\n"
                                           "  hint: check spelling, operators, parentheses, and quote matching\n");
}

// --- Any expression ---

TEST(Expression, AnyDepthGivesAValueOrAReport) {
    constexpr int many = 100000;
    OstrelScript engine;
    const auto repeated = [](const std::string& part) {
        std::string text;
        for (int i = 0; i < many; ++i) text += part;
        return text;
    };
    const std::pair<const char*, const char*> rows[] = {
        {"(", ")"},   {"[", "]"}, {"{", "}"}, {"{a=", "}"}, {"{[", "]=1}"}, {"len(", ")"}, {"a[", "]"},
        {"not ", ""}, {"- ", ""}, {"! ", ""}, {"# ", ""},   {"+ ", ""},     {"2 ^ ", ""},  {"1 or (", ")"}};
    for (const auto& [opening, closing] : rows) {
        const std::string fault = faultOf(engine, "x = " + repeated(opening) + "1" + repeated(closing));
        EXPECT_TRUE(fault.empty() || fault == "native stack exhausted" || fault == "Invalid exponentiation result")
            << opening << fault;
        EXPECT_NE(faultOf(engine, "x = " + repeated(opening)), "") << opening;
    }
    EXPECT_EQ(textOf(engine, repeated("1 + ") + "1"), "100001");
    EXPECT_EQ(textOf(engine, repeated("not or ") + "1"), "1");
    EXPECT_EQ(textOf(engine, repeated("1 and ") + "2"), "2");
    EXPECT_EQ(textOf(engine, "#(\"\"" + repeated(" + \"a\"") + ")"), "100000");
    EXPECT_EQ(textOf(engine, "#[1" + repeated(", 1") + "]"), "100001");
    EXPECT_EQ(textOf(engine, "1 + 1"), "2") << "the engine is as good as new";
}
