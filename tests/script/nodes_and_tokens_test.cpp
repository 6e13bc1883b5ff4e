// Nodes and tokens beside each other: random expressions and statements, evaluated both ways, must agree in value,
// fault, place of the fault and everything that they did on their way. The seed is printed.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace {

/// Writes random expressions that compile to nodes.
class ExpressionWriter {
public:
    explicit ExpressionWriter(std::mt19937& random) : random_(random) {}

    std::string expression(int depth) {
        if (depth <= 0) return atom();
        switch (below(14)) {
        case 0: return atom();
        case 6: return "[ " + arguments(depth - 1) + " ]";
        case 7: return tableLiteral(depth - 1);
        case 1: return pick({"-", "!", "#", "+", "not", "- -"}) + " " + expression(depth - 1);
        case 2: return "( " + expression(depth - 1) + " )";
        case 3: return expression(depth - 1) + " [ " + expression(depth - 2) + " ]";
        case 4: return pick(functions) + " ( " + arguments(depth - 1) + " )";
        case 5: return container() + " [ " + expression(depth - 2) + " ]";
        default: return expression(depth - 1) + " " + operatorText() + " " + expression(depth - 1);
        }
    }

private:
    using Choice = std::vector<const char*>;

    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    std::string pick(const Choice& choice) { return choice[random_() % choice.size()]; }
    std::string container() { return pick({"a", "t", "aa", "s", "t [ \"sub\" ]", "nothing", "string", "math"}); }

    std::string operatorText() {
        return pick({"+",  "+",  "+",  "-",  "-", "*", "*",  "/",  "\\",  "%",  "^",  "<-",
                     "->", "==", "!=", "~=", "<", ">", "<=", ">=", "and", "or", "&&", "||"});
    }

    std::string arguments(int depth) {
        std::string text;
        for (int left = below(4); left > 0; --left) text += expression(depth - 1) + (left > 1 ? " , " : "");
        return text;
    }

    std::string tableLiteral(int depth) {
        std::string text = "{ ";
        for (int left = below(4); left > 0; --left) {
            switch (below(4)) {
            case 0: text += pick({"k = ", "k : ", "'two words' = ", "\"k\" : ", "end = ", "i#1 = "}); break;
            case 1: text += "[ " + expression(depth - 1) + pick({" ] = ", " ] : "}); break;
            default: break;
            }
            text += expression(depth - 1) + (left > 1 ? " , " : pick({"", " ,"}));
        }
        return text + " }";
    }

    std::string atom() {
        return pick({"0",          "1",           "2",          "3",          "7",
                     "2147483647", "-2147483647", "2147483648", "0.0",        "0.5",
                     "1.5",        "-2.5",        "3.0",        "1000000.25", "\"\"",
                     "\"a\"",      "\"10\"",      "'x y'",      "\"upper\"",  "\"sub\"",
                     "\"k\"",      "true",        "tre",        "false",      "flse",
                     "not",        "i",           "j",          "f",          "g",
                     "b",          "s",           "e",          "a",          "aa",
                     "t",          "nothing",     "p",          "i#1",        "i#3",
                     "one",        "m",           "big",        "tick ( 1 )", "tick ( \"t\" )",
                     "pair ( )",   "none ( )",    "a [ 1 ]",    "a [ 2 ]",    "t [ \"k\" ]",
                     "s [ 1 ]"});
    }

    const Choice functions = {"one",
                              "same",
                              "same",
                              "sum",
                              "tick",
                              "tick",
                              "longer",
                              "longer",
                              "guarded",
                              "guarded",
                              "fails",
                              "faults",
                              "pair",
                              "none",
                              "toString",
                              "len",
                              "math [ \"floor\" ]",
                              "math [ \"max\" ]",
                              "math [ \"abs\" ]",
                              "string [ \"len\" ]",
                              "string [ \"byte\" ]",
                              "s [ \"upper\" ]",
                              "utf8 [ \"len\" ]",
                              "nothing",
                              "toNumber",
                              "pcall",
                              "changes",
                              "rest"};
    std::mt19937& random_;
};

