// A bytecode program in readable form.
//
// The dump follows the order of the file, with one exception: instructions are shown under the chunk that they belong
// to, because a flat list of them says nothing. A corrupt file may give one instruction to many chunks or to none; each
// is still listed exactly once, under the first chunk that claims it or at the end.

#include "bytecode_dump.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace {

struct OpcodeRow {
    std::string_view name;
    std::string_view operand; // what the operand is an index of
};

/// In the order of Opcode.
constexpr std::array<OpcodeRow, 11> opcodeRows = {{
    {"OpLine", "line"},
    {"OpAssignFast", "line"},
    {"OpIf", "if group"},
    {"OpWhile", "while loop"},
    {"OpRepeat", "repeat loop"},
    {"OpForNumeric", "numeric for"},
    {"OpForGeneric", "generic for"},
    {"OpFunction", "function"},
    {"OpReturn", "line"},
    {"OpBreak", "line"},
    {"OpNest", "nest block"},
}};

/// In double quotes; quotes, backslashes and all bytes that are no printable ASCII are escaped.
std::string quoted(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const unsigned byte = static_cast<unsigned char>(c);
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (byte >= 0x20 && byte < 0x7F) {
                out += c;
            } else {
                std::array<char, 5> escape{};
                std::snprintf(escape.data(), escape.size(), "\\x%02x", byte);
                out += escape.data();
            }
        }
    }
    return out + '"';
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + ' ' + std::string(count == 1 ? one : many);
}

class Dump {
public:
    explicit Dump(const BytecodeProgram& source) : program_(source), listed_(source.instructions.size()) {}

    std::string text() {
        out_ = "bytecode, version " + std::to_string(program_.version) + '\n';
        out_ += "source directory " + quoted(program_.sourceDirectory) + '\n';
        out_ += "source path " + quoted(program_.sourcePath) + '\n';
        addLines();
        addChunks();
        addUnclaimedInstructions();
        addIfGroups();
        addLoops("while loops", program_.whileLoops);
        addLoops("repeat loops", program_.repeatLoops);
        addLoops("numeric for loops", program_.numericForLoops);
        addLoops("generic for loops", program_.genericForLoops);
        addNestBlocks();
        addFunctions();
        return std::move(out_);
    }

private:
    void addHeading(std::string_view title, std::size_t count) {
        out_ += '\n';
        out_ += title;
        out_ += ": " + std::to_string(count) + '\n';
    }

    /// "  7: ", the start of every record.
    void addIndex(std::size_t index) { out_ += "  " + std::to_string(index) + ": "; }

    void addLines() {
        addHeading("lines", program_.lines.size());
        for (std::size_t i = 0; i < program_.lines.size(); ++i) {
            const ParsedScriptLine& line = program_.lines[i];
            addIndex(i);
            out_ += "at " + std::to_string(line.lineNumber + 1) + ' ' + quoted(line.text) + '\n';
            if (line.tokens.empty()) continue;
            out_ += "     ";
            for (const std::string& token : line.tokens) out_ += ' ' + quoted(token);
            out_ += '\n';
        }
    }

    void addChunks() {
        addHeading("chunks", program_.chunks.size());
        for (std::size_t i = 0; i < program_.chunks.size(); ++i) {
            const BytecodeChunk& chunk = program_.chunks[i];
            addIndex(i);
            out_ += counted(chunk.instructionCount, "instruction", "instructions") + " from " +
                    std::to_string(chunk.firstInstruction);
            if (chunk.isNested) out_ += ", nested";
            if (chunk.hasLocalDeclarations) out_ += ", declares locals";
            out_ += '\n';
            addInstructions(chunk);
        }
    }

    void addInstructions(const BytecodeChunk& chunk) {
        const std::size_t end = std::size_t{chunk.firstInstruction} + chunk.instructionCount;
        for (std::size_t i = chunk.firstInstruction; i < end; ++i) {
            if (i >= listed_.size()) {
                out_ += "      out of bounds from " + std::to_string(i) + '\n';
                return;
            }
            if (listed_[i]) {
                out_ += "      listed above from " + std::to_string(i) + '\n';
                return;
            }
            addInstruction(i);
        }
    }

    void addInstruction(std::size_t index) {
        listed_[index] = true;
        const Instruction& instruction = program_.instructions[index];
        out_ += "      " + std::to_string(index) + ' ';
        if (instruction.opcode < opcodeRows.size()) {
            const OpcodeRow& row = opcodeRows[instruction.opcode];
            out_ += row.name;
            out_ += ' ';
            out_ += row.operand;
        } else {
            out_ += "opcode " + std::to_string(instruction.opcode) + " operand";
        }
        out_ += ' ' + std::to_string(instruction.operand);
        if (instruction.spare != 0) out_ += ", spare " + std::to_string(instruction.spare);
        out_ += '\n';
    }

    void addUnclaimedInstructions() {
        std::size_t unclaimed = 0;
        for (const bool listed : listed_) unclaimed += listed ? 0 : 1;
        if (unclaimed == 0) return;
        addHeading("instructions of no chunk", unclaimed);
        for (std::size_t i = 0; i < listed_.size(); ++i)
            if (!listed_[i]) addInstruction(i);
    }

    void addIfGroups() {
        addHeading("if groups", program_.ifGroups.size());
        for (std::size_t i = 0; i < program_.ifGroups.size(); ++i) {
            const auto& branches = program_.ifGroups[i].branches;
            addIndex(i);
            out_ += counted(branches.size(), "branch", "branches") + '\n';
            for (std::size_t b = 0; b < branches.size(); ++b) {
                out_ += branches[b].isElse ? "      else, " : b == 0 ? "      if, " : "      elseif, ";
                addLineAndChunk(branches[b].line, branches[b].bodyChunk);
                out_ += '\n';
            }
        }
    }

    template <typename Loop> void addLoops(std::string_view title, const std::vector<Loop>& loops) {
        addHeading(title, loops.size());
        for (std::size_t i = 0; i < loops.size(); ++i) {
            addIndex(i);
            addLineAndChunk(loops[i].line, loops[i].bodyChunk);
            out_ += '\n';
        }
    }

    void addNestBlocks() {
        addHeading("nest blocks", program_.nestBlocks.size());
        for (std::size_t i = 0; i < program_.nestBlocks.size(); ++i) {
            const BytecodeNestBlock& block = program_.nestBlocks[i];
            addIndex(i);
            addLineAndChunk(block.line, block.bodyChunk);
            out_ += ", in chunk " + std::to_string(block.parentChunk) + ", label " + quoted(block.label) + '\n';
        }
    }

    void addFunctions() {
        addHeading("functions", program_.functions.size());
        for (std::size_t i = 0; i < program_.functions.size(); ++i) {
            const BytecodeFunctionDecl& function = program_.functions[i];
            addIndex(i);
            addLineAndChunk(function.line, function.bodyChunk);
            out_ += ", body from line " + std::to_string(function.bodyStartLine) + " to " +
                    std::to_string(function.bodyEndLine) + ", source directory " + quoted(function.sourceDirectory) +
                    ", source path " + quoted(function.sourcePath) + '\n';
        }
    }

    void addLineAndChunk(std::uint32_t line, std::uint32_t chunk) {
        out_ += "line " + std::to_string(line) + ", chunk " + std::to_string(chunk);
    }

    const BytecodeProgram& program_;
    std::vector<bool> listed_; // instructions that stand in the text already
    std::string out_;
};

} // namespace

std::string dumpBytecode(const BytecodeProgram& program) { return Dump(program).text(); }
