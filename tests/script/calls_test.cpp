// Calls from the host's side: its own functions, protected calls, and errors that travel both ways at once.

#include "probe.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

std::string valuesOf(const Variable& outcome) {
    std::string text;
    for (const Variable& value : outcome.asMulti()->values) text += value.toString() + " ";
    return text;
}

Variable protectedCall(Probe& probe, std::vector<Variable> arguments) {
    return probe.engine.pcallFunctionFast(arguments.data(), arguments.size());
}

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Functions of the host
// ---------------------------------------------------------------------------------------------------------------------

TEST(HostFunction, GetsItsArgumentsAsTheyStand) {
    Probe probe;
    std::vector<Variable> seen;
    probe.addFunction("take", [&seen](const std::vector<Variable>& arguments) {
        seen = arguments;
        return Variable();
    });
    probe.run("function pair()\nreturn 1, 2\nend\ntake(1, \"two\", not, pair(), pair())");
    ASSERT_EQ(seen.size(), 5U);
    EXPECT_EQ(seen[0].type, VarType::Integer);
    EXPECT_EQ(seen[1].type, VarType::String);
    EXPECT_EQ(seen[2].type, VarType::Nil);
    EXPECT_EQ(seen[3].type, VarType::Multi); // also in the last place
    EXPECT_EQ(seen[4].type, VarType::Multi);
    probe.run("take()");
    EXPECT_TRUE(seen.empty());
}

TEST(HostFunction, ThatIsEmptyFailsAsTheStandardLibraryDoes) {
    Probe probe;
    probe.addFunction("hollow", HostFunction());
    EXPECT_EQ(probe.run("hollow()"), std::string("OstrelScript error: ") + std::bad_function_call().what());
    EXPECT_EQ(faultOf([&] { probe.engine.invokeCallable(probe.engine.pullVariable("hollow"), {}); }),
              std::bad_function_call().what());
}

TEST(HostFunction, TakesItsNumberFromItsNameOnlyInTheLibrary) {
    OstrelScript engine;
    const auto idOf = [&engine](const char* name) { return engine.pullVariable(name).asFunction()->builtinId; };
    EXPECT_EQ(idOf("pcall"), BuiltinId::Pcall);
    EXPECT_EQ(idOf("print"), BuiltinId::None);
    const Variable own = engine.makeNativeCallable([](const std::vector<Variable>&) { return Variable(7); }, "len");
    engine.pushVariable("len", own);
    EXPECT_EQ(engine.runScript("return len(\"abc\")").toString(), "7");
}

TEST(HostFunction, CallsBackIntoTheScript) {
    Probe probe;
    probe.addFunction("twice", [&probe](const std::vector<Variable>& arguments) {
        const Variable once = probe.engine.callCallable(arguments.at(0), {arguments.at(1)});
        return probe.engine.callCallable(arguments.at(0), {once});
    });
    EXPECT_EQ(probe.run("function f(x)\nreturn x * 3\nend\nreturn twice(f, 2)"), "18");
    EXPECT_EQ(probe.run("return twice(5, 2)"), "OstrelScript error: callCallable: value is not a function");
    EXPECT_EQ(probe.run("return twice(len, \"abc\")"), "OstrelScript error: len(x) expects an array, table, or string");
}

TEST(Call, OfWhatIsNoFunction) {
    Probe probe;
    OstrelScript& engine = probe.engine;
    const auto fault = [&engine](const Variable& value) { return faultOf([&] { engine.invokeCallable(value, {}); }); };
    const std::string start = "Attempted to call a non-function value of type ";
    EXPECT_EQ(fault(Variable()), start + "not");
    EXPECT_EQ(fault(5), start + "int");
    EXPECT_EQ(fault(1.5F), start + "float");
    EXPECT_EQ(fault("text"), start + "string");
    EXPECT_EQ(fault(Variable(std::vector<char>{})), start + "raw");
    EXPECT_EQ(fault(true), start + "bool");
    EXPECT_EQ(fault(Variable(static_cast<void*>(nullptr))), start + "pointer");
    EXPECT_EQ(fault(makeArray({})), start + "array");
    EXPECT_EQ(fault(makeMulti({})), start + "multivalue");
    EXPECT_EQ(fault(makeTable()), start + "table");
    EXPECT_EQ(fault(Variable(Ref<ScriptCallable>())), "Attempted to call an invalid function value");
    engine.pushVariable("hollow", Variable(Ref<ScriptCallable>()));
    EXPECT_EQ(probe.run("hollow()"), "OstrelScript error: Attempted to call an invalid function value");
    EXPECT_EQ(faultOf([&engine] { engine.callCallable(5, {}); }), "callCallable: value is not a function");
}

