// Variables: what the host sees of them, when external ones become global, and the lookup beside a plain search.

#include "probe.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <sstream>

// ---------------------------------------------------------------------------------------------------------------------
// From the host
// ---------------------------------------------------------------------------------------------------------------------

TEST(Globals, ArePushedAndPulled) {
    OstrelScript engine;
    EXPECT_TRUE(engine.pullVariable("fresh").isNil());
    engine.pushVariable("fresh", 5);
    EXPECT_EQ(engine.pullVariable("fresh").toString(), "5");
    engine.pushVariable("fresh", "text");
    EXPECT_EQ(engine.pullVariable("fresh").toString(), "text");
    engine.runScript("fresh = fresh + \"!\"\nmade = 1");
    EXPECT_EQ(engine.pullVariable("fresh").toString(), "text!");
    EXPECT_EQ(engine.pullVariable("made").toString(), "1");
    engine.pushVariable("fresh", Variable());
    EXPECT_TRUE(engine.pullVariable("fresh").isNil());
}

TEST(Globals, ArePulledByNameWhateverHidesThem) {
    Probe probe;
    probe.addFunction("pull", [&probe](const std::vector<Variable>& arguments) {
        return probe.engine.pullVariable(arguments.at(0).asString());
    });
    EXPECT_EQ(probe.hear("x = \"global\"\nfunction f(x)\nlocal x = \"local\"\nsay(x, pull(\"x\"))\nend\nf(1)"),
              "local global ");
    probe.addFunction("push", [&probe](const std::vector<Variable>& arguments) {
        probe.engine.pushVariable("x", arguments.at(0));
        return Variable();
    });
    EXPECT_EQ(probe.hear("function f(x)\npush(\"pushed\")\nsay(x)\nend\nf(\"frame\")\nsay(x)"), "frame pushed ");
}

TEST(Externals, BecomeGlobalWhenTheOutermostScriptHasEnded) {
    Probe probe;
    probe.addFunction("runInside", [&probe](const std::vector<Variable>& arguments) {
        probe.engine.runScript(arguments.at(0).asString());
        return Variable();
    });
    EXPECT_EQ(probe.hear("external a = 1\nexternal b, c = 2\nrunInside(\"external d = 4\")\nsay(a, b, d, a#0, d#0)"),
              "not not not 1 4 ");
    EXPECT_EQ(probe.hear("say(a, b, c, d)"), "1 2 not 4 ");
}

TEST(Externals, StayPrivateWhenTheScriptFails) {
    Probe probe;
    EXPECT_EQ(probe.run("external a = 1\nx = 1 + not"), "OstrelScript error: Unsupported operation '+' between types");
    EXPECT_TRUE(probe.engine.pullVariable("a").isNil());
    EXPECT_EQ(probe.run("external a = 2\nerror(\"raised\")"), "raised");
    EXPECT_TRUE(probe.engine.pullVariable("a").isNil());
    EXPECT_EQ(probe.run("external a = 3\nbreak"), "OstrelScript error: break used outside a loop");
    EXPECT_TRUE(probe.engine.pullVariable("a").isNil());
    EXPECT_EQ(probe.hear("say(a, a#0)"), "not 3 "); // the entry is still there, and this script ends well
    EXPECT_EQ(probe.engine.pullVariable("a").toString(), "3");
}

TEST(Externals, AreKeptAndCommittedAgainBehindEveryScript) {
    Probe probe;
    probe.run("external a = 1");
    EXPECT_EQ(probe.hear("a = \"changed\"\nsay(a)"), "changed ");
    EXPECT_EQ(probe.engine.pullVariable("a").toString(), "1");
}

TEST(Externals, AreCommittedOnDemand) {
    Probe probe;
    probe.addFunction("commit", [&probe](const std::vector<Variable>&) {
        probe.engine.commitExternalScopeToGlobal();
        return Variable();
    });
    EXPECT_EQ(probe.hear("external a = 1\nsay(a)\ncommit()\nsay(a)\na = 2\nsay(a, a#0)"), "not 1 2 1 ");
}

