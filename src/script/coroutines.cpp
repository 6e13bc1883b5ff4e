// Coroutines: decay functions that advance beside the main line.
//
// There is no thread and no timer. Each walker runs a turn after each of its statements, and a turn is one ordinary
// statement of the coroutine; blocks and loops around it cost nothing. At most one coroutine is scheduled: starting
// another one replaces it. An error in a turn is kept and thrown on the main line, at its next statement.

#include "script/coroutine.h"

#include "script/block_faults.h"
#include "script/error_report.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"

#include <utility>

/// Runs one turn of a coroutine. Its execution state has changed places with the main line's.
class CoroutineRun {
public:
    CoroutineRun(OstrelScript& engine, CoroutineState& state)
        : engine_(engine), state_(state), lines_(*state.callable->body) {}

    /// True if the coroutine has finished.
    bool turn() {
        while (!state_.frames.empty()) {
            engine_.blockDepth_ = top().savedBlockDepth;
            engine_.countStep();
            const bool statementRan = step();
            if (engine_.shouldAbortForSoftRaisedError()) state_.frames.clear();
            if (statementRan) break;
        }
        return state_.frames.empty();
    }

    void pushBlock(std::size_t first, std::size_t end) {
        CoroutineFrame frame = newFrame(CoroutineFrame::Kind::Block);
        frame.position = first;
        frame.end = end;
        frame.savedBlockDepth = engine_.blockDepth_ + 1;
        state_.frames.push_back(std::move(frame));
        engine_.pushBlockScope();
    }

private:
    CoroutineFrame& top() { return state_.frames.back(); }

    CoroutineFrame newFrame(CoroutineFrame::Kind kind) const {
        CoroutineFrame frame;
        frame.kind = kind;
        frame.bindings = engine_.bindings_.size();
        frame.blocks = engine_.blockScopes_;
        frame.scopeBase = engine_.blockScopeBase_;
        frame.savedBlockDepth = engine_.blockDepth_;
        return frame;
    }

    void popFrame() {
        const CoroutineFrame& frame = top();
        engine_.bindings_.popTo(frame.bindings);
        engine_.blockScopes_ = frame.blocks;
        engine_.blockScopeBase_ = frame.scopeBase;
        state_.frames.pop_back();
    }

    const ParsedScriptLine& lineAt(std::size_t index) const {
        if (index >= lines_.size()) throw std::runtime_error("Coroutine line index out of range");
        return lines_[index];
    }

    const ParsedScriptLine& enterLine(std::size_t index) {
        const ParsedScriptLine& line = lineAt(index);
        engine_.setCurrentLine(line);
        return line;
    }

    /// Moves on by one step; true if that was an ordinary statement.
    bool step() {
        switch (top().kind) {
        case CoroutineFrame::Kind::Block: return stepBlock();
        case CoroutineFrame::Kind::While: stepWhile(); return false;
        case CoroutineFrame::Kind::Repeat: stepRepeat(); return false;
        case CoroutineFrame::Kind::NumericFor: stepNumericFor(); return false;
        case CoroutineFrame::Kind::GenericFor: stepGenericFor(); return false;
        }
        return false;
    }

    bool stepBlock() {
        CoroutineFrame& frame = top();
        if (frame.position >= frame.end) {
            popFrame();
            return false;
        }
        const std::size_t at = frame.position;
        const ParsedScriptLine& line = lineAt(at);
        if (line.tokens.empty()) {
            ++frame.position;
            return false;
        }
        engine_.setCurrentLine(line);
        switch (line.kind) {
        case LineKind::If: stepIf(at); return false;
        case LineKind::While: enterLoop(CoroutineFrame::Kind::While, at, at); return false;
        case LineKind::Repeat: enterLoop(CoroutineFrame::Kind::Repeat, at, line.matchingEnd); return false;
        case LineKind::For:
            enterLoop(line.plan->isNumericFor ? CoroutineFrame::Kind::NumericFor : CoroutineFrame::Kind::GenericFor, at,
                      at);
            return false;
        case LineKind::Nest: {
            const std::size_t end = endOf(at);
            frame.position = end + 1;
            pushBlock(at + 1, end);
            return false;
        }
        case LineKind::Function:
        case LineKind::DecayFunction:
        case LineKind::NativeFunction:
        case LineKind::LocalFunction:
            frame.position = endOf(at) + 1;
            engine_.declareParsedFunction(lines_, at);
            return false;
        case LineKind::Return: state_.frames.clear(); return true;
        case LineKind::Break: leaveLoop(); return true;
        case LineKind::Elseif:
        case LineKind::Else:
        case LineKind::End:
        case LineKind::Until: ++frame.position; return false; // strays
        default:
            ++frame.position;
            engine_.executeStatement(line);
            return true;
        }
    }

