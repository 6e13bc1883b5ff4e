#pragma once

// A function value: one of the library's, one of the host's, or one that a script declared.

#include "script/name.h"
#include "script/variable.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class OstrelScript;
struct BytecodeProgram;
struct ParsedScriptLine;

/// A function that the host gives to scripts.
using HostFunction = std::function<Variable(const std::vector<Variable>&)>;
/// A function of the language's own library: no allocation stands between the call and its body.
using LibraryFunction = Variable (*)(OstrelScript& engine, const Variable* arguments, std::size_t count);

/// The library functions that expressions know by number; see `builtinIdFromName`.
enum class BuiltinId : std::uint8_t {
    None = 0,
    Assert = 1,
    GetTimeMs = 2,
    ToString = 3,
    ToNumber = 4,
    Error = 5,
    Pcall = 6,
    Load = 7,
    Pairs = 8,
    Ipairs = 9,
    Next = 10,
    Select = 11,
    CollectGarbage = 12,
    Len = 13,
    StringLen = 14,
    StringUpper = 15,
    StringSub = 16,
    StringFind = 17,
    StringMatch = 18,
    StringGmatch = 19,
    StringByte = 20,
    StringFormat = 21,
    StringGsub = 22,
    TableInsert = 23,
    TableRemove = 24,
    TableConcat = 25,
    TableSort = 26,
    MathFloor = 27,
    MathCeil = 28,
    MathAbs = 29,
    MathMin = 30,
    MathMax = 31,
    MathSin = 32,
    MathCos = 33,
    MathRad = 34,
    MathLog = 35,
    MathSqrt = 36,
    Utf8Len = 37,
};

/// The number of a library function by its qualified name ("len", "string.sub"); None for all others.
BuiltinId builtinIdFromName(std::string_view name);

/// A body short enough to be run without walking its statements.
enum class FastBody : std::uint8_t {
    None = 0,
    Return = 1,        // one `return` line
    GuardedReturn = 2, // `if condition`, `error("text")`, `end`, `return ...`
};

struct ScriptCallable {
    bool isNative = false;      // the library's or the host's
    bool isCoroutine = false;   // calling it starts a coroutine
    bool isVariadic = false;    // takes `...`
    bool isLoadedChunk = false; // a whole chunk made by `load` or a file loader; accepts no arguments
    bool hasRun = false;        // of a loaded chunk: it has been called before
    bool runsDeeper = true;     // a fast body runs one block depth below the definition, as its chunk would
    BuiltinId builtinId = BuiltinId::None;
    std::uint8_t isGlobalDeclared =
        1; // declared without `local` or `native`; a snapshot stores and gives back the byte

    /// True for a script's function that is called with one value for each parameter and nothing more.
    bool hasFixedParameters() const { return !isNative && !isCoroutine && !isVariadic && !isLoadedChunk; }

    LibraryFunction libraryFunction = nullptr; // set for functions of the library
    HostFunction nativeFunction;               // set for functions of the host
    std::string name;                          // for messages: the declared or the qualified native name

    std::vector<Name*> parameters;                             // without `...`
    std::shared_ptr<BytecodeProgram> program;                  // the compiled body, or null
    unsigned chunkIndex = 0;                                   // the body's chunk in `program`
    std::shared_ptr<const std::vector<ParsedScriptLine>> body; // lines of a body that runs line by line, or null

    std::string sourceDirectory; // where it was defined; on the engine's source stacks while it runs
    std::string sourcePath;
    std::size_t nativeScopeIndex = 0; // the block depth at its definition; it runs one deeper

    FastBody fastBody = FastBody::None;
    const ParsedScriptLine* guardLine = nullptr;  // the `if` of a GuardedReturn
    const ParsedScriptLine* errorLine = nullptr;  // its `error("text")`
    const ParsedScriptLine* returnLine = nullptr; // the `return` of both fast bodies
    std::string guardMessage;                     // that text

    std::shared_ptr<const bool> alive; // what a jump target watches; null until a label needs it
};
