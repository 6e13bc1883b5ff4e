// The walker over parsed lines.
//
// It runs what has lines but no compiled program: bodies of functions that were declared on its own road, and texts
// given to `executeBlock`. It finds the next line through the block links; what a statement does, it shares with the
// executor of compiled programs.

#include "script/block_faults.h"
#include "script/for_loop.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"
#include "script/position_guard.h"
#include "script/scope_guard.h"

class ParsedRun {
public:
    ParsedRun(OstrelScript& engine, const std::vector<ParsedScriptLine>& lines, BlockSignal& signal, Variable& result)
        : engine_(engine), lines_(lines), signal_(signal), result_(result) {}

    /// Runs the lines from `first` up to but without `last`. Only a `return` touches the result.
    void run(std::size_t first, std::size_t last) {
        checkNativeStack();
        const ScopeGuard scopes(engine_);
        engine_.pushBlockScope();
        signal_.kind = SignalKind::None;
        try {
            position_ = first;
            while (position_ < last) {
                if (!isStatement(lines_[position_])) {
                    ++position_;
                    continue;
                }
                engine_.rethrowPendingCoroutineException();
                step();
                if (engine_.scheduledCoroutine_) engine_.serviceScheduledCoroutineTurnNoThrow();
                if (engine_.pendingJump_) signal_.kind = SignalKind::Jump;
                if (signal_.kind != SignalKind::None || engine_.shouldAbortForSoftRaisedError()) return;
            }
        } catch (const std::exception&) {
            engine_.rethrowWithPosition();
        }
    }

private:
    /// False for blank lines and for the strays of blocks. They are passed over, and no coroutine has a turn for them.
    static bool isStatement(const ParsedScriptLine& line) {
        switch (line.kind) {
        case LineKind::Blank:
        case LineKind::Elseif:
        case LineKind::Else:
        case LineKind::End:
        case LineKind::Until: return false;
        default: return true;
        }
    }

    /// Runs the statement at the position and leaves the position behind it.
    void step() {
        const ParsedScriptLine& line = lines_[position_];
        engine_.setCurrentLine(line);
        engine_.countStep();
        switch (line.kind) {
        case LineKind::If: runIf(); break;
        case LineKind::While: runWhile(line); break;
        case LineKind::Repeat: runRepeat(line); break;
        case LineKind::For: runFor(line); break;
        case LineKind::Nest: {
            const std::size_t first = position_ + 1;
            position_ = endOf(line) + 1;
            runBody(first, position_ - 1);
            break;
        }
        case LineKind::Function:
        case LineKind::DecayFunction:
        case LineKind::NativeFunction:
        case LineKind::LocalFunction: {
            const std::size_t declaration = position_;
            position_ = endOf(line) + 1;
            engine_.declareParsedFunction(lines_, declaration);
            break;
        }
        case LineKind::Return:
            ++position_;
            engine_.evaluateReturn(line, result_);
            if (!engine_.shouldAbortForSoftRaisedError()) signal_.kind = SignalKind::Return;
            break;
        case LineKind::Break:
            ++position_;
            signal_.kind = SignalKind::Break;
            break;
        case LineKind::Plain:
            ++position_;
            engine_.executeStatement(line);
            break;
        default: ++position_; break; // no statement
        }
    }

    std::size_t endOf(const ParsedScriptLine& line) {
        if (line.matchingEnd >= lines_.size()) engine_.throwError(missingEndMessage(line.kind), line.tokens[0]);
        return line.matchingEnd;
    }

    std::size_t untilOf(const ParsedScriptLine& line) {
        if (line.matchingEnd >= lines_.size())
            engine_.throwError("repeat block did not terminate at matching until", line.tokens[0]);
        return line.matchingEnd;
    }

    void runBody(std::size_t first, std::size_t last) {
        const BlockDepthGuard depth(engine_, 1);
        ParsedRun(engine_, lines_, signal_, result_).run(first, last);
    }

