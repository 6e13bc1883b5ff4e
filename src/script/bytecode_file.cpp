// Bytecode files: a program as bytes, and back.
//
// An image holds the program's block index and, of each line, the text, the number and the tokens. Everything else that
// a line knows is found again from its tokens when the image is loaded, by the same code that prepares a fresh source
// text; the file therefore stays small in kinds of records, and no file can hold a plan that contradicts its tokens.
// Storing the tokens is what saves the cutting of the text on every start, and makes the image larger than the source.
//
// A file is trusted with nothing but its own bytes. Counts are compared with what is left before anything is sized by
// them, so the memory that loading takes stays within a fixed multiple of the file. Indexes are read as they are: the
// executor checks each one when it uses it.

#include "script/binary_file.h"
#include "script/byte_reader.h"
#include "script/byte_writer.h"
#include "script/ostrel_script.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr std::string_view magic = "OSBC";

/// Format versions that differ from their predecessors.
enum FormatVersion : std::uint16_t {
    oldestVersion = 4,
    sourcePathVersion = 5, // the program and its functions carry a source path
    lineNumberVersion = 6, // lines carry their number
    nestVersion = 8,       // chunks say whether they are nested; nest blocks exist
    lastOldVersion = 8,    // 9 to 59 never existed
};

// The smallest size of each record: what a count is checked against.
constexpr std::size_t smallestText = 4;
constexpr std::size_t instructionSize = 9;
constexpr std::size_t smallestIfGroup = 4;
constexpr std::size_t ifBranchSize = 9;
constexpr std::size_t pairSize = 8;

std::size_t smallestLine(std::uint16_t version) { return version >= lineNumberVersion ? 12 : 8; }
std::size_t chunkSize(std::uint16_t version) { return version >= nestVersion ? 10 : 9; }
std::size_t smallestNestBlock(std::uint16_t version) { return version > lastOldVersion ? 16 : 8; }
std::size_t smallestFunction(std::uint16_t version) { return version >= sourcePathVersion ? 24 : 20; }

// ---------------------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------------------

template <typename Loop> void writePairs(ScriptByteWriter& out, const std::vector<Loop>& loops) {
    out.count(loops.size());
    for (const Loop& loop : loops) {
        out.u32(loop.line);
        out.u32(loop.bodyChunk);
    }
}

void writeLines(ScriptByteWriter& out, const std::vector<ParsedScriptLine>& lines) {
    out.count(lines.size());
    for (const ParsedScriptLine& line : lines) {
        out.text(line.text);
        out.count(line.lineNumber);
        out.count(line.tokens.size());
        for (const std::string& token : line.tokens) out.text(token);
    }
}

void writeChunks(ScriptByteWriter& out, const BytecodeProgram& program) {
    out.count(program.instructions.size());
    for (const Instruction& instruction : program.instructions) {
        out.u8(instruction.opcode);
        out.u32(instruction.operand);
        out.u32(instruction.spare);
    }
    out.count(program.chunks.size());
    for (const BytecodeChunk& chunk : program.chunks) {
        out.u32(chunk.firstInstruction);
        out.u32(chunk.instructionCount);
        out.boolean(chunk.hasLocalDeclarations);
        out.boolean(chunk.isNested);
    }
}

void writeIfGroups(ScriptByteWriter& out, const std::vector<BytecodeIfGroup>& groups) {
    out.count(groups.size());
    for (const BytecodeIfGroup& group : groups) {
        out.count(group.branches.size());
        for (const BytecodeIfBranch& branch : group.branches) {
            out.u32(branch.line);
            out.u32(branch.bodyChunk);
            out.boolean(branch.isElse);
        }
    }
}

void writeNestBlocks(ScriptByteWriter& out, const std::vector<BytecodeNestBlock>& blocks) {
    out.count(blocks.size());
    for (const BytecodeNestBlock& block : blocks) {
        out.u32(block.line);
        out.u32(block.bodyChunk);
        out.u32(block.parentChunk);
        out.text(block.label);
    }
}

