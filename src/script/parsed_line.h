#pragma once

// A logical line after its only parse: tokens, what is known about them, and the plan for executing it.

#include "script/callable.h"
#include "script/fast_expression.h"
#include "script/token.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What a line is, by its first one or two tokens.
enum class LineKind : std::uint8_t {
    Blank = 0,
    Plain = 1, // assignment or call
    If = 2,
    Elseif = 3,
    Else = 4,
    End = 5,
    While = 6,
    Repeat = 7,
    Until = 8,
    For = 9,
    Function = 10,
    DecayFunction = 11,
    NativeFunction = 12,
    LocalFunction = 13,
    Nest = 14,
    Return = 15,
    Break = 16,
};

/// True for the four forms of a function declaration.
constexpr bool isFunctionKind(LineKind kind) { return kind >= LineKind::Function && kind <= LineKind::LocalFunction; }

/// The declaration keyword in front of an assignment's targets.
enum class ScopeTarget : std::uint8_t { None = 0, Native = 1, Local = 2, External = 3 };

/// A half-open range of token indexes.
using TokenRange = std::pair<std::size_t, std::size_t>;

constexpr std::size_t noLine = ~std::size_t{0};

/// One target of an assignment: `a[1][i + 1]` has a name and two index ranges.
struct ParsedAssignmentTarget {
    std::size_t nameToken = 0;
    TokenAnalysis name;
    std::vector<TokenRange> indexRanges;
    std::vector<FastExpression> indexExpressions; // one per range; invalid where it did not compile
};

/// The road of a statement: the common ones have one of their own.
enum class StatementForm : std::uint8_t {
    General = 0,
    Call = 1,          // the whole line is one compiled expression
    AssignName = 2,    // `name = value` or `local name = value`, the value compiled
    AssignElement = 3, // `name[key] = value`, both compiled
    CompoundName = 4,  // `name += value` and its kin, the value compiled
};

/// What `prepareParsedLines` found out about a line: which parts it has and their compiled forms. Never changed once
/// made, so copies of a line share it.
struct LinePlan {
    StatementForm form = StatementForm::General;
    bool isAssignment = false;  // targets, an operator and values
    bool isDeclaration = false; // `local a, b` and the like: names without values
    ScopeTarget scopeTarget = ScopeTarget::None;
    std::size_t assignOperatorIndex = 0;
    BinaryOperator compoundOperator = BinaryOperator::None; // of `+=` and its kin; None for plain `=`
    std::vector<ParsedAssignmentTarget> targets;

    /// Ranges of the right-hand values of an assignment or of `return`, and their compiled forms; a value that did not
    /// compile has an invalid one.
    std::vector<TokenRange> valueRanges;
    std::vector<FastExpression> values;

    FastExpression expression; // the whole line of a call, or the condition

    bool isNumericFor = false;
    FastExpression forStart, forLimit, forStep; // clauses of a numeric `for` that compiled whole
    bool hasForStep = false;
    std::vector<Name*> loopNames;
    TokenRange iteratorRange{0, 0};              // the iterator of a generic `for`; empty if the header is at fault
    FastExpression iteratorExpression;           // the whole iterator
    BuiltinId iteratorBuiltin = BuiltinId::None; // pairs or ipairs, if the iterator is literally a call of one
    TokenRange iteratorArgumentRange{0, 0};
    FastExpression iteratorArgument; // the argument of that call

    bool hasNestLabel = false;
    std::string nestLabel; // decoded
};

struct ParsedScriptLine;

/// Sets the block links of all lines, and clears those of blocks that stand open.
void linkBlocks(std::vector<ParsedScriptLine>& lines);

/// The plan of lines that need none, so that every line has one.
const std::shared_ptr<const LinePlan>& emptyPlan();

struct ParsedScriptLine {
    std::string text;           // the logical line as joined, for error reports
    std::size_t lineNumber = 0; // physical line on which it began, from 0
    std::vector<std::string> tokens;
    std::vector<TokenAnalysis> tokenAnalysis; // one per token
    LineKind kind = LineKind::Blank;
    std::size_t matchingEnd = noLine;                   // line that ends the block
    std::size_t nextBranch = noLine;                    // next `elseif` or `else` of the chain
    std::shared_ptr<const LinePlan> plan = emptyPlan(); // never null
};
