// Calls: the one road that every function takes, and the protected call that stops an error.

#include "script/block_faults.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"

namespace {

/// Takes off what was pushed on a stack since it was made.
template <typename Stack> class StackGuard {
public:
    explicit StackGuard(Stack& stack) : stack_(stack), size_(stack.size()) {}
    StackGuard(const StackGuard&) = delete;
    StackGuard& operator=(const StackGuard&) = delete;
    ~StackGuard() { stack_.resize(size_); }

private:
    Stack& stack_;
    std::size_t size_;
};

} // namespace

Variable OstrelScript::invokeCallableFast(const Variable& callable, const Variable* arguments, std::size_t count) {
    const Variable held = callable; // the function may replace the variable that it was called from
    Variable result;
    const FastScalarValue scalar = callDual(held, arguments, count, result);
    if (scalar.isValid()) assignFastScalarToVariable(result, scalar);
    return result;
}

Variable OstrelScript::invokeCallable(const Variable& callable, const std::vector<Variable>& arguments) {
    return invokeCallableFast(callable, arguments.data(), arguments.size());
}

Variable OstrelScript::callCallable(const Variable& callable, const std::vector<Variable>& arguments) {
    if (!callable.isFunction()) throw std::runtime_error("callCallable: value is not a function");
    return invokeCallable(callable, arguments);
}

FastScalarValue OstrelScript::callDual(const Variable& callable, const Variable* arguments, std::size_t count,
                                       Variable& boxed) {
    if (!callable.isFunction())
        throw std::runtime_error("Attempted to call a non-function value of type " + typeName(callable.type));
    ScriptCallable* const function = callable.asFunction().get();
    if (function == nullptr) throw std::runtime_error("Attempted to call an invalid function value");
    return callFunction(*function, arguments, count, boxed);
}

FastScalarValue OstrelScript::callFunction(ScriptCallable& function, const Variable* arguments, std::size_t count,
                                           Variable& boxed) {
    checkNativeStack();
    const DepthGuard depth(callDepth_);
    if (!function.isNative) {
        if (!function.isCoroutine) return callScript(function, arguments, count, boxed);
        startCoroutine(Ref<ScriptCallable>::of(function), arguments, count);
        return makeFastScalarNil();
    }

    if (function.builtinId != BuiltinId::None) {
        const FastScalarValue scalar = tryEvaluateNativeBuiltinScalar(function.builtinId, arguments, count);
        if (scalar.isValid()) return scalar;
    }
    boxed = function.libraryFunction != nullptr
                ? function.libraryFunction(*this, arguments, count)
                : function.nativeFunction(std::vector<Variable>(arguments, arguments + count));
    if (shouldAbortForSoftRaisedError()) boxed.setNil();
    return {};
}

// ---------------------------------------------------------------------------------------------------------------------
// Script functions
// ---------------------------------------------------------------------------------------------------------------------

void OstrelScript::bindParameters(const ScriptCallable& callable, const Variable* arguments, std::size_t count) {
    const std::size_t named = callable.parameters.size();
    for (std::size_t i = 0; i < named; ++i) {
        Binding& parameter = bindInFrame(callable.parameters[i]);
        if (i < count) parameter.value = arguments[i];
    }
    if (!callable.isVariadic) return;
    std::vector<Variable>& rest = varargs_.emplace_back();
    if (count > named) rest.assign(arguments + named, arguments + count);
}

/// A chunk takes no arguments, and it belongs to the native scope in which it runs first.
void OstrelScript::enterLoadedChunk(ScriptCallable& chunk, std::size_t argumentCount) const {
    if (argumentCount > 0) throw std::runtime_error("Loaded script chunks do not accept call arguments");
    if (!chunk.hasRun) chunk.nativeScopeIndex = blockDepth_;
    chunk.hasRun = true;
}

FastScalarValue OstrelScript::callScript(ScriptCallable& callable, const Variable* arguments, std::size_t count,
                                         Variable& boxed) {
    if (callable.isLoadedChunk) enterLoadedChunk(callable, count);

    const CallGuard guard(*this, callable);
    bindParameters(callable, arguments, count);
    return runCallable(callable, boxed);
}

FastScalarValue OstrelScript::callBound(const ScriptCallable& callable, std::size_t base, Variable& boxed) {
    checkNativeStack();
    const DepthGuard depth(callDepth_);
    const CallGuard guard(*this, callable, base);
    for (std::size_t i = 0; i < callable.parameters.size(); ++i)
        nameInFrame(bindings_[base + i], callable.parameters[i]);
    return runCallable(callable, boxed);
}

