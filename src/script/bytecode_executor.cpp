// The executor of compiled programs.
//
// A chunk is a run of instructions; an instruction names a line or a block structure, and blocks are chunks again. The
// executor finds what runs next; what a statement does, it shares with the walker over parsed lines. A program may come
// from a file, and a file may hold anything, so every index is checked where it is used. Such a fault is no script
// error: it is a BytecodeStructureError and reaches whoever runs the program as it is.

#include "script/block_faults.h"
#include "script/for_loop.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"
#include "script/position_guard.h"
#include "script/scope_guard.h"

#include <algorithm>
#include <utility>

namespace {

/// What a chunk may hold that runs inline: plain statements, and blocks whose bodies may run inline themselves.
bool mayRunInline(Opcode opcode) {
    switch (opcode) {
    case Opcode::Line:
    case Opcode::AssignFast:
    case Opcode::If:
    case Opcode::While:
    case Opcode::Repeat:
    case Opcode::ForNumeric:
    case Opcode::Break: return true;
    default: return false;
    }
}

} // namespace

class ChunkRun {
public:
    ChunkRun(OstrelScript& engine, const std::shared_ptr<BytecodeProgram>& program, BlockSignal& signal,
             Variable& result)
        : engine_(engine), shared_(program), program_(*program), signal_(signal), result_(result) {}

    /// Runs a chunk and all the blocks in it. Only a `return` touches the result.
    void run(unsigned chunkIndex, std::size_t startInstruction) {
        try {
            runChunk(chunkIndex, startInstruction);
        } catch (const std::exception&) {
            engine_.rethrowWithPosition();
        }
    }

    /// Runs the body of a function whose call puts every scope back.
    void runFunction(unsigned chunkIndex) {
        try {
            if (chunkIndex >= program_.chunks.size()) throw BytecodeStructureError("Invalid bytecode chunk index");
            const BytecodeChunk& chunk = program_.chunks[chunkIndex];
            engine_.blockDepth_ += chunk.isNested ? 1 : 0;
            if (chunk.hasLocalDeclarations) engine_.pushBlockScope();
            checkRange(chunk);
            const ActiveChunkGuard active(engine_, program_, chunkIndex);
            runInstructions(chunkIndex, chunk.firstInstruction);
        } catch (const std::exception&) {
            engine_.rethrowWithPosition();
        }
    }

private:
    static std::size_t chunkEnd(const BytecodeChunk& chunk) {
        return static_cast<std::size_t>(chunk.firstInstruction) + chunk.instructionCount;
    }

    void checkRange(const BytecodeChunk& chunk) const {
        if (chunkEnd(chunk) > program_.instructions.size())
            throw BytecodeStructureError("Bytecode chunk range is out of bounds");
    }

    void runChunk(unsigned chunkIndex, std::size_t startInstruction = OstrelScript::chunkStart) {
        checkNativeStack();
        if (chunkIndex >= program_.chunks.size()) throw BytecodeStructureError("Invalid bytecode chunk index");
        const BytecodeChunk& chunk = program_.chunks[chunkIndex];
        const ScopeGuard scopes(engine_);
        const BlockDepthGuard depth(engine_, chunk.isNested ? 1 : 0);
        const bool inScope = engine_.blockScopes_ > engine_.blockScopeBase_;
        if (chunk.hasLocalDeclarations || inScope) engine_.pushBlockScope();
        checkRange(chunk);
        const ActiveChunkGuard active(engine_, program_, chunkIndex);
        const bool fromStart = startInstruction == OstrelScript::chunkStart;
        if (!fromStart && (startInstruction < chunk.firstInstruction || startInstruction > chunkEnd(chunk)))
            throw BytecodeStructureError("Bytecode jump target is outside the target chunk");
        runInstructions(chunkIndex, fromStart ? chunk.firstInstruction : startInstruction);
    }

