// Compiling: parsed lines to the block index.
//
// A chunk takes its number when its compilation starts, so a parent has a lower number than its children; its
// instructions are laid down when it is finished, so they stand together and behind those of its children.

#include "script/block_faults.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"
#include "script/scope_guard.h"
#include "script/script_paths.h"

#include <algorithm>

namespace {

std::uint32_t narrow(std::size_t value) { return static_cast<std::uint32_t>(value); }

class ChunkCompiler {
public:
    ChunkCompiler(BytecodeProgram& program, const std::string& sourceDirectory)
        : program_(program), sourceDirectory_(sourceDirectory) {}

    /// Compiles the lines from `first` up to but without `end` into a chunk of its own and gives its number.
    std::uint32_t compile(std::size_t first, std::size_t end, bool isNested) {
        checkNativeStack();
        const std::uint32_t number = narrow(program_.chunks.size());
        program_.chunks.emplace_back().isNested = isNested;
        std::vector<Instruction> instructions;
        bool hasLocals = false;
        const std::size_t last = std::min(end, program_.lines.size());
        for (std::size_t i = first; i < last;) {
            const ParsedScriptLine& line = program_.lines[i];
            hasLocals =
                hasLocals || line.kind == LineKind::LocalFunction || line.plan->scopeTarget == ScopeTarget::Local;
            i = compileStatement(i, number, instructions);
        }
        // The children may have moved the table of chunks, so the chunk is found again by its number.
        BytecodeChunk& chunk = program_.chunks[number];
        chunk.firstInstruction = narrow(program_.instructions.size());
        chunk.instructionCount = narrow(instructions.size());
        chunk.hasLocalDeclarations = hasLocals;
        program_.instructions.insert(program_.instructions.end(), instructions.begin(), instructions.end());
        return number;
    }

private:
    static void emit(std::vector<Instruction>& instructions, Opcode opcode, std::size_t operand) {
        instructions.push_back({static_cast<std::uint8_t>(opcode), narrow(operand), 0});
    }

    std::size_t blockEnd(std::size_t line) const {
        const std::size_t end = program_.lines[line].matchingEnd;
        if (end >= program_.lines.size()) throw std::runtime_error(missingEndMessage(program_.lines[line].kind));
        return end;
    }

    std::uint32_t compileBody(std::size_t line, std::size_t end) { return compile(line + 1, end, true); }

    /// Compiles the statement at line `i`; gives the line behind it.
    std::size_t compileStatement(std::size_t i, std::uint32_t chunk, std::vector<Instruction>& instructions) {
        switch (program_.lines[i].kind) {
        case LineKind::Blank:
        case LineKind::Elseif: // reached directly, these are strays
        case LineKind::Else:
        case LineKind::End:
        case LineKind::Until: return i + 1;
        case LineKind::If: return compileIf(i, instructions);
        case LineKind::While: {
            const std::size_t end = blockEnd(i);
            program_.whileLoops.push_back({narrow(i), compileBody(i, end)});
            emit(instructions, Opcode::While, program_.whileLoops.size() - 1);
            return end + 1;
        }
        case LineKind::Repeat: {
            const std::size_t until = blockEnd(i);
            program_.repeatLoops.push_back({narrow(until), compileBody(i, until)});
            emit(instructions, Opcode::Repeat, program_.repeatLoops.size() - 1);
            return until + 1;
        }
        case LineKind::For: return compileFor(i, instructions);
        case LineKind::Function:
        case LineKind::DecayFunction:
        case LineKind::NativeFunction:
        case LineKind::LocalFunction: return compileFunction(i, instructions);
        case LineKind::Nest: return compileNest(i, chunk, instructions);
        case LineKind::Return: emit(instructions, Opcode::Return, i); return i + 1;
        case LineKind::Break: emit(instructions, Opcode::Break, i); return i + 1;
        case LineKind::Plain:
            emit(instructions, isFastAssignment(*program_.lines[i].plan) ? Opcode::AssignFast : Opcode::Line, i);
            return i + 1;
        }
        return i + 1;
    }

