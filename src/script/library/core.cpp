// The global functions and constants.
//
// Scripts are promised an order: globals get their slots in the order in which they are registered here, and a saved
// state counts on it. The functions of this file talk to the world outside (print, the clock), to the engine (errors,
// protected calls, loading) or take values apart; those on containers, numbers and iteration have files of their own.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <chrono>
#include <cstdio>

namespace {

constexpr const char* languageVersion = "1.1";
constexpr const char* releaseText = "First slice";
constexpr const char* languageName = "OstrelScript";
constexpr const char* authorText = "The Velmaris founders";

Variable printFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) line += ' ';
        arguments[i].appendTo(line);
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
    return 0;
}

Variable getTimeMsFunction(OstrelScript& engine, const Variable*, std::size_t count) {
    if (count != 0) fail("getTimeMs function takes no arguments");
    const auto passed = std::chrono::steady_clock::now() - engine.startTime();
    return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(passed).count());
}

Variable toStringFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("toString function requires exactly 1 argument");
    return arguments[0].toString();
}

/// The type as scripts are told it, which is coarser than the names in messages.
const char* scriptTypeName(VarType type) {
    switch (type) {
    case VarType::Nil: return "not";
    case VarType::Integer:
    case VarType::Float: return "number";
    case VarType::String: return "string";
    case VarType::Raw:
    case VarType::Pointer: return "userdata";
    case VarType::Boolean: return "boolean";
    case VarType::Array:
    case VarType::Multi:
    case VarType::Table: return "table";
    case VarType::Function: return "function";
    }
    return "unknown";
}

Variable typeOfFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("typeOf(x) requires exactly 1 argument");
    return scriptTypeName(arguments[0].type);
}

Variable assertFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count == 0) fail("assert requires at least 1 argument");
    if (!engine.isTruthy(arguments[0])) {
        engine.raiseError(count > 1 ? arguments[1].toString() : "assertion failed!");
        return {};
    }
    if (count == 1) return arguments[0];
    return makeMulti(std::vector<Variable>(arguments, arguments + count));
}

Variable errorFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    engine.raiseError(count > 0 ? arguments[0].toString() : "error");
    return {};
}

Variable pcallFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    return engine.pcallFunctionFast(arguments, count);
}

Variable loadScriptChunk(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) fail("load(scriptText) requires a script string");
    const bool isNamed = count > 1 && arguments[1].isString();
    return engine.loadScriptChunk(arguments[0].asString(), isNamed ? arguments[1].asString() : std::string());
}

Variable loadScriptFile(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) fail("loadFile(path) requires a script path string");
    return engine.loadScriptFile(arguments[0].asString());
}

Variable runScriptFile(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) fail("Expected a script path string");
    return engine.runScriptFilePath(arguments[0].asString());
}

/// The values from a 1-based place on.
Variable valuesFrom(const Variable* values, std::size_t count, std::size_t place) {
    if (place > count) return {};
    return makeMulti(std::vector<Variable>(values + place - 1, values + count));
}

Variable selectFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count < 2) fail("select(index, values...) requires at least 2 arguments");
    if (arguments[0].type != VarType::Integer) fail("select(index, values...) requires an integer index");
    if (arguments[0].asInt() < 1) fail("select index must be >= 1");
    const auto place = static_cast<std::size_t>(arguments[0].asInt());
    if (count == 2 && (arguments[1].isArray() || arguments[1].isMulti())) {
        const std::vector<Variable>& inside =
            arguments[1].isArray() ? *arguments[1].asArray() : arguments[1].asMulti()->values;
        return valuesFrom(inside.data(), inside.size(), place);
    }
    return valuesFrom(arguments + 1, count - 1, place);
}

/// Values are counted, and a table's listings of its keys die with it: nothing ever waits to be collected.
Variable collectGarbageFunction(OstrelScript&, const Variable*, std::size_t) { return {}; }

} // namespace

void registerCoreLibrary(OstrelScript& engine) {
    engine.pushFunction("print", printFunction);
    engine.pushFunction("getTimeMs", getTimeMsFunction);
    engine.pushFunction("random", randomFunction);
    engine.pushFunction("toString", toStringFunction);
    engine.pushFunction("toNumber", toNumberFunction);
    engine.pushFunction("gsub", gsubImpl);
    engine.pushFunction("typeOf", typeOfFunction);
    engine.pushFunction("pop", popFunction);
    engine.pushFunction("clear", clearFunction);
    engine.pushFunction("erase", eraseFunction);
    engine.pushFunction("contains", containsFunction);
    engine.pushFunction("keys", keysFunction);
    engine.pushFunction("values", valuesFunction);
    engine.pushFunction("assert", assertFunction);
    engine.pushFunction("error", errorFunction);
    engine.pushFunction("pcall", pcallFunction);
    engine.pushFunction("load", loadScriptChunk);
    engine.pushFunction("loadFile", loadScriptFile);
    engine.pushFunction("runFile", runScriptFile);
    engine.pushFunction("exportState", exportStateFunction);
    engine.pushFunction("importState", importStateFunction);
    engine.pushFunction("jumpTo", jumpToFunction);
    engine.pushFunction("pairs", pairsFunction);
    engine.pushFunction("ipairs", ipairsFunction);
    engine.pushFunction("next", nextFunction);
    engine.pushFunction("select", selectFunction);
    engine.pushFunction("collectGarbage", collectGarbageFunction);
    engine.pushFunction("kill", killFunction);
    engine.pushFunction("array", arrayFunction);
    engine.pushFunction("len", lenFunction);
    engine.pushFunction("push", pushFunction);
    engine.pushFunction("reserve", reserveFunction);
    engine.pushFunction("get", getFunction);
    engine.pushFunction("set", setFunction);

    engine.pushVariable("OSTREL_VERSION", languageVersion);
    engine.pushVariable("OSTREL_BYTECODE_VERSION", static_cast<int>(bytecodeVersion));
    engine.pushVariable("OSTREL_RELEASE", releaseText);
    engine.pushVariable("OSTREL_NAME", languageName);
    engine.pushVariable("OSTREL_AUTHOR", authorText);
}