TEST(Call, FromTheHostRunsAScriptFunction) {
    Probe probe;
    probe.run(
        "function f(a, b)\nsay(a, b)\nreturn a, b\nend\nfunction v(a, ...)\nlocal x, y = ...\nreturn [a, x, y]\nend");
    const Variable f = probe.engine.pullVariable("f");
    EXPECT_EQ(valuesOf(probe.engine.invokeCallable(f, {1, 2, 3})), "1 2 ");
    EXPECT_EQ(valuesOf(probe.engine.invokeCallable(f, {1})), "1 not ");
    EXPECT_EQ(probe.engine.invokeCallable(probe.engine.pullVariable("v"), {1, 2, 3, 4}).toString(), "[1, 2, 3]");
    EXPECT_EQ(probe.engine.invokeCallable(probe.engine.pullVariable("v"), {}).toString(), "[not, not, not]");
}

TEST(Call, OfAChunkTakesNoArguments) {
    Probe probe;
    const Variable chunk = probe.engine.loadScriptChunk("return 5", "");
    EXPECT_EQ(probe.engine.invokeCallable(chunk, {}).toString(), "5");
    EXPECT_EQ(faultOf([&] { probe.engine.invokeCallable(chunk, {Variable()}); }),
              "Loaded script chunks do not accept call arguments");
}

TEST(Call, ABreakThatLeavesTheFunctionIsAFaultAtTheCall) {
    Probe probe;
    probe.run("function f()\nif true\nbreak\nend\nend");
    EXPECT_EQ(faultOf([&] { probe.engine.invokeCallable(probe.engine.pullVariable("f"), {}); }),
              "break used outside a loop");
    const std::string fault = faultOf([&] { probe.engine.runScript("x = 1\nfor i = 1, 2\nf()\nend"); });
    EXPECT_NE(fault.find("break used outside a loop\n  at line 3, near token ')'\n"), std::string::npos) << fault;
}

TEST(Call, ChangingTheArgumentsChangesNothingOutside) {
    Probe probe;
    probe.run("function f(a)\na = a + 1\na += 1\nreturn a\nend");
    std::vector<Variable> arguments = {1};
    EXPECT_EQ(probe.engine.invokeCallable(probe.engine.pullVariable("f"), arguments).toString(), "3");
    EXPECT_EQ(arguments[0].toString(), "1");
}

// ---------------------------------------------------------------------------------------------------------------------
// Protected calls
// ---------------------------------------------------------------------------------------------------------------------

TEST(ProtectedCall, NeedsSomethingToCall) {
    Probe probe;
    EXPECT_EQ(faultOf([&] { protectedCall(probe, {}); }), "pcall requires a callable value");
    EXPECT_EQ(valuesOf(protectedCall(probe, {5})), "false Attempted to call a non-function value of type int ");
    EXPECT_EQ(valuesOf(protectedCall(probe, {Variable()})),
              "false Attempted to call a non-function value of type not ");
}

