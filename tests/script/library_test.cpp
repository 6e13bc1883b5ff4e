// The library from inside: the order of registration, the numbers that expressions know functions by, the scalar forms
// beside the general functions, every function under any arguments, and processes without a machine behind them.

#include "script/library/functions.h"
#include "script/ostrel_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

namespace {

Ref<ScriptCallable> functionNamed(const OstrelScript& engine, const std::string& qualified) {
    const std::size_t dot = qualified.find('.');
    if (dot == std::string::npos) {
        const Variable function = engine.pullVariable(qualified);
        return function.isFunction() ? function.asFunction() : nullptr;
    }
    const Variable table = engine.pullVariable(qualified.substr(0, dot));
    if (!table.isTable()) return nullptr;
    const Variable* const function = table.asTable()->find(qualified.substr(dot + 1));
    return function != nullptr && function->isFunction() ? function->asFunction() : nullptr;
}

std::string faultOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& fault) {
        return fault.what();
    }
    return "no fault";
}

// ---------------------------------------------------------------------------------------------------------------------
// Registration
// ---------------------------------------------------------------------------------------------------------------------

TEST(Library, GlobalsStandInThePromisedOrder) {
    const OstrelScript engine;
    const std::vector<std::string> order = {
        "print",
        "getTimeMs",
        "random",
        "toString",
        "toNumber",
        "gsub",
        "typeOf",
        "pop",
        "clear",
        "erase",
        "contains",
        "keys",
        "values",
        "assert",
        "error",
        "pcall",
        "load",
        "loadFile",
        "runFile",
        "exportState",
        "importState",
        "jumpTo",
        "pairs",
        "ipairs",
        "next",
        "select",
        "collectGarbage",
        "kill",
        "array",
        "len",
        "push",
        "reserve",
        "get",
        "set",
        "OSTREL_VERSION",
        "OSTREL_BYTECODE_VERSION",
        "OSTREL_RELEASE",
        "OSTREL_NAME",
        "OSTREL_AUTHOR",
        "string",
        "table",
        "math",
        "utf8",
        "io",
        "os",
        "readScript",
    };
    std::uint32_t last = 0;
    for (const std::string& name : order) {
        const Name* const entry = engine.analyseToken(name).name;
        ASSERT_NE(entry, nullptr) << name;
        ASSERT_NE(entry->globalSlot, 0U) << name << " is no global";
        EXPECT_GT(entry->globalSlot, last) << name;
        last = entry->globalSlot;
    }
    EXPECT_FALSE(engine.pullVariable("readScript").isNil());
}

TEST(Library, ConstantsHaveTheirValues) {
    const OstrelScript engine;
    EXPECT_EQ(engine.pullVariable("OSTREL_NAME").toString(), "OstrelScript");
    EXPECT_EQ(engine.pullVariable("OSTREL_BYTECODE_VERSION").asInt(), 60);
    EXPECT_EQ(engine.pullVariable("OSTREL_AUTHOR").toString(), "The Velmaris founders");
}

TEST(Library, FunctionsCarryTheirNumbers) {
    const std::vector<std::pair<std::string, int>> numbers = {
        {"assert", 1},         {"getTimeMs", 2},     {"toString", 3},       {"toNumber", 4},
        {"error", 5},          {"pcall", 6},         {"load", 7},           {"pairs", 8},
        {"ipairs", 9},         {"next", 10},         {"select", 11},        {"collectGarbage", 12},
        {"len", 13},           {"string.len", 14},   {"string.upper", 15},  {"string.sub", 16},
        {"string.find", 17},   {"string.match", 18}, {"string.gmatch", 19}, {"string.byte", 20},
        {"string.format", 21}, {"string.gsub", 22},  {"table.insert", 23},  {"table.remove", 24},
        {"table.concat", 25},  {"table.sort", 26},   {"math.floor", 27},    {"math.ceil", 28},
        {"math.abs", 29},      {"math.min", 30},     {"math.max", 31},      {"math.sin", 32},
        {"math.cos", 33},      {"math.rad", 34},     {"math.log", 35},      {"math.sqrt", 36},
        {"utf8.len", 37},
    };
    const OstrelScript engine;
    for (const auto& [name, number] : numbers) {
        EXPECT_EQ(static_cast<int>(builtinIdFromName(name)), number) << name;
        const auto function = functionNamed(engine, name);
        ASSERT_NE(function, nullptr) << name;
        EXPECT_EQ(static_cast<int>(function->builtinId), number) << name;
    }
}