FastScalarValue OstrelScript::runCallable(const ScriptCallable& callable, Variable& boxed) {
    FastScalarValue scalar;
    if (callable.fastBody != FastBody::None) {
        blockDepth_ += callable.runsDeeper ? 1 : 0;
        scalar = runFastBody(callable, boxed);
    } else {
        BlockSignal signal;
        if (callable.program) {
            executeFunctionChunk(callable, signal, boxed);
        } else {
            ++blockDepth_;
            std::size_t line = 0;
            boxed = executeParsedBlock(*callable.body, line, signal);
        }
        if (pendingCoroutineException_) rethrowPendingCoroutineException();
        if (signal.kind == SignalKind::Break) throw std::runtime_error(strayBreakMessage);
        if (signal.kind != SignalKind::Return) boxed.setNil();
    }
    if (!shouldAbortForSoftRaisedError()) return scalar;
    boxed.setNil();
    return {};
}

bool OstrelScript::isErrorFunction() const {
    const Variable* function = resolveVariablePtr(errorName_);
    return function != nullptr && function->isFunction() && function->asFunction()->builtinId == BuiltinId::Error;
}

FastScalarValue OstrelScript::runFastBody(const ScriptCallable& callable, Variable& boxed) {
    try {
        if (callable.fastBody == FastBody::GuardedReturn) {
            setCurrentLine(*callable.guardLine);
            countStep();
            const bool failed = evaluateCondition(*callable.guardLine, "if");
            if (shouldAbortForSoftRaisedError()) return makeFastScalarNil();
            if (failed) {
                setCurrentLine(*callable.errorLine);
                if (isErrorFunction())
                    raiseError(callable.guardMessage);
                else
                    executeExpressionStatement(*callable.errorLine);
                if (shouldAbortForSoftRaisedError()) return makeFastScalarNil();
            }
        }
        setCurrentLine(*callable.returnLine);
        countStep();
        const LinePlan& plan = *callable.returnLine->plan;
        // What a function with `...` gives is a value, never a scalar: in a condition its 0 is true.
        if (plan.values.size() == 1 && plan.values[0].isValid() && !callable.isVariadic)
            return evaluateFastDual(plan.values[0], boxed);
        evaluateReturn(*callable.returnLine, boxed);
        return {};
    } catch (const std::exception&) {
        rethrowWithPosition();
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Protected calls
// ---------------------------------------------------------------------------------------------------------------------

Variable OstrelScript::pcallFunctionFast(const Variable* arguments, std::size_t count) {
    if (count == 0) throw std::runtime_error("pcall requires a callable value");
    const std::size_t depth = callDepth_;
    const StackGuard protection(protectedDepths_);
    protectedDepths_.push_back(depth);

    const auto isCaughtHere = [this, depth] { return softErrorPending_ && softErrorDepth_ == depth; };
    const auto failure = [this, &isCaughtHere](std::string message) {
        if (isCaughtHere()) {
            message = std::move(softErrorMessage_); // it was there first
            clearSoftRaisedError();
        }
        return makeMulti({false, Variable(std::move(message))});
    };
    try {
        Variable result = invokeCallableFast(arguments[0], arguments + 1, count - 1);
        if (isCaughtHere()) return failure({});
        std::vector<Variable> values;
        if (result.isMulti()) {
            const std::vector<Variable>& results = result.asMulti()->values;
            values.reserve(1 + results.size());
            values.emplace_back(true);
            values.insert(values.end(), results.begin(), results.end());
        } else {
            values.reserve(2);
            values.emplace_back(true);
            values.push_back(std::move(result));
        }
        return makeMulti(std::move(values));
    } catch (const std::exception& error) {
        return failure(error.what());
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Making functions
// ---------------------------------------------------------------------------------------------------------------------

Variable OstrelScript::makeNativeCallable(HostFunction function, std::string name) {
    auto callable = makeRef<ScriptCallable>();
    callable->isNative = true;
    callable->nativeFunction = std::move(function);
    callable->name = std::move(name);
    return Variable(std::move(callable));
}

Variable OstrelScript::makeLibraryCallable(LibraryFunction function, std::string name) {
    auto callable = makeRef<ScriptCallable>();
    callable->isNative = true;
    callable->libraryFunction = function;
    callable->builtinId = builtinIdFromName(name);
    callable->name = std::move(name);
    return Variable(std::move(callable));
}

void OstrelScript::pushFunction(const std::string& name, LibraryFunction function) {
    pushVariable(name, makeLibraryCallable(function, name));
}
