// Whole programs on every road: random functions, blocks, loops, declarations and protected calls, run as a compiled
// text, from a stored program, by the walker over lines, with every expression evaluated by its tokens, and with a
// scope of its own for each block. All must say the same, fail with the same message at the same line, and leave the
// engine's stacks as they were. The seed is printed.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// A program in lines. `$(` and `$)` stand around each whole expression, `$;` behind each line that opens a block.
class ProgramWriter {
public:
    ProgramWriter(std::mt19937& random, bool withCoroutines) : random_(random), withCoroutines_(withCoroutines) {}

    std::string program() {
        add("n = 0");
        add("a = [1, \"k\", [2]]");
        add("u = [4, 5]");
        add("t = {k = 1, p = [3]}");
        add("s = \"abc\"");
        add("x = 3");
        for (const char* name : functions) writeFunction("function ", name);
        for (int left = 4 + below(4); left > 0; --left) {
            budget_ = 12;
            if (below(4) == 0) {
                statement(false);
                continue;
            }
            writeFunction("function ", "m");
            add("say(try(m, " + expression(1) + ", " + expression(0) + "))");
        }
        add("say(a, u, t, s, x, y)");
        return text_;
    }

private:
    using Choice = std::vector<const char*>;

    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    std::string pick(const Choice& choice) { return choice[random_() % choice.size()]; }
    void add(const std::string& line) { text_ += line + "\n"; }
    static std::string whole(const std::string& expression) { return "$(" + expression + "$)"; }

    // --- Expressions ---

    std::string container() { return pick({"a", "u", "t", "a", "u", "t", "s", "y"}); }
    std::string key() { return pick({"1", "2", "3", "x", "\"k\"", "\"p\"", "\"q\"", "n"}); }
    std::string element() { return container() + "[" + key() + "]"; }
    std::string atom() {
        return pick({"0",     "1",     "2",   "-3",  "2.5", "\"k\"", "\"2\"", "\"\"",     "true",
                     "false", "(not)", "a",   "u",   "t",   "s",     "x",     "y",        "n",
                     "i",     "f",     "x#1", "x#2", "x#3", "x#0",   "a[1]",  "t[\"k\"]", "..."});
    }

    std::string list(int depth) {
        std::string text;
        for (int left = below(4); left > 0; --left) text += expression(depth) + (left > 1 ? ", " : "");
        return text;
    }

    std::string call(int depth) {
        switch (below(10)) {
        case 0: return "try(" + pick(functions) + ", " + expression(depth) + ")";
        case 1: return "say(" + list(depth) + ")";
        case 2: return "push(" + container() + ", flat(" + expression(depth) + "))";
        case 3: return pick({"pop(", "len(", "clear("}) + container() + ")";
        case 4: return "erase(" + container() + ", " + key() + ")";
        case 5: return pick({"error(", "assert("}) + expression(depth) + ")";
        default: return pick(functions) + "(" + list(depth) + ")";
        }
    }

    /// What may be joined to something short: no text grows by more than a little in one step.
    std::string operand(int depth) { return below(2) == 0 ? atom() : (below(2) == 0 ? element() : call(depth)); }

    std::string expression(int depth) {
        if (depth <= 0) return atom();
        switch (below(12)) {
        case 0:
        case 1: return atom();
        case 2:
        case 3:
        case 4: return call(depth - 1);
        case 5: return element();
        case 6: return "(" + expression(depth - 1) + pick({" and ", " or "}) + expression(depth - 1) + ")";
        case 7: return pick({"(!", "(-", "(#"}) + expression(depth - 1) + ")";
        case 8: return "[" + list(depth - 1) + "]";
        case 9: return "{k = " + expression(depth - 1) + ", [" + key() + "] = " + expression(depth - 1) + "}";
        case 10: return "(" + operand(depth - 1) + " + " + pick({"1", "\"k\"", "n", "i", "2.5", "true"}) + ")";
        default:
            return "(" + expression(depth - 1) + pick({" - ", " * ", " % ", " == ", " != ", " < "}) +
                   expression(depth - 1) + ")";
        }
    }

    /// Conditions are of no number, because tokens and nodes count 0 differently there.
    std::string condition() {
        switch (below(3)) {
        case 0: return whole("(!" + expression(1) + ")");
        case 1: return whole("(" + expression(1) + " == " + expression(1) + ")");
        default: return whole(pick({"true", "(x != 3)", "(n < 12)", "false"}));
        }
    }