    void runInstructions(unsigned chunkIndex, std::size_t start) {
        signal_.kind = SignalKind::None;
        const std::size_t end = chunkEnd(program_.chunks[chunkIndex]);
        std::size_t pc = start;
        while (true) {
            if (engine_.pendingJump_) {
                if (!followJump(chunkIndex, pc)) return;
                if (engine_.shouldAbortForSoftRaisedError()) return; // raised by a function that was entered
            }
            if (pc >= end) return;
            if (engine_.pendingCoroutineException_) engine_.rethrowPendingCoroutineException();
            const Instruction& instruction = program_.instructions[pc++];
            if (instruction.opcode > static_cast<std::uint8_t>(Opcode::Nest) && !inlined_) return;
            engine_.countStep();
            const auto opcode = static_cast<Opcode>(instruction.opcode);
            if (opcode <= Opcode::AssignFast)
                runStatement(enterLine(instruction.operand));
            else if (opcode == Opcode::If)
                runIf(at(program_.ifGroups, instruction.operand, "if-group"));
            else if (opcode == Opcode::Return && !inlined_)
                runReturn(instruction.operand);
            else
                runInstruction(opcode, instruction.operand);
            if (engine_.scheduledCoroutine_) engine_.serviceScheduledCoroutineTurnNoThrow();
            if (signal_.kind == SignalKind::Jump)
                signal_.kind = SignalKind::None; // a block was left for the sake of a jump: see whether it ends here
            else if (signal_.kind != SignalKind::None || engine_.shouldAbortForSoftRaisedError())
                return;
        }
    }

    /// Looks for the pending jump's label. True if the chunk goes on at `pc`, false if it must be left.
    bool followJump(unsigned chunkIndex, std::size_t& pc) {
        while (engine_.pendingJump_) {
            const std::string label = engine_.pendingJumpLabel_;
            if (OstrelScript::findNestLabelInBytecodeChunk(program_, chunkIndex, label, pc)) {
                engine_.clearPendingJump();
                return true;
            }
            if (engine_.activeBytecodeAncestorHasNestLabel(program_, chunkIndex, label)) {
                signal_.kind = SignalKind::Jump;
                return false;
            }
            engine_.clearPendingJump();
            if (!engine_.executeRegisteredJumpTarget(label))
                throw std::runtime_error("jumpTo target not found: " + label);
        }
        return true;
    }

    void runReturn(std::uint32_t operand) {
        engine_.evaluateReturn(enterLine(operand), result_);
        if (!engine_.shouldAbortForSoftRaisedError()) signal_.kind = SignalKind::Return;
    }

    /// The instructions that are rarer or do more; the loop runs the others itself.
    [[gnu::noinline]] void runInstruction(Opcode opcode, std::uint32_t operand) {
        if (inlined_ && !mayRunInline(opcode)) throw BytecodeStructureError("Unexpected non-inline opcode");
        switch (opcode) {
        case Opcode::Line:
        case Opcode::AssignFast:
        case Opcode::If:
        case Opcode::Return: break; // run by the caller
        case Opcode::While: runWhile(at(program_.whileLoops, operand, "while-loop")); break;
        case Opcode::Repeat: runRepeat(at(program_.repeatLoops, operand, "repeat-loop")); break;
        case Opcode::ForNumeric: runFor(at(program_.numericForLoops, operand, "numeric-for"), true); break;
        case Opcode::ForGeneric: runFor(at(program_.genericForLoops, operand, "generic-for"), false); break;
        case Opcode::Function: declare(at(program_.functions, operand, "function-declaration")); break;
        case Opcode::Break:
            enterLine(operand);
            signal_.kind = SignalKind::Break;
            break;
        case Opcode::Nest: {
            const BytecodeNestBlock& nest = at(program_.nestBlocks, operand, "nest-block");
            enterLine(nest.line);
            runBody(bodyOf(nest.bodyChunk));
            break;
        }
        }
    }

