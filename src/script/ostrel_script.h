#pragma once

// The OstrelScript interpreter.
//
// One object holds a whole script state: globals, scopes, the functions and the files that were loaded. A text goes
// through it in this order: `parseLines` cuts it into logical lines and tokens and prepares a plan for each line, the
// compiler lays a block index over them, the executor walks that index. Expressions are evaluated from nodes where the
// line compiled to nodes, else from tokens; both give the same values and the same messages.
//
// The implementation is spread over one source file per concern; the sections below name them.

#include "script/bytecode.h"
#include "script/callable.h"
#include "script/coroutine.h"
#include "script/execution_state.h"
#include "script/loop_state.h"
#include "script/name.h"
#include "script/parsed_line.h"
#include "script/table.h"
#include "script/variable.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <exception>
#include <memory>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/// What the script function `error` throws outside of a protected call: the exact text, without any position.
class RaisedScriptError : public std::exception {
public:
    explicit RaisedScriptError(std::string text) : message(std::move(text)) {}
    const char* what() const noexcept override { return message.c_str(); }

    std::string message;
};

/// A fault in the structure of a compiled program: its file is corrupt. Never dressed up as a script error.
class BytecodeStructureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A chunk that is being run, linked to the one around it. It lives on the native stack of its run.
struct ActiveChunk {
    const BytecodeProgram* program = nullptr;
    unsigned chunk = 0;
    const ActiveChunk* outer = nullptr;
};

/// How a block ended.
enum class SignalKind : std::uint8_t { None = 0, Return = 1, Break = 2, Jump = 3 };

/// Where a block reports that; the value of a Return is the result of the function that ran the block.
struct BlockSignal {
    SignalKind kind = SignalKind::None;
};

class OstrelScript : private ExecutionState {
public:
    OstrelScript();
    OstrelScript(const OstrelScript&) = delete;
    OstrelScript& operator=(const OstrelScript&) = delete;
    ~OstrelScript();

    // --- Running scripts (script_files.cpp, bytecode_executor.cpp) ---

    /// Compiles and runs a text; gives what it returns. Faults of compiling are reported at the current position.
    Variable runScript(const std::string& text);
    /// Loads and runs a file; fails with "Failed to open script file: " and the path, or with the file's own fault.
    Variable runScriptFilePath(const std::string& path);
    Variable runBytecode(BytecodeProgram program);
    Variable runBytecodeProgram(const std::shared_ptr<BytecodeProgram>& program);

    // --- Compiling (bytecode_compiler.cpp) and bytecode files (bytecode_file.cpp) ---

    BytecodeProgram compileToBytecode(const std::string& source);
    /// Compiles under a source path of its own; backslashes in it become slashes.
    BytecodeProgram compileToBytecode(const std::string& source, const std::string& sourcePath);
    /// The program in the current file format.
    std::vector<unsigned char> serialiseBytecode(const BytecodeProgram& program) const;
    /// Reads a program; `sourceLabel` stands in the messages. Any bytes whatever give a program or a message.
    BytecodeProgram deserialiseBytecode(const std::vector<unsigned char>& bytes, const std::string& sourceLabel);
    void saveBytecode(const BytecodeProgram& program, const std::string& path) const;
    BytecodeProgram loadBytecode(const std::string& path);

    // --- Lines and tokens (tokeniser.cpp, line_parser.cpp) ---

    /// Cuts, tokenises, analyses and prepares a whole source text.
    std::vector<ParsedScriptLine> parseLines(const std::string& source);
    /// One logical line to tokens; fails with "Unterminated string literal".
    std::vector<std::string> tokenise(const std::string& line);
    TokenAnalysis analyseToken(const std::string& token) const;
    bool isIdentifier(const std::string& token) const;
    /// Reads `name#N` with N below 4.
    bool parseScopedVariableToken(const std::string& token, std::string& name, unsigned char& scope) const;
    /// Classifies every line, finds its plan and links the blocks.
    void prepareParsedLines(std::vector<ParsedScriptLine>& lines);

    // --- Expressions (expression.cpp, operators.cpp, indexing.cpp, fast_evaluate.cpp, fast_arithmetic.cpp) ---

    /// Evaluates one expression from `position` and leaves `position` behind it. Without an analysis each token is
    /// analysed on the spot.
    Variable evaluateExpression(const std::vector<std::string>& tokens, std::size_t& position,
                                const std::vector<TokenAnalysis>* analysis);
    /// Walks the same grammar without effects: evaluates nothing, calls nothing, fails on what the grammar rejects.
    void skipExpression(const std::vector<std::string>& tokens, std::size_t& position, int minimumLevel,
                        const std::vector<TokenAnalysis>* analysis);
    Variable evaluateFastExpression(const FastExpression& expression);

