// Jumps: from anywhere to a labelled `nest` block.
//
// `jumpTo` only notes the label. At the next boundary between two instructions the executor looks for it: in the chunk
// that runs, then in the chunks around it, which are left one after the other until the one with the label is reached,
// and at last among the labels of the functions that were declared. A function that isn't running is entered at the
// block and runs to its chunk's end; then the script goes on behind the statement that asked for the jump.

#include "script/block_faults.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"

#include <algorithm>

void OstrelScript::requestJump(std::string label) {
    pendingJump_ = true;
    pendingJumpLabel_ = std::move(label);
}

void OstrelScript::clearPendingJump() {
    pendingJump_ = false;
    pendingJumpLabel_.clear();
}

namespace {

/// Calls `visit(instruction index, instruction)` for the instructions of a chunk; nothing if the chunk is at fault.
template <typename Visit> void visitInstructions(const BytecodeProgram& program, unsigned chunk, const Visit& visit) {
    if (chunk >= program.chunks.size()) return;
    const std::size_t first = program.chunks[chunk].firstInstruction;
    const std::size_t end = first + program.chunks[chunk].instructionCount;
    if (end > program.instructions.size()) return;
    for (std::size_t i = first; i < end; ++i) visit(i, program.instructions[i]);
}

/// The chunks of the blocks in a chunk, without those of functions.
std::vector<unsigned> bodiesOf(const BytecodeProgram& program, const Instruction& instruction) {
    const std::uint32_t index = instruction.operand;
    const auto bodyIn = [index](const auto& records) {
        return index < records.size() ? std::vector<unsigned>{records[index].bodyChunk} : std::vector<unsigned>{};
    };
    switch (static_cast<Opcode>(instruction.opcode)) {
    case Opcode::If: {
        std::vector<unsigned> bodies;
        if (index < program.ifGroups.size())
            for (const BytecodeIfBranch& branch : program.ifGroups[index].branches) bodies.push_back(branch.bodyChunk);
        return bodies;
    }
    case Opcode::While: return bodyIn(program.whileLoops);
    case Opcode::Repeat: return bodyIn(program.repeatLoops);
    case Opcode::ForNumeric: return bodyIn(program.numericForLoops);
    case Opcode::ForGeneric: return bodyIn(program.genericForLoops);
    case Opcode::Nest: return bodyIn(program.nestBlocks);
    default: return {};
    }
}

bool isNestWithLabel(const BytecodeProgram& program, const Instruction& instruction, const std::string& label) {
    return static_cast<Opcode>(instruction.opcode) == Opcode::Nest && instruction.operand < program.nestBlocks.size() &&
           program.nestBlocks[instruction.operand].label == label;
}

} // namespace

/// Enters the labels of a function's body and of the blocks in it. The last declaration of a label wins.
void OstrelScript::registerCallableNestLabels(const Ref<ScriptCallable>& callable) {
    const BytecodeProgram& program = *callable->program;
    if (program.nestBlocks.empty()) return;
    std::vector<unsigned> waiting{callable->chunkIndex};
    std::vector<bool> seen(program.chunks.size()); // a corrupt file may hold a chunk inside itself
    while (!waiting.empty()) {
        const unsigned chunk = waiting.back();
        waiting.pop_back();
        if (chunk >= seen.size() || seen[chunk]) continue;
        seen[chunk] = true;
        std::vector<unsigned> bodies;
        visitInstructions(program, chunk, [&](std::size_t, const Instruction& instruction) {
            for (const unsigned body : bodiesOf(program, instruction)) bodies.push_back(body);
            if (static_cast<Opcode>(instruction.opcode) != Opcode::Nest ||
                instruction.operand >= program.nestBlocks.size())
                return;
            const BytecodeNestBlock& nest = program.nestBlocks[instruction.operand];
            if (nest.label.empty()) return;
            if (!callable->alive) callable->alive = std::make_shared<const bool>(true);
            jumpTargets_[nest.label] = {callable.get(), callable->alive, callable->program, nest.parentChunk,
                                        instruction.operand};
        });
        waiting.insert(waiting.end(), bodies.rbegin(), bodies.rend()); // source order
    }
}

bool OstrelScript::findNestLabelInBytecodeChunk(const BytecodeProgram& program, unsigned chunk,
                                                const std::string& label, std::size_t& instruction) {
    bool found = false;
    visitInstructions(program, chunk, [&](std::size_t index, const Instruction& candidate) {
        if (found || !isNestWithLabel(program, candidate, label)) return;
        found = true;
        instruction = index;
    });
    return found;
}

bool OstrelScript::activeBytecodeAncestorHasNestLabel(const BytecodeProgram& program, unsigned chunk,
                                                      const std::string& label) const {
    bool skipped = false;
    std::size_t unused = 0;
    for (const ActiveChunk* active = activeChunk_; active != nullptr; active = active->outer) {
        if (!skipped && active->program == &program && active->chunk == chunk) {
            skipped = true;
            continue;
        }
        if (findNestLabelInBytecodeChunk(*active->program, active->chunk, label, unused)) return true;
    }
    return false;
}

/// Runs the tail of a function that isn't active, from its block on; false if there is no such label any more.
bool OstrelScript::executeRegisteredJumpTarget(const std::string& label) {
    const auto entry = jumpTargets_.find(label);
    if (entry == jumpTargets_.end()) return false;
    const JumpTarget target = entry->second;
    const Ref<ScriptCallable> callable =
        target.alive.expired() ? Ref<ScriptCallable>() : Ref<ScriptCallable>::of(*target.callable);
    const std::shared_ptr<BytecodeProgram> program = target.program.lock();
    std::size_t start = 0;
    if (!callable || !program || target.nest >= program->nestBlocks.size() ||
        !findNestLabelInBytecodeChunk(*program, target.chunk, label, start))
        return false;

    const CallGuard guard(*this, *callable);
    pushFrame();
    bindParameters(*callable, nullptr, 0);
    BlockSignal signal;
    Variable unwanted;
    executeBytecodeChunk(program, target.chunk, signal, unwanted, start);
    rethrowPendingCoroutineException();
    if (signal.kind == SignalKind::Break) throw std::runtime_error(strayBreakMessage);
    return true;
}