    void runIf() {
        std::size_t branch = position_;
        const std::size_t end = endOf(lines_[branch]);
        position_ = end + 1;
        while (true) {
            const ParsedScriptLine& line = lines_[branch];
            engine_.setCurrentLine(line);
            const bool taken = line.kind == LineKind::Else || engine_.evaluateCondition(line, "if");
            if (engine_.shouldAbortForSoftRaisedError()) return;
            const std::size_t next = line.nextBranch < lines_.size() ? line.nextBranch : end;
            if (taken) runBody(branch + 1, next);
            if (taken || next == end) return;
            branch = next;
        }
    }

    void runWhile(const ParsedScriptLine& line) {
        const std::size_t first = position_ + 1;
        const std::size_t end = endOf(line);
        position_ = end + 1;
        while (true) {
            engine_.setCurrentLine(line);
            engine_.countStep();
            if (!engine_.evaluateCondition(line, "while") || engine_.shouldAbortForSoftRaisedError()) return;
            runBody(first, end);
            if (engine_.endsLoop(signal_)) return;
        }
    }

    void runRepeat(const ParsedScriptLine& line) {
        const std::size_t first = position_ + 1;
        const std::size_t end = untilOf(line);
        const ParsedScriptLine& until = lines_[end];
        position_ = end + 1;
        while (true) {
            runBody(first, end);
            if (engine_.endsLoop(signal_)) return;
            engine_.setCurrentLine(until);
            engine_.countStep();
            if (engine_.evaluateCondition(until, "until") || engine_.shouldAbortForSoftRaisedError()) return;
        }
    }

    void runFor(const ParsedScriptLine& line) {
        const std::size_t first = position_ + 1;
        const std::size_t end = endOf(line);
        position_ = end + 1;
        const auto body = [this, first, end] { runBody(first, end); };
        if (line.plan->isNumericFor)
            engine_.runNumericFor(line, signal_, body);
        else
            engine_.runGenericFor(line, signal_, body);
    }

    OstrelScript& engine_;
    const std::vector<ParsedScriptLine>& lines_;
    BlockSignal& signal_;
    Variable& result_;
    std::size_t position_ = 0;
};

std::shared_ptr<const std::vector<ParsedScriptLine>> OstrelScript::copyBody(const ParsedScriptLine* first,
                                                                            const ParsedScriptLine* last) {
    auto body = std::make_shared<std::vector<ParsedScriptLine>>(first, last);
    linkBlocks(*body); // links count from the body's first line
    return body;
}

void OstrelScript::declareParsedFunction(const std::vector<ParsedScriptLine>& lines, std::size_t index) {
    const ParsedScriptLine& line = lines[index];
    auto callable = makeRef<ScriptCallable>();
    callable->body = copyBody(lines.data() + index + 1, lines.data() + line.matchingEnd);
    prepareFastCallableBody(*callable, callable->body->data(), callable->body->data() + callable->body->size());
    callable->sourcePath = currentSourcePath();
    callable->sourceDirectory = currentSourceDirectory();
    declareFunction(line, std::move(callable));
}

Variable OstrelScript::executeParsedBlock(const std::vector<ParsedScriptLine>& lines, std::size_t& position,
                                          BlockSignal& signal) {
    Variable result;
    ParsedRun(*this, lines, signal, result).run(position, lines.size());
    position = lines.size();
    return result;
}

Variable OstrelScript::executeBlock(const std::vector<std::string>& lines, std::size_t& position, BlockSignal& signal) {
    std::string source;
    for (const std::string& line : lines) source += line + "\n";
    if (!source.empty()) source.pop_back();
    const PositionGuard guard(*this);
    // Functions that the text declares copy their lines, so the lines need not outlive the run.
    const std::vector<ParsedScriptLine> parsed = parseLines(source);
    return executeParsedBlock(parsed, position, signal);
}