    /// The record under the index. The inline runner has its own name for the fault.
    template <typename Record>
    const Record& at(const std::vector<Record>& records, std::uint32_t index, const char* what) const {
        if (index >= records.size()) [[unlikely]]
            failIndex(what);
        return records[index];
    }

    [[noreturn, gnu::noinline]] void failIndex(const char* what) const {
        throw BytecodeStructureError(std::string(inlined_ ? "Inline bytecode " : "Bytecode ") + what +
                                     " index out of range");
    }

    [[noreturn, gnu::noinline]] static void failLine() {
        throw BytecodeStructureError("Bytecode line index out of range");
    }

    const ParsedScriptLine& enterLine(std::uint32_t index) {
        if (index >= program_.lines.size()) [[unlikely]]
            failLine();
        const ParsedScriptLine& line = program_.lines[index];
        engine_.setCurrentLine(line);
        return line;
    }

    void runStatement(const ParsedScriptLine& line) {
        if (!line.tokens.empty()) engine_.executeStatement(line);
    }

    // -----------------------------------------------------------------------------------------------------------------
    // Bodies
    // -----------------------------------------------------------------------------------------------------------------

    /// How a block's body runs: as a chunk with a scope of its own, inline, or plainly one level deeper.
    enum class BodyRoad : std::uint8_t { Chunk, Inline, Plain };

    /// A block's body, and how it runs where it stands. For a loop this holds in every round.
    struct Body {
        unsigned chunk;
        BodyRoad road;
    };

    Body bodyOf(std::uint32_t chunk) const {
        const bool plain = isPlain(chunk);
        if (plain && program_.chunks[chunk].isNested) return {chunk, BodyRoad::Plain}; // nested chunks never run inline
        const bool atGlobalLevel = engine_.blockScopes_ <= engine_.blockScopeBase_;
        if (atGlobalLevel && OstrelScript::isInlineEligible(program_, chunk)) return {chunk, BodyRoad::Inline};
        return {chunk, plain ? BodyRoad::Plain : BodyRoad::Chunk};
    }

    void runBody(const Body& body) {
        if (body.road == BodyRoad::Inline) {
            runInline(body.chunk);
            return;
        }
        const bool outer = std::exchange(inlined_, false);
        if (body.road == BodyRoad::Plain)
            runPlain(body.chunk);
        else
            runChunk(body.chunk);
        inlined_ = outer;
    }

    /// A plain chunk has no labels either, so nobody misses it among those that run.
    void runPlain(unsigned chunkIndex) {
        const BytecodeChunk& chunk = program_.chunks[chunkIndex];
        const BlockDepthGuard depth(engine_, chunk.isNested ? 1 : 0);
        runInstructions(chunkIndex, chunk.firstInstruction);
    }

    bool isPlain(unsigned chunkIndex) const {
        if (chunkIndex >= program_.chunks.size()) return false;
        if (program_.chunkShapes.size() < program_.chunks.size())
            program_.chunkShapes.resize(program_.chunks.size(), ChunkShape::Unknown);
        ChunkShape& shape = program_.chunkShapes[chunkIndex];
        if (shape == ChunkShape::Unknown) shape = shapeOf(program_.chunks[chunkIndex]);
        return shape == ChunkShape::Plain;
    }

    ChunkShape shapeOf(const BytecodeChunk& chunk) const {
        if (chunk.hasLocalDeclarations || chunkEnd(chunk) > program_.instructions.size()) return ChunkShape::General;
        const auto first = program_.instructions.begin() + chunk.firstInstruction;
        const bool allPlain =
            std::all_of(first, first + chunk.instructionCount,
                        [this](const Instruction& instruction) { return isPlainInstruction(instruction); });
        return allPlain ? ChunkShape::Plain : ChunkShape::General;
    }