/// What a script can see of a run: the value or the fault with its token, and what the called functions noted.
struct Outcome {
    Variable value;
    std::string fault, token, notes;
};

/// An engine with variables and functions for the expressions.
class Road {
public:
    Road() { engine_.runScript(setting); }

    /// Runs `return EXPRESSION`, written so that it takes this road or the other one.
    Outcome run(const std::string& text, bool isProtected) {
        engine_.runScript("notes = \"\"\ni = 3\na[1] = 10\nt[\"k\"] = 2\ns = \"abc\"");
        Outcome outcome;
        if (isProtected) {
            const Variable chunk = engine_.loadScriptChunk(text, "");
            const std::vector<Variable> results = engine_.pcallFunctionFast(&chunk, 1).asMulti()->values;
            if (results.at(0).asBool())
                outcome.value = results.size() == 2 ? results[1] : makeMulti({results.begin() + 1, results.end()});
            else
                read(results.at(1).toString(), outcome);
        } else {
            try {
                outcome.value = engine_.runScript(text);
            } catch (const std::exception& error) {
                read(error.what(), outcome);
            }
        }
        outcome.notes = engine_.pullVariable("notes").toString();
        return outcome;
    }

    OstrelScript& engine() { return engine_; }

private:
    static constexpr const char* setting = R"(
j = 5
f = 4.5
g = -0.25
b = true
e = ""
big = 340282346638528859811704183484516925440 * 10
p = $ff
a = [10, 20.5, "x", true, not, [1, 2]]
aa = [[1, 2], [3, 4]]
t = {x = 1.5, y = 0, sub = {z = 8, k = "deep"}}
t[1] = "one"
t[true] = "yes"
one = 1
m = {[1] = 5, [2] = 6}
function same(x)
  return x
end
function sum(x, y)
  return x + y
end
function tick(x)
  notes = notes + toString(x) + ";"
  return x
end
function longer(x)
  local y = x
  return y
end
function guarded(x)
  if x == 7
    error("seven")
  end
  return x
end
function fails(x)
  notes = notes + "fails;"
  error("failed with " + x)
  notes = notes + "behind;"
end
function faults(x)
  return x + not
end
function pair()
  return 1, "second"
end
function none()
end
function changes(x)
  i = i + 100
  a[1] = "changed"
  t["k"] = not
  s = s + "!"
  return x
end
function rest(...)
  return ...
end
)";

    static void read(const std::string& report, Outcome& outcome) {
        outcome.fault = firstLineOf(report);
        outcome.token = tokenOf(report);
    }

    OstrelScript engine_;
};

bool isSameValue(const Variable& left, const Variable& right) {
    if (left.type != right.type) return false;
    switch (left.type) {
    case VarType::Float:
        return std::bit_cast<std::uint32_t>(left.asFloat()) == std::bit_cast<std::uint32_t>(right.asFloat());
    case VarType::Function: return true; // a method is bound anew each time
    default: return left.toString() == right.toString();
    }
}

} // namespace

TEST(NodesAndTokens, AgreeOnRandomExpressions) {
    constexpr int count = 30000;
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    ExpressionWriter writer(random);
    Road nodes;
    Road tokens;
    int values = 0;
    for (int i = 0; i < count; ++i) {
        const std::string expression = writer.expression(1 + static_cast<int>(random() % 4));
        const bool isProtected = random() % 3 == 0;
        // An address has no nodes, so whatever stands beside one is evaluated by its tokens.
        const Outcome byNodes = nodes.run("return " + expression, isProtected);
        const Outcome byTokens = tokens.run("return [ " + expression + " , $0 ] [ 1 ]", isProtected);
        ASSERT_TRUE(isSameValue(byNodes.value, byTokens.value))
            << "seed " << seed << ": " << expression << "\n nodes  " << byNodes.value.toString() << "\n tokens "
            << byTokens.value.toString();
        ASSERT_EQ(byNodes.fault, byTokens.fault) << "seed " << seed << ": " << expression;
        ASSERT_EQ(byNodes.token, byTokens.token) << "seed " << seed << ": " << expression;
        ASSERT_EQ(byNodes.notes, byTokens.notes) << "seed " << seed << ": " << expression;
        values += byNodes.fault.empty() ? 1 : 0;
    }
    EXPECT_GT(values, count / 10) << "too few expressions have a value";
}