    Variable performOperation(const Variable& left, BinaryOperator binaryOperator, const Variable& right) const;
    /// -1, 0 or 1; fails with "Cannot compare A with B".
    int compareVariables(const Variable& left, const Variable& right) const;
    bool variablesEqual(const Variable& left, const Variable& right) const;
    bool isTruthy(const Variable& value) const;
    /// The language's own name of a type, as its messages use it; nil is "not".
    std::string typeName(VarType type) const;
    /// A key as the text under which a table stores it.
    std::string keyToString(const Variable& key) const;
    /// Bytes of a string, elements of an array, numeric length of a table.
    int arrayLength(const Variable& value) const;

    Variable getIndexedValue(const Variable& container, const Variable& key);
    void setIndexedValue(Variable& container, const Variable& key, const Variable& value, bool createMissing);
    /// The element's place in an array or table.
    Variable* getIndexedValueMutable(Variable& container, const Variable& key, bool createMissing);

    // --- Snapshots (snapshot.cpp) ---

    /// All globals that can be stored, and the random generator, as one block of bytes.
    std::vector<unsigned char> exportState() const;
    /// Merges a block into the globals. `sourceLabel` stands in the messages; a failure leaves the entries that were
    /// read before it.
    void importState(std::span<const unsigned char> bytes, const std::string& sourceLabel);
    void saveState(const std::string& path) const;
    void loadState(const std::string& path);
    /// The engine's one object for a name.
    Name* internName(std::string_view text) { return names_.intern(text); }
    /// The engine's one text for keys that read the same.
    Ref<ScriptText> internText(std::string text) { return names_.texts().intern(std::move(text)); }

    // --- Variables (scopes.cpp) ---

    /// Sets or creates a global.
    void pushVariable(std::string_view name, Variable value);
    /// A global's value, or nil.
    Variable pullVariable(std::string_view name) const;
    void commitExternalScopeToGlobal();

    // --- Calls and errors (calls.cpp, errors.cpp) ---

    /// The one road of every call.
    Variable invokeCallableFast(const Variable& callable, const Variable* arguments, std::size_t count);
    Variable invokeCallable(const Variable& callable, const std::vector<Variable>& arguments);
    /// The same for native code; fails with "callCallable: value is not a function".
    Variable callCallable(const Variable& callable, const std::vector<Variable>& arguments);
    /// Calls argument 0 with the rest; true and the results, or false and the message.
    Variable pcallFunctionFast(const Variable* arguments, std::size_t count);

    Variable makeNativeCallable(HostFunction function, std::string name);
    Variable makeLibraryCallable(LibraryFunction function, std::string name);
    /// Registers a library function as a global.
    void pushFunction(const std::string& name, LibraryFunction function);

    /// Raises a script error on purpose: thrown, or recorded softly under an active protected call. In that case the
    /// call returns and its caller goes back to the script at once.
    void raiseError(std::string message);
    /// The soft half of raiseError: recorded unless one is pending already.
    void raiseScriptErrorSoft(std::string message);
    /// True while a recorded error waits for a protected call further out. Native code that calls back into a script
    /// in a loop tests this after each call and returns.
    bool shouldAbortForSoftRaisedError() const { return softErrorPending_ && callDepth_ > softErrorDepth_; }
    /// Builds the full report for the current line and throws it.
    [[noreturn]] void throwError(const std::string& message, std::string_view token);

    // --- Files and paths (script_files.cpp) ---

    /// A copy with every backslash turned into a slash.
    std::string normalisePath(const std::string& path) const;
    /// Finds a file that a script named: as given, beside the running script, under the game's Resources.
    std::string resolvePath(const std::string& path) const;
    /// The bytes of a file; fails with "Failed to open script file: " and the path.
    std::string readScriptFile(const std::string& name) const;
    /// Compiles a file into a function, or gives a multi value of nil and the message. Unchanged files are not read
    /// again.
    Variable loadScriptFile(const std::string& path);
    /// Compiles a text into a function, or gives a multi value of nil and the message. A non-empty `chunkName` is the
    /// source path in reports.
    Variable loadScriptChunk(const std::string& text, const std::string& chunkName);

    // --- Coroutines and jumps (coroutines.cpp, jumps.cpp) ---