    bool isPlainInstruction(const Instruction& instruction) const {
        const auto opcode = static_cast<Opcode>(instruction.opcode);
        if (opcode == Opcode::Return || opcode == Opcode::Break) return true;
        if (opcode != Opcode::Line && opcode != Opcode::AssignFast) return false;
        if (instruction.operand >= program_.lines.size()) return false;
        const LinePlan& plan = *program_.lines[instruction.operand].plan;
        if (plan.form == StatementForm::Call) return true;
        return plan.form != StatementForm::General && plan.scopeTarget == ScopeTarget::None &&
               plan.targets[0].name.explicitScope != ExplicitScope::Block;
    }

    /// Runs a body that needs no scope of its own without entering a chunk.
    void runInline(std::uint32_t chunk) {
        checkNativeStack();
        checkRange(program_.chunks[chunk]);
        const bool outer = std::exchange(inlined_, true);
        runInstructions(chunk, program_.chunks[chunk].firstInstruction);
        inlined_ = outer;
    }

    void runIf(const BytecodeIfGroup& group) {
        for (const BytecodeIfBranch& branch : group.branches) {
            const ParsedScriptLine& line = enterLine(branch.line);
            const char* const name = line.kind == LineKind::While ? "while" : "if";
            const bool taken = branch.isElse || engine_.evaluateCondition(line, name);
            if (engine_.shouldAbortForSoftRaisedError()) return;
            if (taken) {
                runBody(bodyOf(branch.bodyChunk));
                return;
            }
        }
    }

    void runWhile(const BytecodeWhileLoop& loop) {
        const Body body = bodyOf(loop.bodyChunk);
        while (true) {
            const ParsedScriptLine& line = enterLine(loop.line);
            engine_.countStep();
            if (!engine_.evaluateCondition(line, "while") || engine_.shouldAbortForSoftRaisedError()) return;
            runBody(body);
            if (engine_.endsLoop(signal_)) return;
        }
    }

    void runRepeat(const BytecodeRepeatLoop& loop) {
        const Body body = bodyOf(loop.bodyChunk);
        while (true) {
            runBody(body);
            if (engine_.endsLoop(signal_)) return;
            const ParsedScriptLine& line = enterLine(loop.line);
            engine_.countStep();
            if (engine_.evaluateCondition(line, "until") || engine_.shouldAbortForSoftRaisedError()) return;
        }
    }

    void runFor(const BytecodeForLoop& loop, bool isNumeric) {
        const ParsedScriptLine& line = enterLine(loop.line);
        const auto body = [this, body = bodyOf(loop.bodyChunk)] { runBody(body); };
        if (isNumeric)
            engine_.runNumericFor(line, signal_, body);
        else
            engine_.runGenericFor(line, signal_, body);
    }

    void declare(const BytecodeFunctionDecl& declaration) {
        const ParsedScriptLine& line = enterLine(declaration.line);
        auto callable = makeRef<ScriptCallable>();
        callable->program = shared_;
        callable->chunkIndex = declaration.bodyChunk;
        callable->sourceDirectory = declaration.sourceDirectory;
        callable->sourcePath = declaration.sourcePath;
        if (declaration.bodyStartLine <= declaration.bodyEndLine && declaration.bodyEndLine < program_.lines.size()) {
            const ParsedScriptLine* const first = program_.lines.data() + declaration.bodyStartLine;
            const ParsedScriptLine* const last = program_.lines.data() + declaration.bodyEndLine;
            engine_.prepareFastCallableBody(*callable, first, last);
            if (declaration.bodyChunk < program_.chunks.size())
                callable->runsDeeper = program_.chunks[declaration.bodyChunk].isNested;
            if (line.kind == LineKind::DecayFunction) callable->body = OstrelScript::copyBody(first, last);
        }
        engine_.declareFunction(line, callable);
        engine_.registerCallableNestLabels(callable);
    }