TEST(NodesAndTokens, AgreeOnRandomStatements) {
    constexpr int count = 12000;
    // Each `?` is an expression, each `$` one of a single word, which grows no array far, each `@` an operator.
    const std::vector<std::string> shapes = {"x = ?",
                                             "i @= ?",
                                             "f @= ?",
                                             "s @= ?",
                                             "b @= ?",
                                             "x = i @ ( ? )",
                                             "i = i @ ( ? )",
                                             "s = s + ( ? )",
                                             "s = ( ? ) + s + 1",
                                             "a [ 2 ] = ?",
                                             "a [ 2 ] @= ?",
                                             "t [ \"k\" ] @= ?",
                                             "a [ $ ] = 5",
                                             "t [ ? ] = ?",
                                             "t [ ? ] @= ?",
                                             "new [ $ ] = ?",
                                             "new [ 1 ] [ $ ] = ?",
                                             "x , i = ? , ?",
                                             "x , i = ?",
                                             "x = ? , ?",
                                             "local x = ?\ny = x",
                                             "return ? , ?",
                                             "same ( ? )",
                                             "?"};
    const std::vector<std::string> operators = {"+", "-", "*", "/", "\\", "%", "^"};
    constexpr const char* reset =
        "x = not\ny = not\nnew = not\nf = 4.5\nb = true\na = [10, 20.5, \"x\", true, not, [1, "
        "2]]\nt = {x = 1.5, y = 0, sub = {z = 8, k = \"deep\"}}";
    constexpr const char* state = "return toString([x, y, i, f, s, b, a, t, new])";
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    ExpressionWriter writer(random);
    Road nodes;
    Road tokens;
    int values = 0;
    for (int i = 0; i < count; ++i) {
        std::string byNodes, byTokens;
        for (const char c : shapes[random() % shapes.size()]) {
            if (c == '?' || c == '$') {
                const std::string expression = writer.expression(c == '?' ? static_cast<int>(random() % 3) : 0);
                byNodes += expression;
                byTokens += "[ " + expression + " , $0 ] [ 1 ]";
            } else {
                const std::string text = c == '@' ? operators[random() % operators.size()] : std::string(1, c);
                byNodes += text;
                byTokens += text;
            }
        }
        const bool isProtected = random() % 3 == 0;
        nodes.engine().runScript(reset);
        tokens.engine().runScript(reset);
        const Outcome left = nodes.run(byNodes, isProtected);
        const Outcome right = tokens.run(byTokens, isProtected);
        ASSERT_TRUE(isSameValue(left.value, right.value)) << "seed " << seed << ": " << byNodes;
        ASSERT_EQ(left.fault, right.fault) << "seed " << seed << ": " << byNodes;
        ASSERT_EQ(left.notes, right.notes) << "seed " << seed << ": " << byNodes;
        ASSERT_EQ(nodes.engine().runScript(state).toString(), tokens.engine().runScript(state).toString())
            << "seed " << seed << ": " << byNodes;
        values += left.fault.empty() ? 1 : 0;
    }
    EXPECT_GT(values, count / 10) << "too few statements run";
}

