// Expressions as nodes: what compiles, into which nodes, and the truth of conditions.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace {

/// An expression compiled to nodes, and the engine whose names it holds.
struct Compiled {
    explicit Compiled(const std::string& text) : tokens(engine.tokenise(text)) {
        for (const std::string& token : tokens) analysis.push_back(engine.analyseToken(token));
        expression = compileFastExpressionRange(tokens, analysis, 0, tokens.size());
    }

    const FastNode& root() const { return expression.node(expression.root); }
    FastKind rootKind() const { return expression.isValid() ? root().kind : FastKind::None; }

    OstrelScript engine;
    std::vector<std::string> tokens;
    std::vector<TokenAnalysis> analysis;
    FastExpression expression;
};

} // namespace

// --- Compiling ---

TEST(FastCompile, KindsHaveTheirNumbers) {
    const FastKind kinds[] = {
        FastKind::None,        FastKind::Integer,        FastKind::Float,    FastKind::String,   FastKind::Boolean,
        FastKind::Nil,         FastKind::Variable,       FastKind::Index,    FastKind::Call,     FastKind::Negate,
        FastKind::LogicalNot,  FastKind::Length,         FastKind::Add,      FastKind::Subtract, FastKind::Multiply,
        FastKind::Divide,      FastKind::IntegerDivide,  FastKind::Modulo,   FastKind::Power,    FastKind::Tetration,
        FastKind::Pentation,   FastKind::Equal,          FastKind::NotEqual, FastKind::Less,     FastKind::Greater,
        FastKind::LessOrEqual, FastKind::GreaterOrEqual, FastKind::And,      FastKind::Or};
    for (unsigned number = 0; number < std::size(kinds); ++number)
        EXPECT_EQ(static_cast<unsigned>(kinds[number]), number);
    EXPECT_EQ(sizeof(FastKind), 1U);
    EXPECT_EQ(static_cast<int>(ScalarKind::Invalid), 0);
    EXPECT_EQ(static_cast<int>(ScalarKind::Nil), 1);
    EXPECT_EQ(static_cast<int>(ScalarKind::Integer), 2);
    EXPECT_EQ(static_cast<int>(ScalarKind::Float), 3);
    EXPECT_EQ(static_cast<int>(ScalarKind::Boolean), 4);
}

TEST(FastCompile, EveryOperatorHasItsNode) {
    const std::pair<const char*, FastKind> rows[] = {
        {"a + b", FastKind::Add},
        {"a - b", FastKind::Subtract},
        {"a * b", FastKind::Multiply},
        {"a / b", FastKind::Divide},
        {"a \\ b", FastKind::IntegerDivide},
        {"a % b", FastKind::Modulo},
        {"a ^ b", FastKind::Power},
        {"a <- b", FastKind::Tetration},
        {"a -> b", FastKind::Pentation},
        {"a == b", FastKind::Equal},
        {"a != b", FastKind::NotEqual},
        {"a ~= b", FastKind::NotEqual},
        {"a < b", FastKind::Less},
        {"a > b", FastKind::Greater},
        {"a <= b", FastKind::LessOrEqual},
        {"a >= b", FastKind::GreaterOrEqual},
        {"a and b", FastKind::And},
        {"a && b", FastKind::And},
        {"a or b", FastKind::Or},
        {"a || b", FastKind::Or},
        {"-a", FastKind::Negate},
        {"!a", FastKind::LogicalNot},
        {"not a", FastKind::LogicalNot},
        {"#a", FastKind::Length},
        {"+a", FastKind::Variable},
        {"a[b]", FastKind::Index},
        {"a(b)", FastKind::Call},
    };
    for (const auto& [text, kind] : rows) EXPECT_EQ(Compiled(text).rootKind(), kind) << text;
}