    std::size_t endOf(std::size_t index) {
        const ParsedScriptLine& line = lineAt(index);
        if (line.matchingEnd >= lines_.size()) engine_.throwError(missingEndMessage(line.kind), line.tokens[0]);
        return line.matchingEnd;
    }

    void stepIf(std::size_t index) {
        const std::size_t end = endOf(index);
        top().position = end + 1;
        std::size_t branch = index;
        while (true) {
            const ParsedScriptLine& line = enterLine(branch);
            const bool taken = line.kind == LineKind::Else || engine_.evaluateCondition(line, "if");
            if (engine_.shouldAbortForSoftRaisedError()) return;
            const std::size_t next = line.nextBranch < lines_.size() ? line.nextBranch : end;
            if (taken) pushBlock(branch + 1, next);
            if (taken || next == end) return;
            branch = next;
        }
    }

    void leaveLoop() {
        while (!state_.frames.empty() && top().kind == CoroutineFrame::Kind::Block) popFrame();
        if (state_.frames.empty()) throw std::runtime_error(strayBreakMessage);
        popFrame();
    }

    /// Stands the coroutine in front of a loop; `condition` is the line that decides about another round.
    void enterLoop(CoroutineFrame::Kind kind, std::size_t header, std::size_t condition) {
        const std::size_t end = endOf(header);
        top().position = end + 1;
        CoroutineFrame frame = newFrame(kind);
        frame.line = condition;
        frame.bodyStart = header + 1;
        frame.bodyEnd = end;
        state_.frames.push_back(std::move(frame));
    }

    void runBody() {
        top().started = true;
        pushBlock(top().bodyStart, top().bodyEnd);
    }

    void stepWhile() {
        if (engine_.evaluateCondition(enterLine(top().line), "while"))
            runBody();
        else
            popFrame();
    }

    void stepRepeat() {
        if (top().started && engine_.evaluateCondition(enterLine(top().line), "until"))
            popFrame();
        else
            runBody();
    }

    void stepNumericFor() {
        const ParsedScriptLine& line = enterLine(top().line);
        if (!top().started) {
            top().numeric = engine_.readNumericLoop(line);
            if (engine_.shouldAbortForSoftRaisedError()) return;
            openLoopFrame(line);
        } else {
            top().numeric.current += top().numeric.step;
        }
        if (top().variables.empty()) throw std::runtime_error("numeric for loop scope is missing");
        if (top().numeric.isOver()) {
            popFrame();
            return;
        }
        top().variables[0]->value.setInt(static_cast<int>(top().numeric.current));
        runBody();
    }

    void stepGenericFor() {
        const ParsedScriptLine& line = enterLine(top().line);
        if (!top().started) {
            top().generic = engine_.readGenericLoop(line);
            if (engine_.shouldAbortForSoftRaisedError()) return;
            openLoopFrame(line);
        }
        if (line.plan->loopNames.empty())
            throw std::runtime_error("generic for loop requires at least one loop variable");
        if (top().variables.empty()) throw std::runtime_error("generic for loop scope is missing");
        if (top().cursor >= top().generic.entries.size()) {
            popFrame();
            return;
        }
        OstrelScript::assignLoopNames(top().variables, top().generic, top().cursor++);
        runBody();
    }

    void openLoopFrame(const ParsedScriptLine& line) {
        for (Name* name : line.plan->loopNames) top().variables.push_back(&engine_.bindInFrame(name));
    }