TEST(NodesAndTokens, AgreeOnTheTruthOfWhatIsNoNumber) {
    constexpr int count = 5000;
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    ExpressionWriter writer(random);
    Road road;
    for (int i = 0; i < count; ++i) {
        const std::string expression = writer.expression(1 + static_cast<int>(random() % 3));
        const Outcome value = road.run("return " + expression, false);
        if (!value.fault.empty()) continue;
        const Outcome taken = road.run("if " + expression + "\nreturn true\nend\nreturn false", false);
        const bool isZero =
            value.value.isNumeric() && value.value.type != VarType::Boolean && toDouble(value.value) == 0;
        if (isZero) continue;
        ASSERT_EQ(taken.value.asBool(), road.engine().isTruthy(value.value)) << "seed " << seed << ": " << expression;
    }
}

TEST(NodesAndTokens, AChangedOperandIsTheOneThatWasRead) {
    Road nodes;
    Road tokens;
    for (const char* expression :
         {"i + changes ( 1 )", "changes ( 1 ) + i", "a [ 1 ] + changes ( \"x\" )", "t [ \"k\" ] * changes ( 2 )",
          "s + changes ( s ) + s", "i * i + changes ( i ) * i", "a [ changes ( 1 ) ]", "t [ \"k\" ] == changes ( 2 )",
          "s < changes ( s )", "( a [ 1 ] ) + changes ( 1 )", "s [ changes ( 2 ) ]", "sum ( i , changes ( i ) )",
          "sum ( i , i + changes ( 0 ) )", "- i + changes ( 1 )", "i <- changes ( 2 )"}) {
        const Outcome byNodes = nodes.run(std::string("return ") + expression, false);
        const Outcome byTokens = tokens.run(std::string("return [ ") + expression + " , $0 ] [ 1 ]", false);
        EXPECT_EQ(byNodes.value.toString(), byTokens.value.toString()) << expression;
        EXPECT_EQ(byNodes.fault, byTokens.fault) << expression;
    }
    EXPECT_EQ(nodes.run("return s + changes ( s ) + s", false).value.toString(), "abcabcabc!");
    EXPECT_EQ(nodes.run("return i + changes ( 1 ) + i", false).value.toString(), "107");
}

TEST(NodesAndTokens, AnEarlierContainerIsNotTakenForANumbersElements) {
    OstrelScript engine;
    engine.runScript("list = [1, 2]\nmap = {k = 3}");
    for (const char* text :
         {"list and false[1] == 1", "map and 5[\"k\"] + 1", "list and nobody[1] + 1", "list and not 5[1]"})
        EXPECT_EQ(faultOf(engine, std::string("x = ") + text), "Indexing requires an array, table, or string") << text;
}

TEST(NodesAndTokens, AFunctionMayReplaceWhatItWasCalledFrom) {
    OstrelScript engine;
    engine.runScript("list = [[1]]\nfunction drop()\nlist = not\nreturn 1\nend\n"
                     "function again()\nagain = not\nreturn 5\nend\nholder = {f = not}\nfunction empty()\nholder = "
                     "not\nreturn 7\nend\nholder[\"f\"] = empty");
    EXPECT_EQ(textOf(engine, "list[1][drop()]"), "1");
    EXPECT_EQ(textOf(engine, "again() + 1"), "6");
    EXPECT_EQ(textOf(engine, "holder[\"f\"]() + 1"), "8");
}

TEST(NodesAndTokens, AChainOfJoinsIsLeftToRight) {
    OstrelScript engine;
    EXPECT_EQ(textOf(engine, "\"a\" + 1 + 2"), "a12");
    EXPECT_EQ(textOf(engine, "1 + 2 + \"a\""), "3a");
    engine.runScript("s = \"x\"\nt = s + s + s\ns = s + s\ns = s + 1 + s");
    EXPECT_EQ(engine.pullVariable("t").toString(), "xxx");
    EXPECT_EQ(engine.pullVariable("s").toString(), "xx1xx");
}