TEST(Externals, OfASoftlyFailedScriptAreNotCommitted) {
    Probe probe;
    probe.addFunction("runText", [&probe](const std::vector<Variable>& arguments) {
        return probe.engine.runScript(arguments.at(0).asString());
    });
    const std::vector<Variable> arguments = {probe.engine.pullVariable("runText"), "external a = 1\nerror(\"soft\")"};
    const Variable outcome = probe.engine.pcallFunctionFast(arguments.data(), arguments.size());
    EXPECT_EQ(outcome.asMulti()->values.at(1).toString(), "soft");
    EXPECT_TRUE(probe.engine.pullVariable("a").isNil());
}

TEST(Scopes, AFailedScriptLeavesNothingToTheNext) {
    const std::vector<std::string> failing = {
        "local x = 1\nfor i = 1, 2\nlocal y = 2\nz = 1 + not\nend",
        "function f(p, ...)\nlocal x = 1\nfor k, v in pairs([1])\nlocal y = "
        "1\nnest\nerror(\"raised\")\nend\nend\nend\nf(1, 2)",
        "x#3 = 1\nfor i = 1, 2\ny#3 = 1\nneverMade()\nend",
        "function f(p, ...)\nreturn 1 + not\nend\nlocal x = f(1, 2)",
        "function f(p)\nbreak\nend\nfor i = 1, 2\nf(1)\nend",
        "local x = 1\nbreak",
        "local x = 1\nload(\"local y = 1\\nx = 1 + not\", \"name.os\")()",
    };
    Probe probe;
    for (const std::string& text : failing) {
        EXPECT_NE(faultOf([&] { probe.engine.runScript(text); }), "no fault") << text;
        EXPECT_EQ(probe.hear("say(x, y, i, k, v, p, ..., x#3, y#3)"), "not not not not not not not not not ") << text;
        const std::string fault = faultOf([&] { probe.engine.runScript("q = 1 + not"); });
        EXPECT_NE(fault.find("\n  at line 1, near token 'not'\n"), std::string::npos) << fault;
        EXPECT_EQ(probe.engine.resolvePath("no-such-file"), "no-such-file");
    }
}

TEST(Scopes, ALocalOfTheTopLevelEndsWithItsScript) {
    Probe probe;
    EXPECT_EQ(probe.hear("local x = 1\nsay(x)\nfunction f()\nreturn x\nend\nsay(f())"), "1 not ");
    EXPECT_EQ(probe.hear("say(x)"), "not ");
}

TEST(Scopes, NativeVariablesLastAsLongAsTheEngine) {
    Probe probe;
    EXPECT_EQ(probe.hear("native n = 1\nfunction f()\nnative m = 2\nreturn m\nend\nf()\nsay(n, m)"), "1 not ");
    EXPECT_EQ(probe.hear("function g()\nreturn m\nend\nsay(n, g())"), "1 2 ");
    EXPECT_TRUE(probe.engine.pullVariable("n").isNil());
}

TEST(Scopes, TextsOfTheHostSeeTheBlocksAroundThem) {
    Probe probe;
    probe.addFunction("runInside", [&probe](const std::vector<Variable>& arguments) {
        return probe.engine.runScript(arguments.at(0).asString());
    });
    EXPECT_EQ(
        probe.hear("local x = 1\nif true\nlocal y = 2\nrunInside(\"say(x, y)\\nx = 5\\nlocal y = 6\")\nsay(x, y)\nend"),
        "1 2 5 2 ");
    EXPECT_EQ(probe.hear("function f(p)\nlocal x = 1\nrunInside(\"say(x, p)\")\nend\nlocal z = 1\nf(\"p\")"), "1 p ");
}

// ---------------------------------------------------------------------------------------------------------------------
// The lookup beside a plain search
// ---------------------------------------------------------------------------------------------------------------------