    OstrelScript& engine_;
    const std::shared_ptr<BytecodeProgram>& shared_;
    BytecodeProgram& program_;
    BlockSignal& signal_;
    Variable& result_;
    bool inlined_ = false;
};

/// A chunk may run inline if it declares no locals and holds nothing but plain statements and blocks that may, too.
bool OstrelScript::isInlineEligible(BytecodeProgram& program, unsigned chunkIndex) {
    if (chunkIndex >= program.chunks.size() || program.chunks[chunkIndex].isNested) return false;
    if (program.inlineEligibility.size() < program.chunks.size())
        program.inlineEligibility.resize(program.chunks.size(), InlineEligibility::Unknown);
    const InlineEligibility known = program.inlineEligibility[chunkIndex];
    if (known != InlineEligibility::Unknown) return known == InlineEligibility::Yes;

    checkNativeStack();
    program.inlineEligibility[chunkIndex] = InlineEligibility::No; // also the answer for a chunk inside itself
    const BytecodeChunk& chunk = program.chunks[chunkIndex];
    if (chunk.hasLocalDeclarations || chunk.instructionCount == 0) return false;
    const std::size_t end = static_cast<std::size_t>(chunk.firstInstruction) + chunk.instructionCount;
    if (end > program.instructions.size()) return false;

    const auto bodyFits = [&program](const auto& loops, std::uint32_t index) {
        return index < loops.size() && isInlineEligible(program, loops[index].bodyChunk);
    };
    const auto fits = [&program, &bodyFits](const Instruction& instruction) {
        const auto opcode = static_cast<Opcode>(instruction.opcode);
        switch (opcode) {
        case Opcode::If: {
            if (instruction.operand >= program.ifGroups.size()) return false;
            const auto& branches = program.ifGroups[instruction.operand].branches;
            return std::all_of(branches.begin(), branches.end(), [&program](const BytecodeIfBranch& branch) {
                return isInlineEligible(program, branch.bodyChunk);
            });
        }
        case Opcode::While: return bodyFits(program.whileLoops, instruction.operand);
        case Opcode::Repeat: return bodyFits(program.repeatLoops, instruction.operand);
        case Opcode::ForNumeric: return bodyFits(program.numericForLoops, instruction.operand);
        default: return mayRunInline(opcode);
        }
    };
    for (std::size_t i = chunk.firstInstruction; i < end; ++i)
        if (!fits(program.instructions[i])) return false;
    program.inlineEligibility[chunkIndex] = InlineEligibility::Yes;
    return true;
}

void OstrelScript::executeBytecodeChunk(const std::shared_ptr<BytecodeProgram>& program, unsigned chunk,
                                        BlockSignal& signal, Variable& result, std::size_t startInstruction) {
    if (!program) throw BytecodeStructureError("Invalid bytecode chunk index");
    ChunkRun(*this, program, signal, result).run(chunk, startInstruction);
}

void OstrelScript::executeFunctionChunk(const ScriptCallable& callable, BlockSignal& signal, Variable& result) {
    ChunkRun(*this, callable.program, signal, result).runFunction(callable.chunkIndex);
}

Variable OstrelScript::runBytecodeProgram(const std::shared_ptr<BytecodeProgram>& program) {
    const DepthGuard depth(runDepth_);
    const PositionGuard position(*this);
    const SourceGuard source(*this, program->sourcePath, program->sourceDirectory);
    BlockSignal signal;
    Variable result;
    executeBytecodeChunk(program, 0, signal, result);
    if (signal.kind == SignalKind::Break) throwError(strayBreakMessage, "break");
    rethrowPendingCoroutineException();
    // What the outermost script declared `external` becomes global when it has ended well.
    if (runDepth_ == 1 && !softErrorPending_) commitExternalScopeToGlobal();
    return result;
}

Variable OstrelScript::runBytecode(BytecodeProgram program) {
    return runBytecodeProgram(std::make_shared<BytecodeProgram>(std::move(program)));
}