    // --- Statements ---

    void block(int statements, bool inLoop) {
        ++depth_;
        for (int left = 1 + below(statements); left > 0; --left) statement(inLoop);
        --depth_;
    }

    void open(const std::string& line) { add(line + "$;"); }

    void statement(bool inLoop) {
        --budget_;
        const bool simple = depth_ >= 4 || budget_ < 0;
        switch (below(simple ? 10 : 17)) {
        case 0:
            add(pick({"", "", "local ", "native ", "external "}) + variable() + " = " + whole(expression(2)));
            break;
        case 1: add("local " + variable() + " = " + whole(expression(2))); break;
        case 2: add(element() + " = " + whole("flat(" + expression(2) + ")")); break;
        case 3: add("y[" + key() + "][" + key() + "] = " + whole("flat(" + expression(1) + ")")); break;
        case 4:
            add(pick({"x", "s", "y", "n", "a[1]", "t[\"k\"]"}) + pick({" += ", " -= "}) +
                whole("flat(" + expression(1) + ")"));
            break;
        case 5: add(variable() + ", " + variable() + " = " + whole(call(1)) + pick({"", ", 1"})); break;
        case 6: add("say(" + expression(2) + ")"); break;
        case 7:
            add(depth_ > 0 && below(2) == 0 ? "return " + whole(expression(2)) + pick({"", ", 7"}) : call(2));
            break;
        case 8: add(inLoop || below(8) == 0 ? "break" : call(2)); break;
        case 9: add(call(2)); break;
        case 10:
        case 11: writeIf(inLoop); break;
        case 12: writeLoop(pick({"while (n < 20) and ", "while (n < 15) and "}) + condition(), "end"); break;
        case 13: writeLoop("repeat", "until (n > 20) or " + condition()); break;
        case 14: writeLoop("for " + pick({"i", "x"}) + " = 1, " + pick({"2", "3", "len(u)"}), "end"); break;
        case 15:
            writeLoop("for " + pick({"i", "x", "i, y"}) + " in " + pick({"pairs(", "ipairs(", "("}) + container() + ")",
                      "end");
            break;
        default: writeFunction(pick({"function ", "local function ", "native function "}), pick(functions)); break;
        }
    }

    std::string variable() { return pick({"a", "u", "t", "s", "x", "y", "x", "y", "f"}); }

    void writeIf(bool inLoop) {
        open("if " + condition());
        block(3, inLoop);
        if (below(3) == 0) {
            open("elseif " + condition());
            block(2, inLoop);
        }
        if (below(3) == 0) {
            open("else");
            block(2, inLoop);
        }
        add("end");
    }

    void writeLoop(const std::string& header, const std::string& end) {
        open(header);
        add("n#1 += 1");
        block(3, true);
        add(end);
    }

    void writeFunction(const std::string& keyword, const std::string& name) {
        const bool isCoroutine = withCoroutines_ && below(3) == 0 && name != "m";
        const std::string head = (isCoroutine ? "decay function " : keyword) + name;
        open(head + pick({"()", "(x)", "(y, x)", "(a, ...)", "(...)", "(s)"}));
        if (below(3) == 0) {
            add("return " + whole(expression(2)));
        } else {
            block(4, false);
            if (below(2) == 0) add("return " + whole(expression(2)));
        }
        add("end");
    }

    const Choice functions = {"f", "g", "h"};
    std::mt19937& random_;
    bool withCoroutines_;
    std::string text_;
    int depth_ = 0;
    int budget_ = 0; // of statements that may still open blocks
};

std::string replaced(std::string text, const std::string& mark, const std::string& by) {
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + by.size()))
        text.replace(at, mark.size(), by);
    return text;
}

/// A message and its line; what else a report holds is the text of the line, and the roads write that differently.
std::string placed(const std::string& report) {
    const std::size_t place = report.find("\n  at ");
    if (place == std::string::npos) return report;
    const std::size_t number = report.find_first_of("0123456789", place);
    return firstLineOf(report) + " at " +
           report.substr(number, report.find_first_not_of("0123456789", number) - number);
}

enum class ProgramRoad { Text, Stored, Lines };

/// True if a run met a limit, which the roads reach at different places.
bool isCutShort(const std::string& outcome) {
    return outcome.find("step limit") != std::string::npos || outcome.find("native stack") != std::string::npos ||
           outcome.find("too large") != std::string::npos;
}