    /// Ends the scheduled coroutine; inside its turn, at the end of its present statement.
    void endScheduledCoroutine();
    /// Goes on at the `nest` block of that label when the present statement has ended.
    void requestJump(std::string label);

    // --- For the library ---

    std::mt19937& randomGenerator() { return randomGenerator_; }
    std::chrono::steady_clock::time_point startTime() const { return startTime_; }

    /// How `io.popen` reaches the machine's shell; the host gives it, the language itself knows no platform.
    struct ProcessPipes {
        std::FILE* (*open)(const char* command, const char* mode) = nullptr; // null result: could not be started
        int (*close)(std::FILE* stream) = nullptr;                           // the exit code, or -1
    };
    void setProcessPipes(ProcessPipes pipes) { processPipes_ = pipes; }
    const ProcessPipes& processPipes() const { return processPipes_; }

    // --- For tests and fuzzers ---

    /// After so many statements and loop rounds every further one fails with "step limit reached".
    void setStepLimit(std::uint64_t steps) { stepsLeft_ = steps; }
    /// Runs lines through the walker over parsed lines instead of the compiled road; gives the block's result.
    Variable executeBlock(const std::vector<std::string>& lines, std::size_t& position, BlockSignal& signal);

private:
    friend class TokenEvaluator;
    friend class FastEvaluator;
    friend class PositionGuard;
    friend class ScopeGuard;
    friend class SourceGuard;
    friend class BlockDepthGuard;
    friend class CallGuard;
    friend class ChunkRun;
    friend class ParsedRun;
    friend class CoroutineRun;
    friend class ExecutionExchange;
    friend class ActiveChunkGuard;

    /// A scope that is searched from the front: the external scope and the native scopes.
    using Scope = std::vector<std::pair<Name*, Variable>>;

    struct Global {
        Name* name = nullptr;
        Variable value;
    };

    // expression.cpp
    Variable negate(const Variable& operand);
    Variable currentVarargs() const;

    // fast_evaluate.cpp
    /// A valid scalar, or else `boxed` holds the result.
    FastScalarValue evaluateFastDual(const FastExpression& expression, Variable& boxed);

    // indexing.cpp
    /// The element of an array or table under the key, or null.
    Variable* findElement(const Variable& container, const Variable& key) const;
    Variable stringMethod(const Variable& text, const std::string& name);

    // scopes.cpp
    Variable* resolveVariablePtr(const Name* name) const {
        if (name->newestInBlocks != nullptr && name->newestInBlocks->block >= blockScopeBase_)
            return &name->newestInBlocks->value;
        if (name->newestInFrames != nullptr) return &name->newestInFrames->value;
        if (blockDepth_ < nativeScopes_.size())
            if (Variable* entry = findInScope(nativeScopes_[blockDepth_], name)) return entry;
        return name->global;
    }
    Variable* resolveExplicitScopeVariable(Name* name, ExplicitScope scope);
    Variable* resolveToken(const TokenAnalysis& token);
    void assignVariable(Name* name, Variable value, ScopeTarget target);
    void assignExplicitScopeVariable(Name* name, ExplicitScope scope, Variable value);
    void assignToken(const TokenAnalysis& token, Variable value, ScopeTarget target);
    void setGlobal(Name* name, Variable value);
    void setLocal(Name* name, Variable value) { localPlace(name) = std::move(value); }
    /// The name's variable in the top block scope, added as nil if it is missing.
    Variable& localPlace(Name* name);
    /// The name's global, added as nil if it is missing.
    Variable& globalPlace(Name* name);
    static void setScopeValue(Scope& scope, Name* name, Variable value);
    static Variable* findInScope(Scope& scope, const Name* name);
    Scope* currentNativeScope() const;
    Scope& currentNativeScopeForWrite();
    void pushBlockScope() { ++blockScopes_; }
    /// A new binding in the newest frame, its value nil. A frame is nothing but the bindings made since it was opened.
    Binding& bindInFrame(Name* name) {
        Binding& binding = bindings_.push();
        nameInFrame(binding, name);
        return binding;
    }
    static void nameInFrame(Binding& binding, Name* name) {
        binding.name = name;
        binding.shadowed = name->newestInFrames;
        binding.inFrame = true;
        name->newestInFrames = &binding;
    }