TEST(Library, OtherNamesHaveNoNumber) {
    for (const char* name :
         {"", "print", "sub", "string", "string.rep", "string.", "math.random", "Len", "utf8.offset"})
        EXPECT_EQ(builtinIdFromName(name), BuiltinId::None) << name;
    const OstrelScript engine;
    EXPECT_EQ(functionNamed(engine, "print")->builtinId, BuiltinId::None);
    EXPECT_EQ(functionNamed(engine, "math.random")->builtinId, BuiltinId::None);
}

TEST(Library, FunctionsKnowTheirQualifiedName) {
    const OstrelScript engine;
    for (const char* name : {"string.sub", "table.sort", "math.randomSeed", "utf8.offset", "io.popen", "os.remove"}) {
        const auto function = functionNamed(engine, name);
        ASSERT_TRUE(function) << name;
        EXPECT_EQ(function->name, name);
        EXPECT_TRUE(function->isNative);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Scalar forms
// ---------------------------------------------------------------------------------------------------------------------

class RandomValues {
public:
    explicit RandomValues(unsigned seed) : generator_(seed) {}

    unsigned upTo(unsigned limit) { return static_cast<unsigned>(generator_()) % limit; }

    Variable any() {
        constexpr float infinity = std::numeric_limits<float>::infinity();
        constexpr int largest = std::numeric_limits<int>::max();
        switch (upTo(16)) {
        case 0: return {};
        case 1: return upTo(2) == 0;
        case 2: return std::string(upTo(5), static_cast<char>(upTo(256)));
        case 3: return "h\xC3\xA9llo";
        case 4: return makeArray(Elements(upTo(4)));
        case 5: {
            auto table = makeRef<Table>();
            for (int key = 1; key <= static_cast<int>(upTo(4)); ++key) table->set(key, key);
            return table;
        }
        case 6: return std::vector<float>{infinity, -infinity, infinity - infinity, -0.0F, 3.0e9F, 1e-40F}[upTo(6)];
        case 7: return std::vector<int>{largest, -largest - 1, 0, 1, -1, 2}[upTo(6)];
        case 8:
        case 9: return static_cast<float>(generator_()) / 1e9F - 2.0F;
        case 10: return static_cast<float>(static_cast<int>(upTo(9)) - 4) / 2.0F;
        case 11: return static_cast<int>(static_cast<unsigned>(generator_()));
        default: return static_cast<int>(upTo(9)) - 4;
        }
    }

private:
    std::mt19937 generator_;
};

/// Both equal to the last bit, and of the same type.
bool areSame(const Variable& left, const Variable& right) {
    if (left.type != right.type) return false;
    if (left.type != VarType::Float) return left.toString() == right.toString();
    return std::bit_cast<std::uint32_t>(left.asFloat()) == std::bit_cast<std::uint32_t>(right.asFloat());
}

TEST(ScalarForms, GiveWhatTheGeneralFunctionsGive) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomValues values(seed);
    OstrelScript engine;
    const std::vector<std::string> names = {"len",      "string.len", "string.byte", "math.floor", "math.ceil",
                                            "math.abs", "math.min",   "math.max",    "math.sin",   "math.cos",
                                            "math.rad", "math.log",   "math.sqrt",   "utf8.len"};
    std::vector<int> answered(names.size(), 0);
    for (int round = 0; round < 200000; ++round) {
        const std::size_t which = values.upTo(static_cast<unsigned>(names.size()));
        const auto function = functionNamed(engine, names[which]);
        std::vector<Variable> arguments(values.upTo(8) == 0 ? values.upTo(5) : 1 + values.upTo(2));
        for (Variable& argument : arguments) argument = values.any();
        const FastScalarValue scalar =
            nativeBuiltinScalar(engine, function->builtinId, arguments.data(), arguments.size());
        if (!scalar.isValid()) continue;
        ++answered[which];
        Variable general;
        const std::string fault =
            faultOf([&] { general = function->libraryFunction(engine, arguments.data(), arguments.size()); });
        ASSERT_EQ(fault, "no fault") << names[which];
        ASSERT_TRUE(areSame(fastScalarToVariable(scalar), general))
            << names[which] << ": " << fastScalarToVariable(scalar).toString() << " and " << general.toString();
    }
    for (std::size_t i = 0; i < names.size(); ++i) EXPECT_GT(answered[i], 100) << names[i];
}

TEST(ScalarForms, DeclineWhatTheGeneralFunctionsRefuse) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomValues values(seed);
    OstrelScript engine;
    int refused = 0;
    for (int round = 0; round < 100000; ++round) {
        const auto id = static_cast<BuiltinId>(values.upTo(40));
        std::vector<Variable> arguments(values.upTo(4));
        for (Variable& argument : arguments) argument = values.any();
        const bool declined = !nativeBuiltinScalar(engine, id, arguments.data(), arguments.size()).isValid();
        for (const char* name : {"math.floor", "math.abs", "math.min", "math.log", "math.sqrt", "len", "string.byte"}) {
            if (builtinIdFromName(name) != id) continue;
            const auto function = functionNamed(engine, name);
            if (faultOf([&] { function->libraryFunction(engine, arguments.data(), arguments.size()); }) == "no fault")
                continue;
            ++refused;
            ASSERT_TRUE(declined) << name;
        }
    }
    EXPECT_GT(refused, 1000);
}