TEST(ProtectedCall, GivesTrueAndEveryResult) {
    Probe probe;
    probe.run("function none()\nend\nfunction one()\nreturn 1\nend\nfunction two()\nreturn 1, 2\nend");
    probe.addFunction("empty", [](const std::vector<Variable>&) { return makeMulti({}); });
    EXPECT_EQ(valuesOf(protectedCall(probe, {probe.engine.pullVariable("none")})), "true not ");
    EXPECT_EQ(valuesOf(protectedCall(probe, {probe.engine.pullVariable("one")})), "true 1 ");
    EXPECT_EQ(valuesOf(protectedCall(probe, {probe.engine.pullVariable("two")})), "true 1 2 ");
    EXPECT_EQ(valuesOf(protectedCall(probe, {probe.engine.pullVariable("empty")})), "true ");
}

TEST(ProtectedCall, CatchesEveryStandardException) {
    Probe probe;
    probe.addFunction("out", [](const std::vector<Variable>&) -> Variable { throw std::out_of_range("out of range"); });
    probe.addFunction("raised", [](const std::vector<Variable>&) -> Variable { throw RaisedScriptError("raised"); });
    probe.addFunction("memory", [](const std::vector<Variable>&) -> Variable { throw std::bad_alloc(); });
    EXPECT_EQ(probe.hear("a, b = pcall(out)\nsay(a, b)\na, b = pcall(raised)\nsay(a, b)\na, b = pcall(memory)\nsay(a)"),
              "false out of range false raised false ");
    EXPECT_EQ(probe.hear("function f()\nout()\nend\na, b = pcall(f)\nsay(string[\"sub\"](b, 1, 32))"),
              "OstrelScript error: out of range ");
    EXPECT_EQ(probe.hear("function f()\nraised()\nend\na, b = pcall(f)\nsay(b)"), "raised ");
}

TEST(ProtectedCall, LetsEveryOtherExceptionGoOn) {
    struct Foreign {};
    Probe probe;
    probe.addFunction("foreign", [](const std::vector<Variable>&) -> Variable { throw Foreign(); });
    const std::string text =
        "function f(p, ...)\nlocal x = 1\nfor i = 1, 2\nforeign()\nend\nend\nfunction g()\nlocal y = 1\n"
        "pcall(f, 1, 2)\nend\nlocal z = 1\npcall(g)";
    EXPECT_THROW(probe.engine.runScript(text), Foreign);
    // and everything is as it was before
    EXPECT_EQ(probe.hear("say(x, y, z, p, i, ...)"), "not not not not not not ");
    EXPECT_EQ(probe.run("error(\"thrown again, since nothing is protected\")"),
              "thrown again, since nothing is protected");
    EXPECT_EQ(probe.hear("a, b = pcall(error, \"fine\")\nsay(a, b)"), "false fine ");
}

TEST(ProtectedCall, TheSoftErrorWinsOverAFaultThatFollowsIt) {
    Probe probe;
    probe.addFunction("careless", [&probe](const std::vector<Variable>&) -> Variable {
        probe.engine.raiseError("first");
        EXPECT_TRUE(probe.engine.shouldAbortForSoftRaisedError());
        throw std::runtime_error("second");
    });
    EXPECT_EQ(probe.hear("a, b = pcall(careless)\nsay(a, b)"), "false first ");
    EXPECT_EQ(probe.hear("function f()\nx = careless()\nend\na, b = pcall(f)\nsay(a, b)"), "false first ");
    EXPECT_EQ(probe.hear("a, b = pcall(len, 5)\nsay(b)"), "len(x) expects an array, table, or string ");
    EXPECT_EQ(probe.run("careless()"), "first"); // nothing protects it: the first one flies
}

TEST(ProtectedCall, ASecondSoftErrorIsDropped) {
    Probe probe;
    probe.addFunction("both", [&probe](const std::vector<Variable>&) {
        probe.engine.raiseScriptErrorSoft("first");
        probe.engine.raiseScriptErrorSoft("second");
        probe.engine.raiseError("third");
        return Variable(5);
    });
    EXPECT_EQ(probe.hear("a, b = pcall(both)\nsay(a, b)"), "false first ");
}