    static bool isFastAssignment(const LinePlan& plan) {
        return plan.isAssignment && plan.targets.size() == 1 && plan.targets[0].indexRanges.empty() &&
               plan.valueRanges.size() == 1 && plan.values[0].isValid() && !plan.values[0].givesValue;
    }

    std::size_t compileIf(std::size_t i, std::vector<Instruction>& instructions) {
        BytecodeIfGroup group;
        std::size_t branch = i;
        while (true) {
            if (branch >= program_.lines.size()) throw std::runtime_error("Invalid if-chain while compiling bytecode");
            const std::size_t next = program_.lines[branch].nextBranch;
            const bool isElse = program_.lines[branch].kind == LineKind::Else;
            const std::size_t end = next < program_.lines.size() ? next : blockEnd(branch);
            const std::uint32_t body = compileBody(branch, end);
            group.branches.push_back({narrow(branch), body, isElse});
            if (next == noLine) {
                program_.ifGroups.push_back(std::move(group));
                emit(instructions, Opcode::If, program_.ifGroups.size() - 1);
                return end + 1;
            }
            branch = next;
        }
    }

    std::size_t compileFor(std::size_t i, std::vector<Instruction>& instructions) {
        const std::size_t end = blockEnd(i);
        const bool isNumeric = program_.lines[i].plan->isNumericFor;
        const std::uint32_t body = compileBody(i, end);
        std::vector<BytecodeForLoop>& loops = isNumeric ? program_.numericForLoops : program_.genericForLoops;
        loops.push_back({narrow(i), body});
        emit(instructions, isNumeric ? Opcode::ForNumeric : Opcode::ForGeneric, loops.size() - 1);
        return end + 1;
    }

    std::size_t compileFunction(std::size_t i, std::vector<Instruction>& instructions) {
        const std::size_t end = blockEnd(i);
        const std::uint32_t body = compileBody(i, end);
        program_.functions.push_back(
            {narrow(i), body, narrow(i + 1), narrow(end), sourceDirectory_, program_.sourcePath});
        emit(instructions, Opcode::Function, program_.functions.size() - 1);
        return end + 1;
    }

    std::size_t compileNest(std::size_t i, std::uint32_t chunk, std::vector<Instruction>& instructions) {
        const std::size_t end = blockEnd(i);
        const std::uint32_t body = compileBody(i, end);
        program_.nestBlocks.push_back({narrow(i), body, chunk, program_.lines[i].plan->nestLabel});
        emit(instructions, Opcode::Nest, program_.nestBlocks.size() - 1);
        return end + 1;
    }

    BytecodeProgram& program_;
    const std::string& sourceDirectory_;
};

} // namespace

BytecodeProgram OstrelScript::compileToBytecodeInternal(const std::string& source) {
    BytecodeProgram program;
    program.sourceDirectory = currentSourceDirectory();
    program.sourcePath = currentSourcePath();
    program.lines = parseLines(source);
    program.instructions.reserve(program.lines.size());
    ChunkCompiler(program, program.sourceDirectory).compile(0, program.lines.size(), false);
    return program;
}

BytecodeProgram OstrelScript::compileToBytecode(const std::string& source) { return compileToBytecodeInternal(source); }

BytecodeProgram OstrelScript::compileToBytecode(const std::string& source, const std::string& sourcePath) {
    if (sourcePath.empty()) return compileToBytecodeInternal(source);
    const std::string normalised = normalisePath(sourcePath);
    const std::string directory = pathDirectory(normalised);
    BytecodeProgram program;
    {
        const SourceGuard guard(*this, normalised, directory);
        program = compileToBytecodeInternal(source);
    }
    program.sourceDirectory = directory;
    program.sourcePath = normalised;
    for (BytecodeFunctionDecl& function : program.functions) {
        function.sourceDirectory = directory;
        function.sourcePath = normalised;
    }
    return program;
}