TEST(ScalarForms, DeclineFunctionsThatAreNotNumeric) {
    const OstrelScript engine;
    const Variable argument = 1;
    for (const BuiltinId id : {BuiltinId::None, BuiltinId::Assert, BuiltinId::ToString, BuiltinId::Pcall,
                               BuiltinId::StringSub, BuiltinId::TableSort})
        EXPECT_FALSE(nativeBuiltinScalar(engine, id, &argument, 1).isValid());
}

TEST(ScalarForms, ALongSelectionOfBytesIsNoScalar) {
    const OstrelScript engine;
    const Variable arguments[] = {"abc", 1, 3};
    EXPECT_FALSE(nativeBuiltinScalar(engine, BuiltinId::StringByte, arguments, 3).isValid());
    EXPECT_EQ(nativeBuiltinScalar(engine, BuiltinId::StringByte, arguments, 2).intValue, 'a');
}

// ---------------------------------------------------------------------------------------------------------------------
// Any arguments whatever
// ---------------------------------------------------------------------------------------------------------------------

TEST(Library, AnyArgumentsGiveAResultOrAMessage) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomValues values(seed);
    OstrelScript engine;
    std::vector<Ref<ScriptCallable>> functions;
    for (const char* name :
         {"getTimeMs",      "random", "toString", "toNumber", "typeOf",  "pop",   "clear",  "erase", "contains",
          "keys",           "values", "assert",   "pcall",    "load",    "pairs", "ipairs", "next",  "select",
          "collectGarbage", "array",  "len",      "push",     "reserve", "get",   "set"})
        functions.push_back(functionNamed(engine, name));
    for (const char* name : {"string", "table", "math", "utf8"}) {
        const Variable table = engine.pullVariable(name);
        for (const Table::Entry& entry : table.asTable()->entries()) functions.push_back(entry.value.asFunction());
    }

    const Variable shared = makeArray({1, 2.5F, "x"});
    const auto anything = [&]() -> Variable {
        switch (values.upTo(12)) {
        case 0: return shared;
        case 1: return makeMulti({values.any(), values.any()});
        case 2: return std::vector<char>{'r', 'a', 'w'};
        case 3: return static_cast<void*>(&values);
        case 4: return functions[values.upTo(static_cast<unsigned>(functions.size()))];
        case 5:
            return std::vector<std::string>{
                "%", "%5", "%s%d%q", "%-+ #010.20f", "return 1", "re:(", "/a/", "-"}[values.upTo(8)];
        case 6: {
            Elements elements(values.upTo(40));
            for (Variable& element : elements) element = values.upTo(5) == 0 ? values.any() : Variable(1.5F);
            return makeArray(std::move(elements));
        }
        default: return values.any();
        }
    };
    int results = 0;
    int messages = 0;
    for (int round = 0; round < 100000; ++round) {
        const auto& function = functions[values.upTo(static_cast<unsigned>(functions.size()))];
        std::vector<Variable> arguments(values.upTo(5));
        for (Variable& argument : arguments) argument = anything();
        if (shared.asArray()->size() > 100) shared.asArray()->clear();
        const std::string fault = faultOf([&] {
            // A list that holds itself would never be let go of, and a repetition may be as long as the limit is high.
            const bool joins = function->name == "push" || function->name == "set" || function->name == "table.insert";
            if (joins && std::count_if(arguments.begin(), arguments.end(), [](const Variable& argument) {
                             return argument.isArray() || argument.isMulti();
                         }) > 1)
                return;
            if (function->name == "string.rep" && arguments.size() > 1 && arguments[1].isNumeric())
                arguments[1] = toInt(arguments[1]) % 1000;
            function->libraryFunction(engine, arguments.data(), arguments.size());
        });
        ++(fault == "no fault" ? results : messages);
        // The message of an assert is the script's own, and may be empty.
        if (function->name != "assert") {
            ASSERT_FALSE(fault.empty()) << function->name;
        }
        ASSERT_EQ(fault.find("std::"), std::string::npos) << function->name << ": " << fault;
    }
    EXPECT_GT(results, 10000);
    EXPECT_GT(messages, 10000);
}