TEST(ProtectedCall, TheResultOfACallWithASoftErrorIsNil) {
    Probe probe;
    probe.addFunction("both", [&probe](const std::vector<Variable>&) {
        probe.engine.raiseScriptErrorSoft("soft");
        return Variable(5);
    });
    Variable seen = 1;
    probe.addFunction("outer", [&probe, &seen](const std::vector<Variable>&) {
        seen = probe.engine.callCallable(probe.engine.pullVariable("both"), {});
        return Variable(6);
    });
    EXPECT_EQ(probe.hear("a, b = pcall(outer)\nsay(a, b)"), "false soft ");
    EXPECT_TRUE(seen.isNil());
    probe.run("function scripted()\nboth()\nreturn 7\nend");
    probe.addFunction("outer", [&probe, &seen](const std::vector<Variable>&) {
        seen = probe.engine.callCallable(probe.engine.pullVariable("scripted"), {});
        return Variable(6);
    });
    seen = 1;
    EXPECT_EQ(probe.hear("a, b = pcall(outer)\nsay(a, b)"), "false soft ");
    EXPECT_TRUE(seen.isNil());
}

TEST(ProtectedCall, WithoutOneASoftErrorIsNotRecorded) {
    Probe probe;
    probe.addFunction("soft", [&probe](const std::vector<Variable>&) {
        probe.engine.raiseScriptErrorSoft("lost");
        return Variable(5);
    });
    EXPECT_FALSE(probe.engine.shouldAbortForSoftRaisedError());
    EXPECT_EQ(probe.run("return soft()"), "5");
    EXPECT_EQ(probe.hear("a, b = pcall(len, \"abc\")\nsay(a, b)"), "true 3 ");
}

TEST(ProtectedCall, InTheHostsCallbacksTheInnermostCatches) {
    Probe probe;
    probe.addFunction("guard", [&probe](const std::vector<Variable>& arguments) {
        const Variable outcome = probe.engine.pcallFunctionFast(arguments.data(), arguments.size());
        EXPECT_FALSE(probe.engine.shouldAbortForSoftRaisedError());
        return outcome;
    });
    probe.run("function fails()\nerror(\"inner\")\nend\nfunction through()\na, b = guard(fails)\nsay(a, "
              "b)\nerror(\"outer\")\nend");
    EXPECT_EQ(probe.hear("a, b = pcall(through)\nsay(a, b)"), "false inner false outer ");
    EXPECT_EQ(probe.hear("through()"), "false inner ");
}

TEST(ProtectedCall, NestsAsDeepAsTheStackAllows) {
    Probe probe;
    probe.run("function deep(n)\nlocal ok, result = pcall(deep, n + 1)\nif ok\nreturn result\nend\nreturn n\nend");
    const std::string depth = probe.run("return deep(0)");
    EXPECT_GT(std::stoi(depth), 100);
    EXPECT_EQ(probe.hear("a, b = pcall(error, \"fine\")\nsay(a, b)"), "false fine ");
}

TEST(NativeStack, ARunawayRecursionIsAnErrorOnEveryRoad) {
    const std::vector<std::string> texts = {
        "function f()\nreturn f()\nend\nf()",
        "function f()\nf()\nend\nf()",
        "function f(n)\nif f(n)\nerror(\"never\")\nend\nreturn 1\nend\nf()",
        "function f()\nfor i = 1, f()\nend\nend\nf()",
        "function f()\nfor v in f()\nend\nend\nf()",
        "function f()\nwhile f()\nend\nend\nf()",
        "function f()\nrepeat\nuntil f()\nend\nf()",
        "function f()\nx[f()] = f()\nend\nf()",
        "function f()\nreturn [f()]\nend\nf()",
        "text = load(\"f()\")\nfunction f()\ntext()\nend\nf()",
        "function f()\nfunction g[f()]()\nend\nend\nf()",
        "function f(a, b)\ntable[\"sort\"]([2, 1], f)\nreturn a < b\nend\nf(1, 2)",
    };
    Probe probe;
    for (const std::string& text : texts) {
        EXPECT_EQ(probe.run(text), "OstrelScript error: native stack exhausted") << text;
        EXPECT_EQ(probe.run("return 1 + 1"), "2");
    }
}