TEST(FastCompile, LiteralsAreNodesWithTheirValue) {
    EXPECT_EQ(Compiled("42").root().intValue, 42);
    EXPECT_EQ(Compiled("1.5").root().floatValue, 1.5F);
    EXPECT_EQ(Compiled("2147483648").root().floatValue, 2147483648.0F);
    EXPECT_EQ(Compiled("tre").root().intValue, 1);
    EXPECT_EQ(Compiled("flse").root().intValue, 0);
    EXPECT_EQ(Compiled("not").rootKind(), FastKind::Nil);
    const Compiled text("\"a\\tb\"");
    ASSERT_EQ(text.rootKind(), FastKind::String);
    EXPECT_EQ(text.expression.strings.at(static_cast<std::size_t>(text.root().intValue)).asString(), "a\tb");
    EXPECT_EQ(Compiled("name#2").root().explicitScope, ExplicitScope::Native);
    EXPECT_EQ(Compiled("name#2").root().name->text, "name");
}

TEST(FastCompile, ANegatedNumberIsALiteral) {
    EXPECT_EQ(Compiled("-5").root().intValue, -5);
    EXPECT_EQ(Compiled("- -5").root().intValue, 5);
    EXPECT_EQ(Compiled("-1.5").root().floatValue, -1.5F);
    EXPECT_EQ(Compiled("-2147483648").root().floatValue, -2147483648.0F);
    EXPECT_EQ(Compiled("-true").rootKind(), FastKind::Negate);
    EXPECT_EQ(Compiled("-2 ^ 2").rootKind(), FastKind::Negate);
}

TEST(FastCompile, ACallBelowMarksEveryNodeAbove) {
    EXPECT_FALSE(Compiled("a + b[c] * -d").root().calls);
    EXPECT_TRUE(Compiled("f()").root().calls);
    EXPECT_TRUE(Compiled("a + b[f()] * 2").root().calls);
    EXPECT_TRUE(Compiled("not -f()").root().calls);
    EXPECT_TRUE(Compiled("f()[1]").root().calls);
    EXPECT_TRUE(Compiled("a or f()").root().calls);
}

TEST(FastCompile, GivesUpOnWhatHasNoNodes) {
    for (const char* text : {"$ff", "$0 == a", "1 or $0", "[$0]", "{k = $0}", "f($0)"})
        EXPECT_FALSE(Compiled(text).expression.isValid()) << text;
}

TEST(FastCompile, ALiteralOfAContainerMakesTheWholeAValue) {
    for (const char* text : {"[]", "{}", "[1][1]", "a + {}", "f({})", "a[[1]]", "...", "f(...)", "1 or []", "#{k = 1}",
                             "{1, k : 2, 'k' = 3, [a] = 4,}"}) {
        ASSERT_TRUE(Compiled(text).expression.isValid()) << text;
        EXPECT_TRUE(Compiled(text).expression.givesValue) << text;
    }
    EXPECT_FALSE(Compiled("a[1] + f(b)").expression.givesValue);
    for (const char* text :
         {"[1,]", "[1 2]", "{,}", "{1 2}", "{[a]}", "{[a] 1}", "{5 = 1}", "{k = }", "{k}}", "{(a) = 1}"})
        EXPECT_FALSE(Compiled(text).expression.isValid()) << text;
}

TEST(FastCompile, GivesUpOnEveryFault) {
    for (const char* text : {"",        "1 +",  "+",   "(",      "(1",     "(1, 2)",
                             "()",      "a b",  "1 2", "a[",     "a[1",    "a[]",
                             "a[1, 2]", "f(",   "f(1", "f(1 2)", "f(1,)",  "f(,)",
                             ")",       "]",    "a.b", "1e5",    "a#4",    "= 1",
                             "a = 1",   "a,",   ", a", "not =",  "1 or )", "99999999999999999999999999999999999999999",
                             "a ; b",   "a : b"})
        EXPECT_FALSE(Compiled(text).expression.isValid()) << text;
}