    // statements.cpp, declarations.cpp, loops.cpp
    bool evaluateCondition(const ParsedScriptLine& line, const char* name);
    /// A line that is no block: an assignment, a declaration or a call.
    void executeStatement(const ParsedScriptLine& line);
    void executeExpressionStatement(const ParsedScriptLine& line);
    void evaluateReturn(const ParsedScriptLine& line, Variable& result);
    void assignName(const LinePlan& plan);
    void assignElement(const LinePlan& plan);
    void assignCompoundName(const ParsedScriptLine& line);
    [[noreturn]] void failUnknownVariable(const ParsedScriptLine& line);
    void assignCompound(const ParsedScriptLine& line);
    void assignList(const ParsedScriptLine& line);
    void assignResults(const ParsedScriptLine& line, const Variable& value);
    void assignTarget(const ParsedScriptLine& line, const ParsedAssignmentTarget& target, Variable value);
    void assignIndexed(const TokenAnalysis& name, const std::vector<Variable>& keys, const Variable& value,
                       ScopeTarget scope);
    void applyInPlace(Variable& target, BinaryOperator binaryOperator, const Variable& right);
    Variable evaluateValue(const ParsedScriptLine& line, std::size_t index);
    Variable evaluateRange(const ParsedScriptLine& line, const TokenRange& range, const FastExpression& expression,
                           const char* leftOver);
    std::vector<Variable> evaluateKeys(const ParsedScriptLine& line, const ParsedAssignmentTarget& target);
    void declareFunction(const ParsedScriptLine& line, Ref<ScriptCallable> callable);
    void prepareFastCallableBody(ScriptCallable& callable, const ParsedScriptLine* first,
                                 const ParsedScriptLine* last) const;
    NumericLoop readNumericLoop(const ParsedScriptLine& line);
    void readCompiledClauses(const ParsedScriptLine& line, NumericLoop& loop);
    void readClauseTokens(const ParsedScriptLine& line, NumericLoop& loop);
    GenericLoop readGenericLoop(const ParsedScriptLine& line);
    static void readContainerWalk(const Variable& container, BuiltinId iterator, GenericLoop& loop);
    bool isByteCall(const LinePlan& plan, const Variable& result);
    static void assignLoopNames(const std::vector<Binding*>& names, const GenericLoop& loop, std::size_t round);
    /// Both go round a `for`; `runBody` runs its body once. (for_loop.h)
    template <typename RunBody>
    void runNumericFor(const ParsedScriptLine& line, BlockSignal& signal, const RunBody& runBody);
    template <typename RunBody>
    void runGenericFor(const ParsedScriptLine& line, BlockSignal& signal, const RunBody& runBody);
    /// What a loop does after a round: true if it ends; a `break` is used up by that, all else is handed on.
    bool endsLoop(BlockSignal& signal) const {
        if (signal.kind == SignalKind::None) return shouldAbortForSoftRaisedError();
        if (signal.kind == SignalKind::Break) signal.kind = SignalKind::None;
        return true;
    }
    [[noreturn]] void reportLoopHeader(const ParsedScriptLine& line);

    // coroutines.cpp
    std::shared_ptr<CoroutineState> createCoroutineState(Ref<ScriptCallable> callable, const Variable* arguments,
                                                         std::size_t count);
    /// Schedules a coroutine in place of the present one; inside a turn, ends the coroutine that calls.
    void startCoroutine(Ref<ScriptCallable> callable, const Variable* arguments, std::size_t count);
    void serviceScheduledCoroutineTurn();
    /// Runs a turn if one is due; an error is kept for the main line's next statement.
    void serviceScheduledCoroutineTurnNoThrow();
    bool runCoroutineTurn(CoroutineState& state);
    void rethrowPendingCoroutineException();

    // jumps.cpp
    void registerCallableNestLabels(const Ref<ScriptCallable>& callable);
    static bool findNestLabelInBytecodeChunk(const BytecodeProgram& program, unsigned chunk, const std::string& label,
                                             std::size_t& instruction);
    bool activeBytecodeAncestorHasNestLabel(const BytecodeProgram& program, unsigned chunk,
                                            const std::string& label) const;
    bool executeRegisteredJumpTarget(const std::string& label);
    void clearPendingJump();

    // parsed_block.cpp
    /// Declares the function whose declaring line stands at `index`, with a copy of its lines.
    void declareParsedFunction(const std::vector<ParsedScriptLine>& lines, std::size_t index);
    static std::shared_ptr<const std::vector<ParsedScriptLine>> copyBody(const ParsedScriptLine* first,
                                                                         const ParsedScriptLine* last);
    Variable executeParsedBlock(const std::vector<ParsedScriptLine>& lines, std::size_t& position, BlockSignal& signal);

