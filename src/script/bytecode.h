#pragma once

// What a script compiles to: an index of block structure laid over the parsed lines.
//
// This is no stack machine. An instruction never encodes an expression; expressions stay in the lines and are
// evaluated by the expression machinery. What compiling buys is that block boundaries, branch chains and loop bodies
// are found once, and that the whole can be stored without its source.

#include "script/parsed_line.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The version of everything that the compiler emits.
constexpr std::uint16_t bytecodeVersion = 60;

enum class Opcode : std::uint8_t {
    Line = 0,       // OpLine: operand is a line; assignment or expression statement by the general road
    AssignFast = 1, // OpAssignFast: one plain target, one value with a compiled form
    If = 2,         // operand indexes ifGroups
    While = 3,      // whileLoops
    Repeat = 4,     // repeatLoops
    ForNumeric = 5, // numericForLoops
    ForGeneric = 6, // genericForLoops
    Function = 7,   // functions
    Return = 8,     // a line
    Break = 9,      // a line
    Nest = 10,      // nestBlocks
};

struct Instruction {
    std::uint8_t opcode = 0; // an Opcode, but a file may hold any byte
    std::uint32_t operand = 0;
    std::uint32_t spare = 0; // written as 0, read by nobody
};

struct BytecodeChunk {
    std::uint32_t firstInstruction = 0;
    std::uint32_t instructionCount = 0;
    bool hasLocalDeclarations = false; // a line directly in the chunk declares a local
    bool isNested = false;             // every chunk but the top level
};

struct BytecodeIfBranch {
    std::uint32_t line = 0; // the `if`, `elseif` or `else` line
    std::uint32_t bodyChunk = 0;
    bool isElse = false;
};

struct BytecodeIfGroup {
    std::vector<BytecodeIfBranch> branches; // in source order
};

struct BytecodeWhileLoop {
    std::uint32_t line = 0;
    std::uint32_t bodyChunk = 0;
};

struct BytecodeRepeatLoop {
    std::uint32_t line = 0; // the `until` line, which holds the condition
    std::uint32_t bodyChunk = 0;
};

struct BytecodeForLoop {
    std::uint32_t line = 0;
    std::uint32_t bodyChunk = 0;
};

struct BytecodeNestBlock {
    std::uint32_t line = 0;
    std::uint32_t bodyChunk = 0;
    std::uint32_t parentChunk = 0; // the chunk in which the block stands
    std::string label;             // decoded; empty without a label
};

struct BytecodeFunctionDecl {
    std::uint32_t line = 0; // the declaring line
    std::uint32_t bodyChunk = 0;
    std::uint32_t bodyStartLine = 0;
    std::uint32_t bodyEndLine = 0; // the matching `end`
    std::string sourceDirectory;
    std::string sourcePath;
};

/// What is remembered of a chunk's fitness for the inline runner.
enum class InlineEligibility : std::uint8_t { Unknown = 0, No = 1, Yes = 2 };

/// What is remembered of a chunk's statements. A plain chunk cannot leave anything in a block scope, so it needs none.
enum class ChunkShape : std::uint8_t { Unknown = 0, General = 1, Plain = 2 };

/// Held by shared pointer wherever it runs: callables that were declared from it keep it alive.
struct BytecodeProgram {
    std::uint16_t version = bytecodeVersion;
    std::string sourceDirectory; // relative paths of this program resolve against it; may be empty
    std::string sourcePath;      // path or display name; may be empty
    std::vector<ParsedScriptLine> lines;
    std::vector<Instruction> instructions;
    std::vector<BytecodeChunk> chunks; // chunk 0 is the top level
    std::vector<BytecodeIfGroup> ifGroups;
    std::vector<BytecodeWhileLoop> whileLoops;
    std::vector<BytecodeRepeatLoop> repeatLoops;
    std::vector<BytecodeForLoop> numericForLoops;
    std::vector<BytecodeForLoop> genericForLoops;
    std::vector<BytecodeNestBlock> nestBlocks;
    std::vector<BytecodeFunctionDecl> functions;
    std::vector<InlineEligibility> inlineEligibility; // one per chunk, grown on demand; never stored in a file
    std::vector<ChunkShape> chunkShapes;              // the same
};

/// Rewrites where a loaded program says it came from: its path, the directory before the last slash or backslash, and
/// the same two in every function. Backslashes stay.
void retargetBytecodeSource(BytecodeProgram& program, const std::string& sourcePath);