TEST(FastCompile, TakesARangeOfTheLine) {
    Compiled line("x = a + 1 , not , f ( 2 )");
    const auto compiled = [&line](std::size_t first, std::size_t last) {
        const FastExpression expression = compileFastExpressionRange(line.tokens, line.analysis, first, last);
        return expression.isValid() ? expression.node(expression.root).kind : FastKind::None;
    };
    EXPECT_EQ(compiled(2, 5), FastKind::Add);
    EXPECT_EQ(compiled(2, 3), FastKind::Variable);
    EXPECT_EQ(compiled(2, 4), FastKind::None);
    EXPECT_EQ(compiled(6, 7), FastKind::Nil) << "what follows the range makes it the literal";
    EXPECT_EQ(compiled(8, 12), FastKind::Call);
    EXPECT_EQ(compiled(8, 11), FastKind::None);
    EXPECT_EQ(compiled(5, 5), FastKind::None);
}

TEST(FastCompile, DeepExpressionsAreLeftToTheTokens) {
    const auto nested = [](const std::string& opening, const std::string& closing, int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += opening;
        text += "1";
        for (int i = 0; i < count; ++i) text += closing;
        return text;
    };
    EXPECT_TRUE(Compiled(nested("(", ")", 100)).expression.isValid());
    EXPECT_TRUE(Compiled(nested("f(", ")", 60)).expression.isValid());
    const std::pair<const char*, const char*> rows[] = {{"(", ")"},   {"f(", ")"},  {"a[", "]"}, {"- ", ""},
                                                        {"not ", ""}, {"1 ^ ", ""}, {"1 + ", ""}};
    for (const auto& [opening, closing] : rows)
        EXPECT_FALSE(Compiled(nested(opening, closing, 1000)).expression.isValid()) << opening;
    OstrelScript engine;
    EXPECT_EQ(textOf(engine, nested("(1 + ", ")", 1000)), "1001");
    EXPECT_EQ(textOf(engine, nested("1 + ", "", 1000)), "1001");
}

// --- Scalars ---

TEST(FastScalar, HoldsNumbersBooleansAndNil) {
    EXPECT_EQ(makeFastScalarInt(5).kind, ScalarKind::Integer);
    EXPECT_EQ(makeFastScalarFloat(5).kind, ScalarKind::Float);
    EXPECT_EQ(makeFastScalarBool(true).kind, ScalarKind::Boolean);
    EXPECT_EQ(makeFastScalarNil().kind, ScalarKind::Nil);
    EXPECT_FALSE(FastScalarValue().isValid());
    for (const Variable& value : {Variable(), Variable(-7), Variable(2.5F), Variable(true), Variable(false)}) {
        const FastScalarValue scalar = fastScalarFromVariable(value);
        EXPECT_TRUE(scalar.isValid());
        const Variable back = fastScalarToVariable(scalar);
        EXPECT_EQ(back.type, value.type);
        EXPECT_EQ(back.toString(), value.toString());
        Variable target = "something";
        assignFastScalarToVariable(target, scalar);
        EXPECT_EQ(target.toString(), value.toString());
    }
    for (const Variable& value :
         {Variable("5"), makeArray({}), makeTable(), makeMulti({}), Variable(static_cast<void*>(nullptr)),
          Variable(std::vector<char>()), Variable(makeRef<ScriptCallable>())})
        EXPECT_FALSE(fastScalarFromVariable(value).isValid()) << value.toString();
}

TEST(FastScalar, ConvertsAsValuesDo) {
    EXPECT_TRUE(fastScalarIsNumeric(makeFastScalarInt(0)));
    EXPECT_TRUE(fastScalarIsNumeric(makeFastScalarFloat(0)));
    EXPECT_TRUE(fastScalarIsNumeric(makeFastScalarBool(false)));
    EXPECT_FALSE(fastScalarIsNumeric(makeFastScalarNil()));
    EXPECT_FALSE(fastScalarIsNumeric(FastScalarValue()));
    EXPECT_EQ(fastScalarToInt(makeFastScalarFloat(-7.9F)), -7);
    EXPECT_EQ(fastScalarToInt(makeFastScalarFloat(1e20F)), 2147483647);
    EXPECT_EQ(fastScalarToInt(makeFastScalarBool(true)), 1);
    EXPECT_EQ(fastScalarToDouble(makeFastScalarInt(16777217)), 16777217.0);
    EXPECT_EQ(fastScalarToDouble(makeFastScalarBool(false)), 0.0);
    EXPECT_EQ(messageOf([] { fastScalarToInt(makeFastScalarNil()); }), "Expected a numeric value");
    EXPECT_EQ(messageOf([] { fastScalarToDouble(FastScalarValue()); }), "Expected a numeric value");
}