    // bytecode_executor.cpp
    /// Only a `return` touches `result`. Without a start it runs from the chunk's first instruction.
    void executeBytecodeChunk(const std::shared_ptr<BytecodeProgram>& program, unsigned chunk, BlockSignal& signal,
                              Variable& result, std::size_t startInstruction = chunkStart);
    /// The same for the whole body of a function that is being called.
    void executeFunctionChunk(const ScriptCallable& callable, BlockSignal& signal, Variable& result);
    static constexpr std::size_t chunkStart = ~std::size_t{0};
    static bool isInlineEligible(BytecodeProgram& program, unsigned chunk);

    // bytecode_compiler.cpp
    BytecodeProgram compileToBytecodeInternal(const std::string& source);

    // calls.cpp
    FastScalarValue callScript(ScriptCallable& callable, const Variable* arguments, std::size_t count, Variable& boxed);
    /// Calls a function whose arguments are the bindings above `base`, one for each parameter.
    FastScalarValue callBound(const ScriptCallable& callable, std::size_t base, Variable& boxed);
    /// Runs the body; its frame is there.
    FastScalarValue runCallable(const ScriptCallable& callable, Variable& boxed);
    void enterLoadedChunk(ScriptCallable& chunk, std::size_t argumentCount) const;
    /// A call whose result may come back as a scalar; `boxed` holds it otherwise. The caller keeps the function alive.
    FastScalarValue callDual(const Variable& callable, const Variable* arguments, std::size_t count, Variable& boxed);
    FastScalarValue callFunction(ScriptCallable& function, const Variable* arguments, std::size_t count,
                                 Variable& boxed);
    FastScalarValue runFastBody(const ScriptCallable& callable, Variable& boxed);
    /// Pure numeric library functions; Invalid if this is none or the arguments are not for it.
    FastScalarValue tryEvaluateNativeBuiltinScalar(BuiltinId id, const Variable* arguments, std::size_t count);
    void bindParameters(const ScriptCallable& callable, const Variable* arguments, std::size_t count);
    bool isErrorFunction() const;

    // errors.cpp
    void clearSoftRaisedError();
    void setCurrentLine(const ParsedScriptLine& line) {
        position_.line = &line;
        position_.text = nullptr;
        position_.lineNumber = line.lineNumber;
        position_.tokens = &line.tokens;
        position_.token = noLine;
    }
    /// Called in a handler: throws on what is a report already, dresses up everything else with the position.
    [[noreturn]] void rethrowWithPosition();
    std::string_view lastTokenText() const;
    void countStep() {
        if (stepsLeft_-- == 0) reportStepLimit();
    }
    [[noreturn]] void reportStepLimit();

    // script_files.cpp
    Ref<ScriptCallable> makeChunkCallable(std::shared_ptr<BytecodeProgram> program) const;
    const std::string& currentSourcePath() const;
    const std::string& currentSourceDirectory() const;

    // Names and variables
    mutable NameTable names_;
    std::deque<Global> globals_; // in order of creation; a slot never moves
    Scope externalScope_;
    mutable std::vector<Scope> nativeScopes_; // by block depth
    std::uint64_t stepsLeft_ = ~std::uint64_t{0};

    // Coroutines
    std::shared_ptr<CoroutineState> scheduledCoroutine_;   // at most one
    std::shared_ptr<CoroutineState> replacementCoroutine_; // takes over when the running turn ends
    std::exception_ptr pendingCoroutineException_;         // of a turn; the main line's next statement throws it
    bool inCoroutineTurn_ = false;
    bool coroutineReplaced_ = false;

    // Jumps
    bool pendingJump_ = false;
    std::string pendingJumpLabel_;
    std::unordered_map<std::string, JumpTarget> jumpTargets_; // by label
    const ActiveChunk* activeChunk_ = nullptr;                // the innermost chunk that runs

    /// A compiled script file. Entries are never removed.
    struct ScriptFileCacheEntry {
        std::shared_ptr<BytecodeProgram> program;
        Ref<ScriptCallable> callable;
        std::uintmax_t size = 0;
        std::int64_t modified = 0; // change time of the file, in seconds
        bool dirty = false;
    };
    std::unordered_map<std::string, ScriptFileCacheEntry> scriptFiles_;

    ProcessPipes processPipes_;
    Name* stringName_ = nullptr; // the global table that gives strings their methods
    Name* errorName_ = nullptr;
    std::mt19937 randomGenerator_;
    std::chrono::steady_clock::time_point startTime_;
};