/// Runs a program in an engine of its own; gives all that it said and how it ended.
std::string outcomeOf(const std::string& text, ProgramRoad road) {
    constexpr std::uint64_t mostSteps = 2000;
    std::string said;
    OstrelScript engine;
    engine.setStepLimit(mostSteps);
    const auto add = [&engine](const char* name, HostFunction function) {
        engine.pushVariable(name, engine.makeNativeCallable(std::move(function), name));
    };
    add("say", [&said](const std::vector<Variable>& arguments) {
        for (const Variable& argument : arguments) {
            if (argument.isMulti())
                for (const Variable& value : argument.asMulti()->values) said += value.toString() + "/";
            said += argument.toString() + " ";
        }
        said += "\n";
        return arguments.empty() ? Variable() : arguments[0];
    });
    // What goes into an element is never a container, so none can hold itself, and never a long text.
    add("flat", [](const std::vector<Variable>& arguments) {
        constexpr std::size_t longest = 40;
        if (!arguments.empty() && arguments[0].isString()) return Variable(arguments[0].asString().substr(0, longest));
        if (arguments.empty() || arguments[0].isArray() || arguments[0].isTable() || arguments[0].isMulti())
            return Variable("flat");
        return arguments[0];
    });
    add("try", [&engine, &said](const std::vector<Variable>& arguments) {
        std::vector<Variable> results = engine.pcallFunctionFast(arguments.data(), arguments.size()).asMulti()->values;
        if (!results[0].asBool()) results[1] = placed(results[1].toString());
        if (!results[0].asBool() && isCutShort(results[1].asString())) said += results[1].asString();
        return makeMulti(std::move(results));
    });
    try {
        Variable result;
        if (road == ProgramRoad::Text) {
            result = engine.runScript(text);
        } else if (road == ProgramRoad::Stored) {
            const std::vector<unsigned char> bytes = engine.serialiseBytecode(engine.compileToBytecode(text));
            result = engine.runBytecode(engine.deserialiseBytecode(bytes, "stored"));
        } else {
            std::size_t position = 0;
            BlockSignal signal;
            result = engine.executeBlock({text}, position, signal);
            if (signal.kind == SignalKind::Break) throw std::runtime_error("break used outside a loop");
            engine.runScript(""); // brings out what a coroutine failed with at the very end
        }
        said += "result " + result.toString();
    } catch (const std::exception& error) {
        const std::string fault = placed(error.what());
        // Of a stray `break` the walker over lines leaves the report to its caller.
        said += "fault " + (fault.find("break used") == 0 ? "break" : fault);
    }
    return said;
}

/// Compares programs on all roads; gives how many were run to an end.
int compareRoads(int count, bool withCoroutines) {
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    int compared = 0;
    for (int i = 0; i < count; ++i) {
        const std::string program = ProgramWriter(random, withCoroutines).program();
        const std::string bare = replaced(replaced(program, "$(", ""), "$)", "");
        const std::string plain = replaced(bare, "$;", "");
        const std::string byTokens = replaced(replaced(replaced(program, "$;", ""), "$(", "[ "), "$)", " , $0 ] [ 1 ]");
        const std::string expected = outcomeOf(plain, ProgramRoad::Text);
        if (isCutShort(expected)) continue;
        const auto agrees = [&](const std::string& text, ProgramRoad road, const char* name) {
            const std::string outcome = outcomeOf(text, road);
            if (isCutShort(outcome)) return;
            EXPECT_EQ(outcome, expected) << name << ", seed " << seed << ":\n" << plain;
        };
        agrees(plain, ProgramRoad::Stored, "stored");
        agrees(plain, ProgramRoad::Lines, "lines");
        agrees(byTokens, ProgramRoad::Text, "tokens");
        // One more statement in a block is one more turn for a coroutine, so these two don't go together.
        if (!withCoroutines) agrees(replaced(bare, "$;", "; local unused"), ProgramRoad::Text, "scopes");
        if (testing::Test::HasFailure()) break;
        ++compared;
    }
    return compared;
}

} // namespace

TEST(ProgramRoads, AgreeOnRandomPrograms) {
    constexpr int count = 600;
    EXPECT_GT(compareRoads(count, false), count / 4) << "too few programs end";
}

TEST(ProgramRoads, AgreeOnRandomProgramsWithCoroutines) {
    constexpr int count = 400;
    EXPECT_GT(compareRoads(count, true), count / 4) << "too few programs end";
}