    OstrelScript& engine_;
    CoroutineState& state_;
    const std::vector<ParsedScriptLine>& lines_;
};

// ---------------------------------------------------------------------------------------------------------------------
// Starting and replacing
// ---------------------------------------------------------------------------------------------------------------------

std::shared_ptr<CoroutineState> OstrelScript::createCoroutineState(Ref<ScriptCallable> callable,
                                                                   const Variable* arguments, std::size_t count) {
    auto state = std::make_shared<CoroutineState>();
    state->callable = std::move(callable);
    const ScriptCallable& function = *state->callable;
    if (!function.body) throw BytecodeStructureError("Bytecode line index out of range");
    // The state is filled in its own place: for this moment it is the engine's, without a line of it running.
    const ExecutionExchange exchange(*this, state->execution);
    blockDepth_ = function.nativeScopeIndex;
    if (!function.sourcePath.empty()) sourcePath_ = &function.sourcePath;
    if (!function.sourceDirectory.empty()) sourceDirectory_ = &function.sourceDirectory;
    bindParameters(function, arguments, count);
    CoroutineRun(*this, *state).pushBlock(0, function.body->size());
    return state;
}

void OstrelScript::startCoroutine(Ref<ScriptCallable> callable, const Variable* arguments, std::size_t count) {
    std::shared_ptr<CoroutineState> state = createCoroutineState(std::move(callable), arguments, count);
    if (inCoroutineTurn_) {
        replacementCoroutine_ = std::move(state);
        coroutineReplaced_ = true;
        throw CoroutineTerminated();
    }
    scheduledCoroutine_ = std::move(state);
}

void OstrelScript::endScheduledCoroutine() {
    if (inCoroutineTurn_) coroutineReplaced_ = true;
    scheduledCoroutine_.reset();
    replacementCoroutine_.reset();
}

// ---------------------------------------------------------------------------------------------------------------------
// Turns
// ---------------------------------------------------------------------------------------------------------------------

void OstrelScript::serviceScheduledCoroutineTurnNoThrow() {
    if (inCoroutineTurn_ || !scheduledCoroutine_ || pendingCoroutineException_) return;
    try {
        serviceScheduledCoroutineTurn();
    } catch (const std::exception&) {
        if (!pendingCoroutineException_) pendingCoroutineException_ = std::current_exception();
    }
}

void OstrelScript::serviceScheduledCoroutineTurn() {
    const std::shared_ptr<CoroutineState> state = scheduledCoroutine_; // it may be replaced during its turn
    const auto drop = [this, &state] {
        if (scheduledCoroutine_ == state) scheduledCoroutine_.reset();
        coroutineReplaced_ = false;
        replacementCoroutine_.reset();
    };
    inCoroutineTurn_ = true;
    replacementCoroutine_.reset();
    bool finished = false;
    try {
        finished = runCoroutineTurn(*state);
        inCoroutineTurn_ = false;
    } catch (const CoroutineTerminated&) {
        inCoroutineTurn_ = false;
    } catch (...) {
        inCoroutineTurn_ = false;
        drop();
        throw;
    }
    if (coroutineReplaced_) {
        std::shared_ptr<CoroutineState> successor = std::move(replacementCoroutine_);
        drop();
        if (successor) scheduledCoroutine_ = std::move(successor);
    } else if (finished && scheduledCoroutine_ == state) {
        scheduledCoroutine_.reset();
    }
}

/// Runs the turn in the coroutine's own execution state; a fault is reported with its line.
bool OstrelScript::runCoroutineTurn(CoroutineState& state) {
    const ExecutionExchange exchange(*this, state.execution);
    try {
        return CoroutineRun(*this, state).turn();
    } catch (const BytecodeStructureError&) {
        throw;
    } catch (const std::exception& error) {
        if (isErrorReport(error.what())) throw;
        static const std::string unknownPath = "script";
        if (sourcePath_ == nullptr) sourcePath_ = &unknownPath;
        throwError(error.what(), lastTokenText());
    }
}

void OstrelScript::rethrowPendingCoroutineException() {
    if (pendingCoroutineException_) std::rethrow_exception(std::exchange(pendingCoroutineException_, nullptr));
}
