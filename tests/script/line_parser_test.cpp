// Source text to prepared lines: where a logical line ends, what it is, its plan, and the links of its block.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Lines = std::vector<ParsedScriptLine>;
using Tokens = std::vector<std::string>;
using Texts = std::vector<std::string>;
using Numbers = std::vector<std::size_t>;
using Ranges = std::vector<TokenRange>;

Lines linesOf(OstrelScript& engine, const std::string& source) { return engine.parseLines(source); }

Texts textsOf(const std::string& source) {
    OstrelScript engine;
    Texts texts;
    for (const ParsedScriptLine& line : engine.parseLines(source)) texts.push_back(line.text);
    return texts;
}

Numbers numbersOf(const std::string& source) {
    OstrelScript engine;
    Numbers numbers;
    for (const ParsedScriptLine& line : engine.parseLines(source)) numbers.push_back(line.lineNumber);
    return numbers;
}

/// The kind of the only line.
LineKind kindOf(const std::string& source) {
    OstrelScript engine;
    return engine.parseLines(source).at(0).kind;
}

/// The plan of the only line, and the engine whose names it holds.
struct Planned {
    explicit Planned(const std::string& source) : lines(engine.parseLines(source)) {}

    const ParsedScriptLine& line() const { return lines.at(0); }
    const LinePlan& plan() const { return *line().plan; }
    const FastExpression& target(std::size_t target, std::size_t index) const {
        return plan().targets.at(target).indexExpressions.at(index);
    }

    OstrelScript engine;
    Lines lines;
};

FastKind rootKind(const FastExpression& expression) {
    return expression.isValid() ? expression.node(expression.root).kind : FastKind::None;
}

} // namespace

// --- Logical lines ---

TEST(LogicalLine, APhysicalLineIsOne) {
    EXPECT_EQ(textsOf("a = 1"), (Texts{"a = 1"}));
    EXPECT_EQ(textsOf("a = 1\nb = 2"), (Texts{"a = 1", "b = 2"}));
    EXPECT_EQ(numbersOf("a = 1\nb = 2"), (Numbers{0, 1}));
}

TEST(LogicalLine, BlankLinesAreKept) {
    EXPECT_EQ(textsOf(""), (Texts{""}));
    EXPECT_EQ(textsOf("a\n\n\nb\n"), (Texts{"a", "", "", "b", ""}));
    EXPECT_EQ(numbersOf("a\n\n\nb\n"), (Numbers{0, 1, 2, 3, 4}));
    EXPECT_EQ(textsOf("  \t \na"), (Texts{"", "a"}));
}

TEST(LogicalLine, IsTrimmedOfBlanksAndTabs) {
    EXPECT_EQ(textsOf(" \t a = 1 \t "), (Texts{"a = 1"}));
    EXPECT_EQ(textsOf("a = 1\r\nb\r"), (Texts{"a = 1\r", "b\r"})) << "a carriage return is left to the tokeniser";
    EXPECT_EQ(textsOf("\r\n"), (Texts{"\r", ""}));
}

TEST(LogicalLine, ACommentLineIsBlankAtItsNumber) {
    OstrelScript engine;
    const Lines lines = linesOf(engine, "a = 1\n@@ words\n   @@ more\nb = 2 @@ behind");
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[1].kind, LineKind::Blank);
    EXPECT_EQ(lines[1].lineNumber, 1U);
    EXPECT_TRUE(lines[1].tokens.empty());
    EXPECT_EQ(lines[2].text, "");
    EXPECT_EQ(lines[3].text, "b = 2");
    EXPECT_EQ(lines[3].lineNumber, 3U);
}

