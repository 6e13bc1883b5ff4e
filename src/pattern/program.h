// A pattern as a program for the matcher, and what is known about where its matches can begin.
//
// The program is a list of instructions that either succeed, and go on with the next or a named one, or fail, and send
// the matcher back to the last choice that has an untried way. Where the next byte alone tells that a way can't
// succeed, the compiler writes an instruction that looks at that byte and doesn't make the choice at all; this is what
// keeps the stack of choices empty for most patterns.

#pragma once

#include "pattern/byte_set.h"
#include "pattern/repetition.h"

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace pattern {

/// What an instruction does with its operands. "Tries" means that the second way is kept for a return.
enum class Op : std::uint8_t {
    // The end of the program: all has matched.
    Accept,
    // One byte: `a`, or one of the table `a`.
    Single,
    Set,
    // `b` bytes, which begin at `a` in the literals. Of a masked one, `b` masks follow that are laid over the text
    // first.
    Literal,
    MaskedLiteral,
    // On with `b`.
    Jump,
    // On with `b` if the next byte is in the table `a`, else with `c`.
    Branch,
    // Tries `b`, then `c`.
    Fork,
    // Tries `b`, then `c`, if the next byte is in the table `a`; else on with `c`.
    ForkIf,
    // The same, but `c` is a second way only if the next byte is in the table `d`.
    ForkEither,
    // Tries `c`, then `b`, if the next byte is in the table `a`; else on with `c`.
    ForkLazily,
    // Bytes of the table `a`, at least `b` and at most `c`. A greedy run tries the most first, a lazy one the fewest,
    // and the table `d` says what may follow. A full run takes the most and keeps no other way.
    GreedyRun,
    LazyRun,
    FullRun,
    // If bytes were taken since the place in slot `a`, slots `b` and `b + 1` take begin and end of the last one.
    LastOfRun,
    // Slot `a` takes the place.
    Save,
    // Decides on a further round of a loop whose rounds may be empty, which slots `a` and `a + 1` mark: tries `b`, the
    // round, then `c`; or `c`, then `b`.
    EnterRound,
    EnterLazily,
    // Slot `a` takes the height of the stack; the stack falls back to it, since nothing can fail any more.
    MarkStack,
    CutStack,
    // Test the place.
    TextBegin,
    TextEnd,
    WordBoundary,
    NoWordBoundary,
    // What the slots `a` and `a + 1` hold, with or without regard to case.
    BackReference,
    FoldedBackReference,
    // On with `b`, at the same place, if the instructions from the next on lead to the end that belongs to them; or if
    // they don't. Loops in between have their marks in the slots from `c` to `d`, which are cleared.
    Ahead,
    NotAhead,
    AheadEnd,
    NotAheadEnd,
};

/// Runs without a maximum have noMaximum.
struct Instruction {
    Op op = Op::Accept;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
    std::uint32_t d = 0;
};

/// A set of bytes as the matcher reads it: byte by byte, or in long scans as a few ranges.
struct ByteTable {
    static constexpr std::size_t maxRanges = 4;

    struct Range {
        Byte low = 0;
        Byte high = 0;
    };

    explicit ByteTable(const ByteSet& set);

    std::array<bool, 256> has{};
    std::array<Range, maxRanges> ranges{}; // that the set is made of
    std::size_t rangeCount = 0;            // 0 if they would be more
    bool rangesAreOthers = false;          // the ranges make up the bytes that aren't in the set
};

/// A literal and the two of its bytes that are looked for before the others are compared.
struct PairedLiteral {
    std::string bytes;
    std::size_t first = 0;  // where the two stand in `bytes`
    std::size_t second = 0; // the same as `first` if there is only one byte
};

constexpr std::uint32_t noTable = 0xFFFFFFFFU;

/// Where a match can begin, found from the tree of the pattern. Each field can only rule places out.
struct StartPlan {
    /// How to find the next place that is worth an attempt.
    enum class Way : std::uint8_t {
        EveryPlace,
        TextBegin,    // only where the search begins
        FirstByte,    // `literal` has one byte, with which the match begins
        FirstSet,     // the first bytes are in `prefixTables`
        FixedLiteral, // `literal` stands `offset` bytes behind the begin of the match
    };

    static constexpr std::size_t maxPrefix = 3;

    Way way = Way::EveryPlace;
    PairedLiteral literal;
    std::size_t offset = 0;
    std::array<std::uint32_t, maxPrefix> prefixTables{}; // of FirstSet: one for each of the first bytes
    std::size_t prefix = 0;                              // how many of them there are; at least one

    std::size_t minLength = 0;
    /// A match begins at most so many bytes before the end of the text.
    std::size_t maxFromEnd = std::numeric_limits<std::size_t>::max();

    /// A match has `neededByte` somewhere, `neededFrom` bytes or more behind its begin.
    bool hasNeededByte = false;
    Byte neededByte = 0;
    std::size_t neededFrom = 0;

    /// The match begins with `leadingBytes` single bytes and a run over this table, and what follows doesn't depend on
    /// where the run began. So an attempt that failed fails again from every later place that leads into the same run.
    std::uint32_t leadingRun = noTable;
    std::size_t leadingBytes = 0;

    bool atWordBegin = false; // a match begins with a byte of a word, and none stands before it
};

/// How a pattern matches without its program.
enum class Shortcut : std::uint8_t {
    None,
    Literal, // a match is the plan's literal
    OneByte, // a match is one byte that the plan finds
    Run,     // a match is a longest run over `runTable`, which may be empty if `runMayBeEmpty`
};

struct Program {
    std::vector<Instruction> code;
    std::vector<ByteTable> tables;
    std::string literals;
    /// The slots of group n are 2 n and 2 n + 1, with 0 for the whole match; then come marks and stack heights.
    std::uint32_t groups = 0; // that capture
    std::uint32_t slots = 0;  // altogether
    StartPlan plan;
    Shortcut shortcut = Shortcut::None;
    std::uint32_t runTable = noTable;
    bool runMayBeEmpty = false;
};

} // namespace pattern