// ---------------------------------------------------------------------------------------------------------------------
// Process pipes
// ---------------------------------------------------------------------------------------------------------------------

std::string lastCommand;
std::string lastMode;
int closings = 0;

std::FILE* openPretended(const char* command, const char* mode) {
    lastCommand = command;
    lastMode = mode;
    std::FILE* const stream = std::tmpfile();
    if (stream == nullptr) return nullptr;
    std::fputs(command, stream);
    std::rewind(stream);
    return stream;
}

std::FILE* openNothing(const char*, const char*) { return nullptr; }

int closePretended(std::FILE* stream) {
    ++closings;
    std::fclose(stream);
    return 0;
}

Variable run(OstrelScript& engine, const std::string& script) { return engine.runScript(script); }

TEST(ProcessPipes, WithoutThemNoProcessIsStarted) {
    OstrelScript engine;
    EXPECT_TRUE(run(engine, "return io[\"popen\"](\"anything\")").isNil());
}

TEST(ProcessPipes, AProcessThatCanNotBeStartedIsNil) {
    OstrelScript engine;
    engine.setProcessPipes({openNothing, closePretended});
    EXPECT_TRUE(run(engine, "return io[\"popen\"](\"anything\")").isNil());
}

TEST(ProcessPipes, CommandAndModeArriveAsTheyAreWritten) {
    OstrelScript engine;
    engine.setProcessPipes({openPretended, closePretended});
    run(engine, "p = io[\"popen\"](\"a\\\\b c\")");
    EXPECT_EQ(lastCommand, "a\\b c");
    EXPECT_EQ(lastMode, "r");
    run(engine, "p = io[\"popen\"](\"x\", \"wb\")");
    EXPECT_EQ(lastMode, "wb");
    run(engine, "p = io[\"popen\"](\"x\", 5)");
    EXPECT_EQ(lastMode, "r");
}

TEST(ProcessPipes, ALongLineComesInPieces) {
    OstrelScript engine;
    engine.setProcessPipes({openPretended, closePretended});
    run(engine, "p = io[\"popen\"](string[\"rep\"](\"x\", 10000) + \"\\ny\")");
    EXPECT_EQ(run(engine, "return #p[\"read\"](p)").asInt(), 4095);
    EXPECT_EQ(run(engine, "return #p[\"read\"](p)").asInt(), 4095);
    EXPECT_EQ(run(engine, "return #p[\"read\"](p)").asInt(), 1810);
    EXPECT_EQ(run(engine, "return p[\"read\"](p)").toString(), "y");
    EXPECT_TRUE(run(engine, "return p[\"read\"](p)").isNil());
}

TEST(ProcessPipes, AProcessIsClosedOnceWhenTheLastFunctionGoes) {
    OstrelScript engine;
    engine.setProcessPipes({openPretended, closePretended});
    closings = 0;
    run(engine, "p = io[\"popen\"](\"x\")\nreader = p[\"read\"]\np = not");
    EXPECT_EQ(closings, 0);
    run(engine, "reader = not");
    EXPECT_EQ(closings, 1);
    run(engine, "p = io[\"popen\"](\"x\")\np[\"close\"](p)\np[\"close\"](p)\np = not");
    EXPECT_EQ(closings, 2);
}

} // namespace