TEST(FastScalar, ANumberIsTrueInAConditionUnlessItIsZero) {
    EXPECT_FALSE(fastScalarIsTruthy(makeFastScalarInt(0)));
    EXPECT_TRUE(fastScalarIsTruthy(makeFastScalarInt(-1)));
    EXPECT_FALSE(fastScalarIsTruthy(makeFastScalarFloat(0)));
    EXPECT_FALSE(fastScalarIsTruthy(makeFastScalarFloat(-0.0F)));
    EXPECT_TRUE(fastScalarIsTruthy(makeFastScalarFloat(0.1F)));
    EXPECT_TRUE(fastScalarIsTruthy(makeFastScalarFloat(std::nanf(""))));
    EXPECT_TRUE(fastScalarIsTruthy(makeFastScalarBool(true)));
    EXPECT_FALSE(fastScalarIsTruthy(makeFastScalarBool(false)));
    EXPECT_FALSE(fastScalarIsTruthy(makeFastScalarNil()));
    EXPECT_FALSE(fastScalarIsTruthy(FastScalarValue()));
}

// --- Builtins by number ---

TEST(Builtin, EveryNameHasItsNumber) {
    const char* const names[] = {"assert",        "getTimeMs",      "toString",     "toNumber",      "error",
                                 "pcall",         "load",           "pairs",        "ipairs",        "next",
                                 "select",        "collectGarbage", "len",          "string.len",    "string.upper",
                                 "string.sub",    "string.find",    "string.match", "string.gmatch", "string.byte",
                                 "string.format", "string.gsub",    "table.insert", "table.remove",  "table.concat",
                                 "table.sort",    "math.floor",     "math.ceil",    "math.abs",      "math.min",
                                 "math.max",      "math.sin",       "math.cos",     "math.rad",      "math.log",
                                 "math.sqrt",     "utf8.len"};
    EXPECT_EQ(std::size(names), 37U);
    for (unsigned i = 0; i < std::size(names); ++i)
        EXPECT_EQ(static_cast<unsigned>(builtinIdFromName(names[i])), i + 1) << names[i];
    for (const char* name : {"", "print", "string.lower", "math.random", "floor", "Len", "table.keys", "utf8.offset"})
        EXPECT_EQ(builtinIdFromName(name), BuiltinId::None) << name;
}

TEST(Builtin, LibraryFunctionsCarryTheirNumber) {
    OstrelScript engine;
    const auto idOf = [&engine](const std::string& expression) {
        return engine.runScript("return " + expression).asFunction()->builtinId;
    };
    EXPECT_EQ(idOf("assert"), BuiltinId::Assert);
    EXPECT_EQ(idOf("len"), BuiltinId::Len);
    EXPECT_EQ(idOf("string[\"sub\"]"), BuiltinId::StringSub);
    EXPECT_EQ(idOf("table[\"sort\"]"), BuiltinId::TableSort);
    EXPECT_EQ(idOf("math[\"sqrt\"]"), BuiltinId::MathSqrt);
    EXPECT_EQ(idOf("utf8[\"len\"]"), BuiltinId::Utf8Len);
    EXPECT_EQ(idOf("print"), BuiltinId::None);
    EXPECT_EQ(idOf("string[\"rep\"]"), BuiltinId::None);
}

// --- Short bodies ---

namespace {

FastBody bodyOf(const std::string& body) {
    OstrelScript engine;
    return engine.runScript("function f(a)\n" + body + "\nend\nreturn f").asFunction()->fastBody;
}

} // namespace