namespace {

/// A script made at random, and what it must say: while the text is written, its statements are carried out on plain
/// vectors that are searched one by one. Functions are written where they are called, each under a name of its own.
/// Behind a `return`, a `break` or an error the text goes on, but nothing of it is carried out up to the place where
/// the run goes on.
class RandomScript {
public:
    explicit RandomScript(unsigned seed) : random_(seed) {
        blocks_.emplace_back(); // the text has locals, so it has a block
        writeBlock(0);
    }

    std::string text() const { return "local atTop = 0\n" + functions_ + main_; }
    const std::string& expected() const { return expected_; }

private:
    using Scope = std::vector<std::pair<std::string, int>>;
    enum class Skip { Nothing, ToLoopEnd, ToFunctionEnd, ToProtectedCall };

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    std::string name() { return std::string(1, static_cast<char>('a' + below(5))); }
    bool runs() const { return skip_ == Skip::Nothing; }

    static int* findIn(Scope& scope, const std::string& wanted) {
        for (auto& [entry, value] : scope)
            if (entry == wanted) return &value;
        return nullptr;
    }
    void setIn(Scope& scope, const std::string& wanted, int value) {
        if (!runs()) return;
        if (int* entry = findIn(scope, wanted))
            *entry = value;
        else
            scope.emplace_back(wanted, value);
    }
    int* findBlock(const std::string& wanted) {
        for (std::size_t i = blocks_.size(); i > base_; --i)
            if (int* entry = findIn(blocks_[i - 1], wanted)) return entry;
        return nullptr;
    }
    int* find(const std::string& wanted) {
        if (int* entry = findBlock(wanted)) return entry;
        for (std::size_t i = frames_.size(); i > 0; --i)
            if (int* entry = findIn(frames_[i - 1], wanted)) return entry;
        if (int* entry = findIn(natives_[depth_], wanted)) return entry;
        return findIn(globals_, wanted);
    }
    void expect(const int* value) {
        if (runs()) expected_ += value == nullptr ? "not " : std::to_string(*value) + " ";
    }

    void writeStatement(int level) {
        const std::string n = name();
        const int value = ++counter_;
        const std::string assigned = " = " + std::to_string(value) + "\n";
        switch (below(level < 5 ? 20 : 13)) {
        case 0:
        case 1:
            *out_ += n + assigned;
            if (int* entry = find(n); entry != nullptr && runs())
                *entry = value;
            else
                setIn(globals_, n, value);
            break;
        case 2:
        case 3:
            *out_ += "local " + n + assigned;
            setIn(blocks_.back(), n, value);
            break;
        case 4:
            *out_ += "native " + n + assigned;
            setIn(natives_[depth_], n, value);
            break;
        case 5:
            *out_ += n + "#1" + assigned;
            setIn(globals_, n, value);
            break;
        case 6:
            *out_ += "say(" + n + "#1, " + n + "#2, " + n + "#3)\n";
            expect(findIn(globals_, n));
            expect(findIn(natives_[depth_], n));
            expect(findBlock(n));
            break;
        case 7:
        case 8:
        case 9:
        case 10:
            *out_ += "say(" + n + ")\n";
            expect(find(n));
            break;
        case 11: writeEnd(); break;
        case 12: writeFailure(); break;
        case 13:
        case 14: writeNested("if true\n", "end\n", level); break;
        case 15:
        case 16: writeLoop(n, value, level); break;
        default: writeCall(level); break;
        }
    }

    void writeBlock(int level) {
        const int count = 1 + below(8);
        for (int i = 0; i < count; ++i) writeStatement(level);
    }

    void writeEnd() {
        if (inLoop_ && below(2) == 0) {
            *out_ += "break\n";
            if (runs()) skip_ = Skip::ToLoopEnd;
        } else if (inFunction_) {
            *out_ += "return\n";
            if (runs()) skip_ = Skip::ToFunctionEnd;
        }
    }

    void writeFailure() {
        if (!isProtected_) return;
        *out_ += below(2) == 0 ? "error(\"soft\")\n" : "hard = 1 + not\n";
        if (runs()) skip_ = Skip::ToProtectedCall;
    }

