// Jumps: from anywhere to a labelled `nest` block.
//
// `jumpTo` only notes the label. At the next boundary between two instructions the executor looks for it: in the chunk
// that runs, then in the chunks around it, which are left one after the other until the one with the label is reached,
// and at last among the labels of the functions that were declared. A function that isn't running is entered at the
// block and runs to its chunk's end; then the script goes on behind the statement that asked for the jump.

#include "script/block_faults.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"

#include <utility>
#include <vector>

void OstrelScript::requestJump(std::string label) {
    pendingJump_ = true;
    pendingJumpLabel_ = std::move(label);
}

void OstrelScript::clearPendingJump() {
    pendingJump_ = false;
    pendingJumpLabel_.clear();
}

namespace {

/// The instructions of a chunk, from the first up to but without the second; none if the chunk is at fault.
std::pair<std::size_t, std::size_t> instructionsOf(const BytecodeProgram& program, unsigned chunk) {
    if (chunk >= program.chunks.size()) return {};
    const std::size_t first = program.chunks[chunk].firstInstruction;
    const std::size_t end = first + program.chunks[chunk].instructionCount;
    if (end > program.instructions.size()) return {};
    return {first, end};
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

/// Enters the labels of a function's body and of the blocks in it, in the order of the source: of two blocks with one
/// label the later wins, however deep each stands.
void OstrelScript::registerCallableNestLabels(const Ref<ScriptCallable>& callable) {
    const BytecodeProgram& program = *callable->program;
    if (program.nestBlocks.empty()) return;
    const auto registerLabel = [&](std::uint32_t index) {
        if (index >= program.nestBlocks.size() || program.nestBlocks[index].label.empty()) return;
        const BytecodeNestBlock& nest = program.nestBlocks[index];
        if (!callable->alive) callable->alive = std::make_shared<const bool>(true);
        jumpTargets_[nest.label] = {callable.get(), callable->alive, callable->program, nest.parentChunk, index};
    };
    std::vector<bool> seen(program.chunks.size());            // a corrupt file may hold a chunk inside itself
    std::vector<std::pair<std::size_t, std::size_t>> waiting; // instructions of the chunks that the walk stands in
    const auto enter = [&](unsigned chunk) {
        if (chunk >= seen.size() || seen[chunk]) return;
        seen[chunk] = true;
        waiting.push_back(instructionsOf(program, chunk));
    };
    enter(callable->chunkIndex);
    while (!waiting.empty()) {
        auto& [next, end] = waiting.back();
        if (next == end) {
            waiting.pop_back();
            continue;
        }
        const Instruction& instruction = program.instructions[next++];
        if (static_cast<Opcode>(instruction.opcode) == Opcode::Nest) registerLabel(instruction.operand);
        const std::vector<unsigned> bodies = bodiesOf(program, instruction);
        for (auto body = bodies.rbegin(); body != bodies.rend(); ++body) enter(*body); // the first is walked first
    }
}

bool OstrelScript::findNestLabelInBytecodeChunk(const BytecodeProgram& program, unsigned chunk,
                                                const std::string& label, std::size_t& instruction) {
    const auto [first, end] = instructionsOf(program, chunk);
    for (std::size_t i = first; i < end; ++i) {
        if (!isNestWithLabel(program, program.instructions[i], label)) continue;
        instruction = i;
        return true;
    }
    return false;
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
    bindParameters(*callable, nullptr, 0);
    BlockSignal signal;
    Variable unwanted;
    executeBytecodeChunk(program, target.chunk, signal, unwanted, start);
    rethrowPendingCoroutineException();
    if (signal.kind == SignalKind::Break) throw std::runtime_error(strayBreakMessage);
    return true;
}