TEST(FastBody, OneReturnLineIsTheFirstKind) {
    EXPECT_EQ(static_cast<int>(FastBody::Return), 1);
    EXPECT_EQ(static_cast<int>(FastBody::GuardedReturn), 2);
    EXPECT_EQ(bodyOf("return a + 1"), FastBody::Return);
    EXPECT_EQ(bodyOf("\n@@ words\nreturn a + 1\n\n"), FastBody::Return);
    EXPECT_EQ(bodyOf("return"), FastBody::Return);
    EXPECT_EQ(bodyOf("return a, 1"), FastBody::Return);
    EXPECT_EQ(bodyOf("return [a]"), FastBody::Return);
}

TEST(FastBody, AGuardBeforeAReturnIsTheSecondKind) {
    EXPECT_EQ(bodyOf("if a < 0\nerror(\"negative\")\nend\nreturn a"), FastBody::GuardedReturn);
    EXPECT_EQ(bodyOf("\nif a < 0\n\nerror('negative')\nend\n@@ fine\nreturn a"), FastBody::GuardedReturn);
    OstrelScript engine;
    const Variable function = engine.runScript("function f(a)\nif a\nerror(\"x\\ty\")\nend\nreturn a\nend\nreturn f");
    EXPECT_EQ(function.asFunction()->guardMessage, "x\ty");
}

TEST(FastBody, AnythingElseIsNone) {
    for (const char* body : {"", "a = 1", "local b = a\nreturn b", "return a\nreturn a",
                             "if a\nreturn 1\nend\nreturn 2", "if a\nerror(a)\nend\nreturn 2",
                             "if a\nerror(\"x\" + a)\nend\nreturn 2", "if a\nerror(\"x\")\nelse\nend\nreturn 2",
                             "if a\nerror(\"x\")\nend\na = 1", "while a\nerror(\"x\")\nend\nreturn 2",
                             "if a\nerror \"x\"\nend\nreturn 2", "if a\nerror(\"x\", 1)\nend\nreturn 2",
                             "if a\nelse\nend\nreturn a", "if a\nerror(\"x\")\nend\nreturn a\nreturn a"})
        EXPECT_EQ(bodyOf(body), FastBody::None) << body;
}

// --- Conditions ---

namespace {

/// Runs the condition in an `if`, an `elseif`, a `while` and an `until`; "yes", "no", or what differs.
std::string conditionOf(OstrelScript& engine, const std::string& condition) {
    const std::string results =
        engine
            .runScript("taken = \"\"\n"
                       "if " +
                       condition +
                       "\ntaken = taken + \"y\"\nelse\ntaken = taken + \"n\"\nend\n"
                       "if false\nelseif " +
                       condition +
                       "\ntaken = taken + \"y\"\nelse\ntaken = taken + \"n\"\nend\n"
                       "rounds = \"n\"\nwhile " +
                       condition +
                       "\nrounds = \"y\"\nbreak\nend\ntaken = taken + rounds\n"
                       "rounds = 0\nrepeat\nrounds = rounds + 1\nif rounds == 2\nbreak\nend\nuntil " +
                       condition +
                       "\n"
                       "if rounds == 1\ntaken = taken + \"y\"\nelse\ntaken = taken + \"n\"\nend\nreturn taken")
            .toString();
    return results == "yyyy" ? "yes" : (results == "nnnn" ? "no" : results);
}

} // namespace