void writeFunctions(ScriptByteWriter& out, const std::vector<BytecodeFunctionDecl>& functions) {
    out.count(functions.size());
    for (const BytecodeFunctionDecl& function : functions) {
        out.u32(function.line);
        out.u32(function.bodyChunk);
        out.u32(function.bodyStartLine);
        out.u32(function.bodyEndLine);
        out.text(function.sourceDirectory);
        out.text(function.sourcePath);
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------------------

/// Reads the sections of one image in file order; the reader's failure becomes the truncation message at once.
class ImageDecoder {
public:
    ImageDecoder(const std::vector<unsigned char>& bytes, const std::string& sourceLabel)
        : in_(bytes), sourceLabel_(sourceLabel) {}

    /// Magic, version and where the program came from.
    void readHeader() {
        const std::string mark = in_.bytes(magic.size());
        checkLength();
        if (mark != magic) throw std::runtime_error("Invalid bytecode file (bad magic): " + sourceLabel_);
        program.version = in_.u16();
        checkLength();
        const bool accepted = (program.version >= oldestVersion && program.version <= lastOldVersion) ||
                              program.version == bytecodeVersion;
        if (!accepted) throw std::runtime_error("Unsupported bytecode version: " + std::to_string(program.version));
        program.sourceDirectory = in_.text();
        if (program.version >= sourcePathVersion) program.sourcePath = in_.text();
        checkLength();
    }

    /// The lines as the file has them: text, number, tokens.
    void readLines(const OstrelScript& engine) {
        const bool numbered = program.version >= lineNumberVersion;
        program.lines.resize(in_.count(smallestLine(program.version)));
        std::size_t index = 0;
        for (ParsedScriptLine& line : program.lines) {
            line.text = in_.text();
            line.lineNumber = numbered ? in_.u32() : index;
            const std::uint32_t tokens = in_.count(smallestText);
            checkLength();
            line.tokens.reserve(tokens);
            line.tokenAnalysis.reserve(tokens);
            for (std::uint32_t i = 0; i < tokens; ++i) {
                line.tokens.push_back(in_.text());
                checkLength();
                line.tokenAnalysis.push_back(engine.analyseToken(line.tokens.back()));
            }
            ++index;
        }
        checkLength();
    }

    /// Everything behind the lines; these are prepared by then, since an old nest block takes its label from its line.
    void readBlockIndex() {
        readInstructions();
        readChunks();
        readIfGroups();
        readPairs(program.whileLoops);
        readPairs(program.repeatLoops);
        readPairs(program.numericForLoops);
        readPairs(program.genericForLoops);
        if (program.version >= nestVersion) readNestBlocks();
        readFunctions();
    }

    BytecodeProgram program;

private:
    void checkLength() const {
        if (in_.failed()) throw std::runtime_error("Invalid bytecode file (truncated): " + sourceLabel_);
    }

    /// Sizes the section from its count and reads each record.
    template <typename Record, typename ReadRecord>
    void readSection(std::vector<Record>& records, std::size_t smallestRecord, ReadRecord readRecord) {
        records.resize(in_.count(smallestRecord));
        for (Record& record : records) {
            readRecord(record);
            checkLength();
        }
        checkLength();
    }

    void readInstructions() {
        readSection(program.instructions, instructionSize, [this](Instruction& instruction) {
            instruction.opcode = in_.u8();
            instruction.operand = in_.u32();
            instruction.spare = in_.u32();
        });
    }

    void readChunks() {
        readSection(program.chunks, chunkSize(program.version), [this](BytecodeChunk& chunk) {
            chunk.firstInstruction = in_.u32();
            chunk.instructionCount = in_.u32();
            chunk.hasLocalDeclarations = in_.boolean();
            if (program.version >= nestVersion) chunk.isNested = in_.boolean();
        });
    }

    void readIfGroups() {
        readSection(program.ifGroups, smallestIfGroup, [this](BytecodeIfGroup& group) {
            readSection(group.branches, ifBranchSize, [this](BytecodeIfBranch& branch) {
                branch.line = in_.u32();
                branch.bodyChunk = in_.u32();
                branch.isElse = in_.boolean();
            });
        });
    }

    template <typename Loop> void readPairs(std::vector<Loop>& loops) {
        readSection(loops, pairSize, [this](Loop& loop) {
            loop.line = in_.u32();
            loop.bodyChunk = in_.u32();
        });
    }

    void readNestBlocks() {
        readSection(program.nestBlocks, smallestNestBlock(program.version), [this](BytecodeNestBlock& block) {
            block.line = in_.u32();
            block.bodyChunk = in_.u32();
            if (program.version > lastOldVersion) {
                block.parentChunk = in_.u32();
                block.label = in_.text();
            } else {
                block.label = labelOfLine(block.line);
            }
        });
    }

    std::string labelOfLine(std::uint32_t line) const {
        if (line >= program.lines.size() || !program.lines[line].plan) return {};
        const LinePlan& plan = *program.lines[line].plan;
        return plan.hasNestLabel ? plan.nestLabel : std::string();
    }

    void readFunctions() {
        readSection(program.functions, smallestFunction(program.version), [this](BytecodeFunctionDecl& function) {
            function.line = in_.u32();
            function.bodyChunk = in_.u32();
            function.bodyStartLine = in_.u32();
            function.bodyEndLine = in_.u32();
            function.sourceDirectory = in_.text();
            if (program.version >= sourcePathVersion) function.sourcePath = in_.text();
        });
    }

    ScriptByteReader in_;
    const std::string& sourceLabel_;
};

/// The text before the last slash or backslash; empty if there is none.
std::string directoryOf(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

} // namespace

std::vector<unsigned char> OstrelScript::serialiseBytecode(const BytecodeProgram& program) const {
    ScriptByteWriter out;
    out.bytes(magic);
    out.u16(std::max(program.version, bytecodeVersion));
    out.text(program.sourceDirectory);
    out.text(program.sourcePath);
    writeLines(out, program.lines);
    writeChunks(out, program);
    writeIfGroups(out, program.ifGroups);
    writePairs(out, program.whileLoops);
    writePairs(out, program.repeatLoops);
    writePairs(out, program.numericForLoops);
    writePairs(out, program.genericForLoops);
    writeNestBlocks(out, program.nestBlocks);
    writeFunctions(out, program.functions);
    return out.take();
}

BytecodeProgram OstrelScript::deserialiseBytecode(const std::vector<unsigned char>& bytes,
                                                  const std::string& sourceLabel) {
    ImageDecoder decoder(bytes, sourceLabel);
    decoder.readHeader();
    decoder.readLines(*this);
    prepareParsedLines(decoder.program.lines);
    decoder.readBlockIndex();
    return std::move(decoder.program);
}

void OstrelScript::saveBytecode(const BytecodeProgram& program, const std::string& path) const {
    writeBinaryFile(normalisePath(path), "bytecode", serialiseBytecode(program));
}

BytecodeProgram OstrelScript::loadBytecode(const std::string& path) {
    const std::string file = normalisePath(path);
    return deserialiseBytecode(readBinaryFile(file, "bytecode"), file);
}

void retargetBytecodeSource(BytecodeProgram& program, const std::string& sourcePath) {
    program.sourcePath = sourcePath;
    program.sourceDirectory = directoryOf(sourcePath);
    for (BytecodeFunctionDecl& function : program.functions) {
        function.sourcePath = program.sourcePath;
        function.sourceDirectory = program.sourceDirectory;
    }
}