TEST(LogicalLine, ASemicolonEndsAStatement) {
    EXPECT_EQ(textsOf("\n\n\na = 1 ; b = 2"), (Texts{"", "", "", "a = 1", "b = 2"}));
    EXPECT_EQ(numbersOf("\n\n\na = 1 ; b = 2"), (Numbers{0, 1, 2, 3, 3}));
    EXPECT_EQ(textsOf("a;b;c"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(textsOf("a @@ b ; c"), (Texts{"a"}));
    EXPECT_EQ(textsOf("a ; @@ b"), (Texts{"a", ""}));
}

TEST(LogicalLine, SemicolonsWithNothingBetweenMakeNoStatements) {
    OstrelScript engine;
    for (const ParsedScriptLine& line : linesOf(engine, ";;;\n ; a ; ;")) {
        if (line.kind == LineKind::Blank) continue;
        EXPECT_EQ(line.text, "a");
        EXPECT_EQ(line.lineNumber, 1U);
    }
}

TEST(LogicalLine, ASemicolonInsideBracketsOrAStringEndsNothing) {
    EXPECT_EQ(textsOf("a = \"x;y\""), (Texts{"a = \"x;y\""}));
    EXPECT_EQ(textsOf("a = (1;2)"), (Texts{"a = (1;2)"}));
    EXPECT_EQ(textsOf("a = [1;2]"), (Texts{"a = [1;2]"}));
    EXPECT_EQ(textsOf("a = {1;2}"), (Texts{"a = {1;2}"}));
}

TEST(LogicalLine, OpenBracketsContinueIt) {
    EXPECT_EQ(textsOf("x = [1,\n2]"), (Texts{"x = [1, 2]"}));
    EXPECT_EQ(textsOf("x = (1 +\n\t2\n  )\ny"), (Texts{"x = (1 + 2 )", "y"}));
    EXPECT_EQ(textsOf("x = {\n}\ny"), (Texts{"x = { }", "y"}));
    EXPECT_EQ(numbersOf("x = (1 +\n\t2\n  )\ny"), (Numbers{0, 3}));
    EXPECT_EQ(textsOf("f(\n)"), (Texts{"f( )"}));
}

TEST(LogicalLine, TheThreeDepthsAreIndependent) {
    EXPECT_EQ(textsOf("a ( ]\n) b"), (Texts{"a ( ] ) b"}));
    EXPECT_EQ(textsOf("a [ ( ]\nb\n) c\nd"), (Texts{"a [ ( ] b ) c", "d"}));
}

TEST(LogicalLine, AClosingBracketTooManyCountsForNothing) {
    EXPECT_EQ(textsOf("a ) ] }\nb ( \n)\nc"), (Texts{"a ) ] }", "b ( )", "c"}));
}

TEST(LogicalLine, ACommentInsideBracketsEndsTheStretch) {
    EXPECT_EQ(textsOf("x = [1, @@ one ]\n2]"), (Texts{"x = [1, 2]"}));
    EXPECT_EQ(textsOf("x = [ @@ a\n@@ b\n1]"), (Texts{"x = [  1]"}));
}

TEST(LogicalLine, ABlankLineInsideBracketsAddsABlank) {
    EXPECT_EQ(textsOf("x = [1,\n\n2]"), (Texts{"x = [1,  2]"}));
    EXPECT_EQ(numbersOf("x = [1,\n\n2]\ny"), (Numbers{0, 3}));
}

TEST(LogicalLine, AStatementBehindAContinuedOneStandsOnTheLaterLine) {
    EXPECT_EQ(textsOf("x = [1,\n2] ; y = 3"), (Texts{"x = [1, 2]", "y = 3"}));
    EXPECT_EQ(numbersOf("x = [1,\n2] ; y = 3"), (Numbers{0, 1}));
    EXPECT_EQ(numbersOf("a ; x = [1,\n2] ; y = (\n3)"), (Numbers{0, 0, 1}));
}

TEST(LogicalLine, AnOpenStringContinuesIt) {
    EXPECT_EQ(textsOf("s = \"ab\ncd\""), (Texts{"s = \"ab cd\""}));
    EXPECT_EQ(textsOf("s = \"ab   \n   cd\""), (Texts{"s = \"ab cd\""}));
    EXPECT_EQ(textsOf("s = 'a\nb\nc' ; t"), (Texts{"s = 'a b c'", "t"}));
    EXPECT_EQ(textsOf("s = \"a\n\nb\""), (Texts{"s = \"a  b\""})) << "an empty line adds one more blank";
    EXPECT_EQ(textsOf("s = \"a @@ b\nc\""), (Texts{"s = \"a @@ b c\""}));
    EXPECT_EQ(textsOf("s = \"a ( [ {\" \nb"), (Texts{"s = \"a ( [ {\"", "b"}));
}

TEST(LogicalLine, AQuoteInsideAStringOfTheOtherKindIsAnOrdinaryByte) {
    EXPECT_EQ(textsOf("a = \"it's\"\nb"), (Texts{"a = \"it's\"", "b"}));
    EXPECT_EQ(textsOf("a = 'say \"'\nb"), (Texts{"a = 'say \"'", "b"}));
}

TEST(LogicalLine, AnEscapedQuoteClosesNothing) {
    EXPECT_EQ(textsOf("a = \"x\\\"y\"\nb"), (Texts{"a = \"x\\\"y\"", "b"}));
    EXPECT_EQ(textsOf("a = \"x\\\\\"\nb"), (Texts{"a = \"x\\\\\"", "b"}));
}

TEST(LogicalLine, TheSourcesEndEndsIt) {
    EXPECT_EQ(textsOf("x = [1,\n2"), (Texts{"x = [1, 2"}));
    EXPECT_EQ(textsOf("f("), (Texts{"f("}));
    EXPECT_EQ(textsOf("f(\n\n"), (Texts{"f(  "}));
    EXPECT_EQ(numbersOf("\nf(\n\n"), (Numbers{0, 1}));
}

TEST(LogicalLine, OnlyTheLineFeedEndsAPhysicalLine) {
    EXPECT_EQ(textsOf("a\rb"), (Texts{"a\rb"}));
    OstrelScript engine;
    EXPECT_EQ(linesOf(engine, "return\r4").at(0).tokens, (Tokens{"return", "4"}));
    EXPECT_EQ(linesOf(engine, std::string("a\0b = 1", 7)).size(), 1U);
}

TEST(LogicalLine, AnOpenStringIsTheTokenisersFault) {
    OstrelScript engine;
    const std::string report = messageOf([&] { engine.parseLines("ok = 1\nx = \"abc\n  def"); });
    EXPECT_EQ(report, "OstrelScript error: Unterminated string literal\n"
                      "  at line 2, near token '\"abc def'\n"
                      "  x = \"abc def\n"
                      "      ^~~~~~~~\n"
                      "  hint: check spelling, operators, parentheses, and quote matching\n");
}

TEST(LogicalLine, EveryTokenHasItsAnalysis) {
    OstrelScript engine;
    for (const ParsedScriptLine& line : linesOf(engine, "a = b[1] + \"x\" @@ c\n\nif not d\nend"))
        EXPECT_EQ(line.tokens.size(), line.tokenAnalysis.size());
}

// --- Kinds ---

TEST(LineKind, NumbersAreThoseOfTheClassification) {
    const LineKind kinds[] = {
        LineKind::Blank,          LineKind::Plain,         LineKind::If,       LineKind::Elseif,
        LineKind::Else,           LineKind::End,           LineKind::While,    LineKind::Repeat,
        LineKind::Until,          LineKind::For,           LineKind::Function, LineKind::DecayFunction,
        LineKind::NativeFunction, LineKind::LocalFunction, LineKind::Nest,     LineKind::Return,
        LineKind::Break};
    for (unsigned number = 0; number < std::size(kinds); ++number)
        EXPECT_EQ(static_cast<unsigned>(kinds[number]), number);
    EXPECT_EQ(sizeof(LineKind), 1U);
}

TEST(LineKind, IsDecidedByTheFirstWord) {
    EXPECT_EQ(kindOf(""), LineKind::Blank);
    EXPECT_EQ(kindOf("a = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("f()"), LineKind::Plain);
    EXPECT_EQ(kindOf("if a"), LineKind::If);
    EXPECT_EQ(kindOf("elseif a"), LineKind::Elseif);
    EXPECT_EQ(kindOf("else"), LineKind::Else);
    EXPECT_EQ(kindOf("end"), LineKind::End);
    EXPECT_EQ(kindOf("while a"), LineKind::While);
    EXPECT_EQ(kindOf("repeat"), LineKind::Repeat);
    EXPECT_EQ(kindOf("until a"), LineKind::Until);
    EXPECT_EQ(kindOf("for i = 1, 2"), LineKind::For);
    EXPECT_EQ(kindOf("function f()"), LineKind::Function);
    EXPECT_EQ(kindOf("nest(\"a\")"), LineKind::Nest);
    EXPECT_EQ(kindOf("return"), LineKind::Return);
    EXPECT_EQ(kindOf("return 1, 2"), LineKind::Return);
    EXPECT_EQ(kindOf("break"), LineKind::Break);
    EXPECT_EQ(kindOf("break now and here"), LineKind::Break);
}

TEST(LineKind, APrefixMakesAFunctionOnlyBeforeTheWord) {
    EXPECT_EQ(kindOf("decay function f()"), LineKind::DecayFunction);
    EXPECT_EQ(kindOf("native function f()"), LineKind::NativeFunction);
    EXPECT_EQ(kindOf("local function f()"), LineKind::LocalFunction);
    EXPECT_EQ(kindOf("decay = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("native x = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("local x = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("external function f()"), LineKind::Plain);
    EXPECT_EQ(kindOf("decay"), LineKind::Plain);
    for (const LineKind kind :
         {LineKind::Function, LineKind::DecayFunction, LineKind::NativeFunction, LineKind::LocalFunction})
        EXPECT_TRUE(isFunctionKind(kind));
    EXPECT_FALSE(isFunctionKind(LineKind::For));
    EXPECT_FALSE(isFunctionKind(LineKind::Nest));
}

TEST(LineKind, AKeywordElsewhereChangesNothing) {
    EXPECT_EQ(kindOf("x = if"), LineKind::Plain);
    EXPECT_EQ(kindOf("f(end)"), LineKind::Plain);
    EXPECT_EQ(kindOf("ifx = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("\"if\""), LineKind::Plain);
    EXPECT_EQ(kindOf("If = 1"), LineKind::Plain);
    EXPECT_EQ(kindOf("if#1 = 2"), LineKind::Plain);
}

// --- Assignments ---

TEST(AssignmentPlan, KnowsTargetOperatorAndValue) {
    const Planned line("abc = 1 + 2");
    EXPECT_TRUE(line.plan().isAssignment);
    EXPECT_EQ(line.plan().scopeTarget, ScopeTarget::None);
    EXPECT_EQ(line.plan().assignOperatorIndex, 1U);
    EXPECT_EQ(line.plan().compoundOperator, BinaryOperator::None);
    ASSERT_EQ(line.plan().targets.size(), 1U);
    EXPECT_EQ(line.plan().targets[0].nameToken, 0U);
    EXPECT_EQ(line.plan().targets[0].name.name->text, "abc");
    EXPECT_TRUE(line.plan().targets[0].indexRanges.empty());
    EXPECT_EQ(line.plan().valueRanges, (Ranges{{2, 5}}));
    ASSERT_EQ(line.plan().values.size(), 1U);
    EXPECT_EQ(rootKind(line.plan().values[0]), FastKind::Add);
    EXPECT_FALSE(line.plan().expression.isValid());
}

TEST(AssignmentPlan, EveryOperatorIsKnown) {
    const std::pair<const char*, BinaryOperator> rows[] = {
        {"=", BinaryOperator::None},      {"+=", BinaryOperator::Add},    {"-=", BinaryOperator::Subtract},
        {"*=", BinaryOperator::Multiply}, {"/=", BinaryOperator::Divide}, {"\\=", BinaryOperator::IntegerDivide},
        {"%=", BinaryOperator::Modulo},   {"^=", BinaryOperator::Power},
    };
    for (const auto& [text, expected] : rows) {
        const Planned line(std::string("a ") + text + " 5");
        EXPECT_TRUE(line.plan().isAssignment) << text;
        EXPECT_EQ(line.plan().compoundOperator, expected) << text;
        EXPECT_EQ(line.plan().assignOperatorIndex, 1U) << text;
    }
    for (const char* text : {"==", "!=", "~=", "<=", ">=", "<-", "->", "&&", "||", "+", ":"})
        EXPECT_FALSE(Planned(std::string("a ") + text + " 5").plan().isAssignment) << text;
}

TEST(AssignmentPlan, APrefixGivesTheScope) {
    EXPECT_EQ(Planned("native a = 1").plan().scopeTarget, ScopeTarget::Native);
    EXPECT_EQ(Planned("local a = 1").plan().scopeTarget, ScopeTarget::Local);
    EXPECT_EQ(Planned("external a = 1").plan().scopeTarget, ScopeTarget::External);
    EXPECT_EQ(Planned("decay a = 1").plan().isAssignment, false);
    EXPECT_EQ(static_cast<int>(ScopeTarget::None), 0);
    EXPECT_EQ(static_cast<int>(ScopeTarget::Native), 1);
    EXPECT_EQ(static_cast<int>(ScopeTarget::Local), 2);
    EXPECT_EQ(static_cast<int>(ScopeTarget::External), 3);
    const Planned line("local a, b = 1, 2");
    EXPECT_EQ(line.plan().assignOperatorIndex, 4U);
    EXPECT_EQ(line.plan().targets[0].nameToken, 1U);
    EXPECT_EQ(line.plan().targets[1].nameToken, 3U);
    EXPECT_EQ(line.plan().valueRanges, (Ranges{{5, 6}, {7, 8}}));
}

TEST(AssignmentPlan, NamesBehindAPrefixAreADeclaration) {
    for (const char* text : {"local a", "native a", "external a", "local a, b, c"}) {
        const Planned line(text);
        EXPECT_TRUE(line.plan().isDeclaration) << text;
        EXPECT_FALSE(line.plan().isAssignment) << text;
    }
    EXPECT_EQ(Planned("local a, b, c").plan().targets.size(), 3U);
    for (const char* text : {"a", "a, b", "local", "local a[1]", "local 5"})
        EXPECT_FALSE(Planned(text).plan().isDeclaration) << text;
}

TEST(AssignmentPlan, IndexRangesStandInOrder) {
    const Planned line("a[1][i+1][f(x, [2])] = 5");
    ASSERT_TRUE(line.plan().isAssignment);
    ASSERT_EQ(line.plan().targets.size(), 1U);
    // a [ 1 ] [ i + 1 ] [ f ( x , [ 2 ] ) ] = 5
    EXPECT_EQ(line.plan().targets[0].indexRanges, (Ranges{{2, 3}, {5, 8}, {10, 18}}));
    EXPECT_EQ(rootKind(line.target(0, 0)), FastKind::Integer);
    EXPECT_EQ(rootKind(line.target(0, 1)), FastKind::Add);
    EXPECT_EQ(rootKind(line.target(0, 2)), FastKind::Call);
    EXPECT_FALSE(Planned("a[1][$1] = 5").target(0, 1).isValid()) << "an address has no nodes";
}

TEST(AssignmentPlan, SeveralTargetsMayHaveIndexes) {
    const Planned line("a, b[1], c#1[\"k\"][2] = f(1, 2), {3, 4}");
    ASSERT_TRUE(line.plan().isAssignment);
    ASSERT_EQ(line.plan().targets.size(), 3U);
    EXPECT_EQ(line.plan().targets[1].indexRanges.size(), 1U);
    EXPECT_EQ(line.plan().targets[2].indexRanges.size(), 2U);
    EXPECT_EQ(line.plan().targets[2].name.name->text, "c");
    EXPECT_EQ(line.plan().targets[2].name.explicitScope, ExplicitScope::Global);
    ASSERT_EQ(line.plan().valueRanges.size(), 2U);
    EXPECT_EQ(rootKind(line.plan().values[0]), FastKind::Call);
    EXPECT_EQ(rootKind(line.plan().values[1]), FastKind::TableLiteral);
    EXPECT_FALSE(Planned("a, b = 1, $1").plan().values[1].isValid());
}

TEST(AssignmentPlan, CommasInsideBracketsSeparateNothing) {
    EXPECT_EQ(Planned("a = f(1, 2), [3, 4], {5, 6}, (7)").plan().valueRanges.size(), 4U);
    EXPECT_EQ(Planned("a = \"x, y\"").plan().valueRanges.size(), 1U);
    EXPECT_EQ(Planned("a = 1), 2").plan().valueRanges, (Ranges{{2, 4}, {5, 6}})) << "a closing bracket too many";
    EXPECT_EQ(Planned("a = ").plan().valueRanges, (Ranges{{2, 2}}));
    EXPECT_EQ(Planned("a = 1,").plan().valueRanges, (Ranges{{2, 3}, {4, 4}}));
}

TEST(AssignmentPlan, WhatIsNoTargetListIsAnExpression) {
    for (const char* text : {"f(x)", "5 = a", "a.b = 1", "a + b = 1", "(a) = 1", "a b = 1", "a, 5 = 1", "a[1 = 2",
                             "\"s\" = 1", "a, = 1", ", a = 1", "a#4 = 1", "f(x) = 1", "a[1] b = 1"}) {
        const Planned line(text);
        EXPECT_FALSE(line.plan().isAssignment) << text;
        EXPECT_TRUE(line.plan().targets.empty()) << text;
        EXPECT_TRUE(line.plan().valueRanges.empty()) << text;
    }
    EXPECT_EQ(rootKind(Planned("f(x)").plan().expression), FastKind::Call);
    EXPECT_EQ(rootKind(Planned("a[1]").plan().expression), FastKind::Index);
    EXPECT_FALSE(Planned("f(x) = 1").plan().expression.isValid());
}

TEST(AssignmentPlan, ACompoundOperatorTakesOneTarget) {
    EXPECT_FALSE(Planned("a, b += 1").plan().isAssignment);
    EXPECT_TRUE(Planned("a[1] += 1").plan().isAssignment);
    EXPECT_TRUE(Planned("local a += 1").plan().isAssignment);
}

// --- Other plans ---

TEST(LinePlan, AConditionIsCompiledFromTheSecondToken) {
    EXPECT_EQ(rootKind(Planned("if a < 5").plan().expression), FastKind::Less);
    EXPECT_EQ(rootKind(Planned("elseif a").plan().expression), FastKind::Variable);
    EXPECT_EQ(rootKind(Planned("while true").plan().expression), FastKind::Boolean);
    EXPECT_EQ(rootKind(Planned("until not a").plan().expression), FastKind::LogicalNot);
    for (const char* text : {"if", "if a b", "if $1", "if a)", "while", "until", "if a then"})
        EXPECT_FALSE(Planned(text).plan().expression.isValid()) << text;
}

TEST(LinePlan, ANumericForHasItsClauses) {
    const Planned two("for i = 1, n * 2");
    EXPECT_TRUE(two.plan().isNumericFor);
    EXPECT_FALSE(two.plan().hasForStep);
    ASSERT_EQ(two.plan().loopNames.size(), 1U);
    EXPECT_EQ(two.plan().loopNames[0]->text, "i");
    EXPECT_EQ(rootKind(two.plan().forStart), FastKind::Integer);
    EXPECT_EQ(rootKind(two.plan().forLimit), FastKind::Multiply);
    EXPECT_FALSE(two.plan().forStep.isValid());

    const Planned three("for i = f(1, 2), 9, -1");
    EXPECT_TRUE(three.plan().hasForStep);
    EXPECT_EQ(rootKind(three.plan().forStart), FastKind::Call);
    EXPECT_EQ(rootKind(three.plan().forStep), FastKind::Integer);
}

TEST(LinePlan, AForIsNumericByItsFirstFourTokens) {
    for (const char* text : {"for i = 1", "for i = 1, 2, 3, 4", "for i = ,", "for i#1 = 1, 2", "for i = 1 2"})
        EXPECT_TRUE(Planned(text).plan().isNumericFor) << text;
    for (const char* text :
         {"for i =", "for i", "for", "for 5 = 1, 2", "for k, v in pairs(t)", "for k in t", "for x y z", "for = 1, 2"})
        EXPECT_FALSE(Planned(text).plan().isNumericFor) << text;
}

TEST(LinePlan, AGenericForHasNamesAndIterator) {
    const Planned line("for a, b, c in list()");
    const LinePlan& plan = line.plan();
    ASSERT_EQ(plan.loopNames.size(), 3U);
    EXPECT_EQ(plan.loopNames[2]->text, "c");
    EXPECT_EQ(plan.iteratorRange, (TokenRange{7, 10}));
    EXPECT_EQ(rootKind(plan.iteratorExpression), FastKind::Call);
    EXPECT_EQ(plan.iteratorBuiltin, BuiltinId::None);
    for (const char* text : {"for a list()", "for a, in list()", "for", "for a,b", "for 1 in x", "for a b in x"})
        EXPECT_TRUE(Planned(text).plan().loopNames.empty()) << text;
}

TEST(LinePlan, AnIteratorThatIsLiterallyPairsIsKnown) {
    const Planned pairs("for k, v in pairs(t[1])");
    EXPECT_EQ(pairs.plan().iteratorBuiltin, BuiltinId::Pairs);
    EXPECT_EQ(pairs.plan().iteratorArgumentRange, (TokenRange{7, 11}));
    EXPECT_EQ(rootKind(pairs.plan().iteratorArgument), FastKind::Index);
    EXPECT_EQ(Planned("for k in ipairs([1, 2])").plan().iteratorBuiltin, BuiltinId::Ipairs);
    for (const char* text : {"for k in pairs", "for k in pairs()", "for k in pairs(a, b)", "for k in pairs(a)[1]",
                             "for k in next(a)", "for k in pairs(a) + 1", "for k in (pairs(a))", "for k in x(a)"})
        EXPECT_EQ(Planned(text).plan().iteratorBuiltin, BuiltinId::None) << text;
}

TEST(LinePlan, AReturnHasItsValues) {
    EXPECT_TRUE(Planned("return").plan().valueRanges.empty());
    EXPECT_EQ(Planned("return 1").plan().valueRanges, (Ranges{{1, 2}}));
    const Planned line("return f(1, 2), [3, 4], x");
    ASSERT_EQ(line.plan().valueRanges.size(), 3U);
    EXPECT_EQ(rootKind(line.plan().values[0]), FastKind::Call);
    EXPECT_EQ(rootKind(line.plan().values[1]), FastKind::ArrayLiteral);
    EXPECT_EQ(rootKind(line.plan().values[2]), FastKind::Variable);
    EXPECT_FALSE(Planned("return 1, $1").plan().values[1].isValid());
}

TEST(LinePlan, ANestMayHaveALabel) {
    for (const char* text : {"nest(\"a b\")", "nest \"a b\"()", "nest ( 'a b' )"}) {
        const Planned line(text);
        EXPECT_TRUE(line.plan().hasNestLabel) << text;
        EXPECT_EQ(line.plan().nestLabel, "a b") << text;
    }
    EXPECT_FALSE(Planned("nest").plan().hasNestLabel);
    EXPECT_EQ(Planned("nest(\"a\\tb\")").plan().nestLabel, "a\tb");
}

TEST(LinePlan, AnyOtherNestIsRefused) {
    OstrelScript engine;
    for (const char* text : {"nest(a)", "nest(\"a\" + \"b\")", "nest()", "nest(5)", "nest \"a\"", "nest(\"a\"",
                             "nest(\"a\") b", "nest = 5", "nest x", "nest(\"a\", \"b\")", "nest[\"a\"]"}) {
        const std::string report = messageOf([&] { engine.parseLines(text); });
        EXPECT_EQ(firstLineOf(report), "nest labels must be string literals") << text;
    }
    for (const char* text : {"nest(\"\")", "nest ''()"})
        EXPECT_EQ(firstLineOf(messageOf([&] { engine.parseLines(text); })), "nest label must not be empty") << text;
}

TEST(LinePlan, IsNeverNull) {
    OstrelScript engine;
    for (const ParsedScriptLine& line :
         linesOf(engine, "\nif a\nelse\nend\nrepeat\nuntil b\nfunction f()\nend\nbreak\nx = 1"))
        EXPECT_NE(line.plan, nullptr);
    EXPECT_NE(ParsedScriptLine().plan, nullptr);
}

// --- Blocks ---

namespace {

/// Both links of each line: "3/1" is an end at line 3 and a next branch at line 1; "-" is none.
Texts linksOf(const std::string& source) {
    OstrelScript engine;
    const auto text = [](std::size_t line) { return line == noLine ? std::string("-") : std::to_string(line); };
    Texts links;
    for (const ParsedScriptLine& line : engine.parseLines(source))
        links.push_back(text(line.matchingEnd) + "/" + text(line.nextBranch));
    return links;
}

} // namespace

TEST(BlockLinks, AreUnsetOutsideBlocks) { EXPECT_EQ(linksOf("a\n\nb"), (Texts{"-/-", "-/-", "-/-"})); }

TEST(BlockLinks, ABlockEndsAtItsEnd) {
    for (const char* opening : {"if a", "while a", "for i = 1, 2", "function f()", "decay function f()",
                                "native function f()", "local function f()", "nest(\"n\")", "nest"})
        EXPECT_EQ(linksOf(std::string(opening) + "\nx\nend\ny"), (Texts{"2/-", "-/-", "-/-", "-/-"})) << opening;
}

TEST(BlockLinks, EveryBranchOfAChainKnowsTheEndAndTheNext) {
    EXPECT_EQ(linksOf("if a\nelseif b\nelseif c\nelse\nend"), (Texts{"4/1", "4/2", "4/3", "4/-", "-/-"}));
}

TEST(BlockLinks, BlocksNest) {
    EXPECT_EQ(linksOf("if a\nwhile b\nif c\nend\nend\nelse\nfor i = 1, 2\nend\nend"),
              (Texts{"8/5", "4/-", "3/-", "-/-", "-/-", "8/-", "7/-", "-/-", "-/-"}));
}

TEST(BlockLinks, ARepeatEndsAtItsUntil) {
    EXPECT_EQ(linksOf("repeat\nif a\nend\nuntil b"), (Texts{"3/-", "2/-", "-/-", "-/-"}));
    EXPECT_EQ(linksOf("repeat\nrepeat\nuntil a\nuntil b"), (Texts{"3/-", "2/-", "-/-", "-/-"}));
    EXPECT_EQ(linksOf("repeat\nend"), (Texts{"-/-", "-/-"})) << "an end is no until";
}

TEST(BlockLinks, AnUntilClosesOnlyARepeat) {
    EXPECT_EQ(linksOf("if a\nuntil b\nend"), (Texts{"2/-", "-/-", "-/-"}));
    EXPECT_EQ(linksOf("until b"), (Texts{"-/-"}));
}

TEST(BlockLinks, StrayBranchesAndEndsLinkNothing) {
    EXPECT_EQ(linksOf("else\nelseif a\nend\nend"), (Texts{"-/-", "-/-", "-/-", "-/-"}));
    EXPECT_EQ(linksOf("while a\nelse\nend"), (Texts{"2/-", "-/-", "-/-"}));
}

TEST(BlockLinks, AMissingEndLeavesThemUnset) {
    EXPECT_EQ(linksOf("if a\nelse\nx"), (Texts{"-/1", "-/-", "-/-"}));
    EXPECT_EQ(linksOf("while a\nif b\nend"), (Texts{"-/-", "2/-", "-/-"}));
}

TEST(BlockLinks, StatementsOfOnePhysicalLineAreLinesToo) {
    EXPECT_EQ(linksOf("if a ; x ; else ; y ; end"), (Texts{"4/2", "-/-", "4/-", "-/-", "-/-"}));
}

TEST(BlockLinks, ArePreparedAnewForACopy) {
    OstrelScript engine;
    const Lines lines = linesOf(engine, "x\nif a\ny\nelse\nend");
    Lines copy(lines.begin() + 1, lines.end());
    engine.prepareParsedLines(copy);
    EXPECT_EQ(copy[0].matchingEnd, 3U);
    EXPECT_EQ(copy[0].nextBranch, 2U);
    EXPECT_EQ(copy[2].matchingEnd, 3U);
    EXPECT_EQ(copy[0].lineNumber, 1U);
    EXPECT_TRUE(copy[0].plan->expression.isValid());
}

// --- Any source ---

TEST(LineParser, LongAndDeepSourcesAreParsed) {
    constexpr std::size_t many = 100000;
    OstrelScript engine;
    for (const char* text :
         {"(", "[", "{", "not ", "- ", "1+", "a[", "f(", "\"a\"", "'", "@", ";", "end\n", "if a\n", "else\n", "a,"}) {
        std::string source = "x = ";
        for (std::size_t i = 0; i < many; ++i) source += text;
        const std::string fault = firstLineOf(messageOf([&] { engine.parseLines(source); }));
        EXPECT_TRUE(fault.empty() || fault == "Unterminated string literal") << text << ": " << fault;
    }
}