TEST(Condition, ZeroIsFalseWhereScalarsAreComputed) {
    OstrelScript engine;
    engine.runScript("zero = 0\nfloatZero = 0.0\nlist = [0, 0.0, 1]\nmap = {k = 0, sub = {z = 0}}\nempty = []\n"
                     "function one()\nreturn 0\nend\nfunction same(x)\nreturn x\nend\n"
                     "function guarded(x)\nif x == 9\nerror(\"nine\")\nend\nreturn x\nend\nname = \"k\"");
    for (const char* condition : {"0",
                                  "0.0",
                                  "-0",
                                  "(0)",
                                  "+0",
                                  "zero",
                                  "floatZero",
                                  "zero#1",
                                  "list[1]",
                                  "list[2]",
                                  "map[\"k\"]",
                                  "map[\"sub\"][\"z\"]",
                                  "map[name]",
                                  "list[zero + 1]",
                                  "list[same(1)]",
                                  "zero + 0",
                                  "1 - 1",
                                  "5 \\ 6",
                                  "4 % 2",
                                  "0 * 1.5",
                                  "0 / 5",
                                  "0 or 5",
                                  "1 and 0",
                                  "zero and 5 and 0",
                                  "not or 0",
                                  "one()",
                                  "same(0)",
                                  "same(zero)",
                                  "guarded(0)",
                                  "one() + same(0)",
                                  "len(\"\")",
                                  "len(empty)",
                                  "math[\"floor\"](0.5)",
                                  "math[\"abs\"](0)",
                                  "math[\"max\"](0, -1)",
                                  "string[\"len\"](\"\")",
                                  "#empty",
                                  "-zero",
                                  "zero ^ 2"})
        EXPECT_EQ(conditionOf(engine, condition), "no") << condition;
    for (const char* condition :
         {"1", "-1", "0.5", "list[3]", "zero == 0", "not zero == 0", "!zero == false", "one() == 0", "same(1)", "0 < 1",
          "not not 0", "!!zero", "0 and 5", "(0 or 5) == 0", "len(\"a\")"})
        EXPECT_EQ(conditionOf(engine, condition), "yes") << condition;
}

TEST(Condition, ZeroIsTrueWhereValuesAreComputed) {
    OstrelScript engine;
    engine.runScript("list = [0]\nfunction longer(x)\nlocal y = x\nreturn y\nend\nfunction table0()\nlocal t = {k = "
                     "0}\nreturn t\nend\nfunction open(...)\nreturn 0\nend\nmap = {k1 = 0, sub1 = {z = 0, e = []}, k = "
                     "0}\nmap[false] = 0");
    for (const char* condition : {"[0][1]",
                                  "{a = 0}[\"a\"]",
                                  "longer(0)",
                                  "longer(0.0)",
                                  "longer(0) + 0",
                                  "0 + longer(0)",
                                  "toNumber(\"0\")",
                                  "table0()[\"k\"]",
                                  "false or longer(0)",
                                  "longer(1) and 0",
                                  "-longer(0)",
                                  "get(list, 1)",
                                  "open()",
                                  "open() + 1 - 1",
                                  "list[longer(1)]",
                                  "map[\"k\" + 1]",
                                  "map[longer(\"k1\")]",
                                  "map[\"k\" + 1] + 0",
                                  "map[\"sub\" + 1][\"z\"]",
                                  "map[\"sub\" + 1][\"z\"] * 2",
                                  "#map[\"sub\" + 1][\"e\"]",
                                  "#longer([])",
                                  "#(\"\" + \"\")",
                                  "(nobody or map)[\"k1\"]",
                                  "(map and list)[1]",
                                  "#(nobody or \"\")",
                                  "map[!list]",
                                  "map[not list]",
                                  "list[-longer(-1)]",
                                  "map[\"ok\"[2]]"})
        EXPECT_EQ(conditionOf(engine, condition), "yes") << condition;
    for (const char* condition :
         {"longer(false)", "longer(not)", "[false][1]", "[not][1]", "{}[1]", "!longer(0)", "not longer(0)"})
        EXPECT_EQ(conditionOf(engine, condition), "no") << condition;
}

TEST(Condition, EverythingElseIsAsElsewhere) {
    OstrelScript engine;
    engine.runScript("list = []\nmap = {}\nfunction pair()\nreturn 0, 0\nend");
    for (const char* condition :
         {"\"\"", "\"0\"", "list", "map", "[]", "{}", "len", "pair()", "$0", "true", "not not", "!not"})
        EXPECT_EQ(conditionOf(engine, condition), "yes") << condition;
    for (const char* condition : {"not", "nobody", "false", "flse", "list[1]", "map[1]", "not list", "!\"\""})
        EXPECT_EQ(conditionOf(engine, condition), "no") << condition;
}