    void writeNested(const std::string& opening, const std::string& closing, int level) {
        *out_ += opening;
        blocks_.emplace_back();
        ++depth_;
        writeBlock(level + 1);
        --depth_;
        blocks_.pop_back();
        *out_ += closing;
    }

    /// Every loop goes round once.
    void writeLoop(const std::string& n, int value, int level) {
        const bool outer = std::exchange(inLoop_, true);
        const Skip before = skip_;
        const std::string number = std::to_string(value);
        switch (below(3)) {
        case 0: writeNested("repeat\n", "until true\n", level); break;
        case 1:
            frames_.push_back({{n, value}});
            writeNested("for " + n + " = " + number + ", " + number + "\n", "end\n", level);
            frames_.pop_back();
            break;
        default:
            frames_.push_back({{"key", 1}, {n, value}});
            writeNested("for key, " + n + " in pairs([" + number + "])\n", "end\n", level);
            frames_.pop_back();
            break;
        }
        inLoop_ = outer;
        if (before == Skip::Nothing && skip_ == Skip::ToLoopEnd) skip_ = Skip::Nothing;
    }

    /// Declares a function at the top of the text and calls it here, protected or not.
    void writeCall(int level) {
        std::string function = "f";
        function += std::to_string(++functionCount_);
        const int argument = ++counter_;
        const std::string parameter = name();
        const bool guarded = below(2) == 0;
        *out_ += guarded ? "pcall(" + function + ", " : function + "(";
        *out_ += std::to_string(argument) + ")\n";

        std::string body;
        std::string* const outerOut = std::exchange(out_, &body);
        const std::size_t outerBase = std::exchange(base_, blocks_.size());
        const std::size_t outerDepth = std::exchange(depth_, 1);
        const bool outerLoop = std::exchange(inLoop_, false);
        const bool outerFunction = std::exchange(inFunction_, true);
        const bool outerProtection = std::exchange(isProtected_, isProtected_ || guarded);
        const Skip before = skip_;
        frames_.push_back({{parameter, argument}});
        blocks_.emplace_back();
        writeBlock(level + 1);
        blocks_.pop_back();
        frames_.pop_back();
        const bool goesOn = skip_ == Skip::ToFunctionEnd || (guarded && skip_ == Skip::ToProtectedCall);
        if (before == Skip::Nothing && goesOn) skip_ = Skip::Nothing;
        isProtected_ = outerProtection;
        inFunction_ = outerFunction;
        inLoop_ = outerLoop;
        depth_ = outerDepth;
        base_ = outerBase;
        out_ = outerOut;
        functions_ += "function " + function + "(" + parameter + ")\nlocal own = 0\n" + body + "end\n";
    }

    std::mt19937 random_;
    std::string functions_, main_, expected_;
    std::string* out_ = &main_;
    int counter_ = 0;
    int functionCount_ = 0;

    std::vector<Scope> blocks_, frames_;
    std::map<std::size_t, Scope> natives_;
    Scope globals_;
    std::size_t base_ = 0;
    std::size_t depth_ = 0;
    bool inLoop_ = false, inFunction_ = false, isProtected_ = false;
    Skip skip_ = Skip::Nothing;
};

} // namespace

TEST(Lookup, FindsWhatAPlainSearchFinds) {
    const unsigned seed = std::random_device{}();
    for (unsigned i = 0; i < 500; ++i) {
        const RandomScript script(seed + i);
        Probe probe;
        ASSERT_EQ(probe.hear(script.text()), script.expected()) << "seed " << seed + i << "\n" << script.text();
    }
}

TEST(Lookup, FindsTheSameOnTheRoadOfParsedLines) {
    const unsigned seed = std::random_device{}();
    for (unsigned i = 0; i < 500; ++i) {
        const RandomScript script(seed + i);
        Probe probe;
        BlockSignal signal;
        std::size_t position = 0;
        probe.engine.executeBlock({script.text()}, position, signal);
        ASSERT_EQ(probe.said, script.expected()) << "seed " << seed + i << "\n" << script.text();
    }
}
