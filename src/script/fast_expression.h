#pragma once

// An expression compiled once into a flat array of nodes.
//
// The token evaluator is exact but works through tokens; the nodes hold the same expression with names, literals and
// operators already resolved. Evaluation of a node gives its result in one of two ways: a number, boolean or nil that
// was computed from nothing but such values comes back in two words (a FastScalarValue), and everything else comes
// back as a Variable. Nothing is ever evaluated twice: where a scalar meets a Variable, the scalar is boxed and the
// general operation goes on from there. Which of the two it was matters to scripts in one place only: a condition
// whose result came the scalar way counts 0 as false.

#include "script/token.h"
#include "script/variable.h"

#include <cstdint>
#include <vector>

enum class FastKind : std::uint8_t {
    None = 0,
    Integer = 1,
    Float = 2,
    String = 3,
    Boolean = 4,
    Nil = 5,
    Variable = 6,
    Index = 7,
    Call = 8,
    Negate = 9,
    LogicalNot = 10,
    Length = 11,
    Add = 12,
    Subtract = 13,
    Multiply = 14,
    Divide = 15,
    IntegerDivide = 16,
    Modulo = 17,
    Power = 18,
    Tetration = 19,
    Pentation = 20,
    Equal = 21,
    NotEqual = 22,
    Less = 23,
    Greater = 24,
    LessOrEqual = 25,
    GreaterOrEqual = 26,
    And = 27,
    Or = 28,
    // What gives a value and never a scalar; an expression that holds one gives a value as a whole.
    ArrayLiteral = 29,
    TableLiteral = 30, // its arguments are pairs: a key, or none for a positional entry, and a value
    ComputedKey = 31,  // of such a pair: the key is evaluated and made text
    Varargs = 32,
};

using FastNodeIndex = std::int32_t;
constexpr FastNodeIndex noFastNode = -1;

struct FastNode {
    FastKind kind = FastKind::None;
    bool calls = false;                                // a call stands in this node or below it
    bool isPlace = false;                              // names a variable, or an element of one under a plain key
    ExplicitScope explicitScope = ExplicitScope::None; // of a variable
    std::uint32_t tokenIndex = 0;                      // last token that is read when this node's operation is done
    FastNodeIndex left = noFastNode;                   // operand; container of an index; callee of a call
    FastNodeIndex right = noFastNode; // second operand; key of an index; first argument slot of a call or literal
    union {
        int intValue;     // literal; argument count of a call or literal; index into `strings` of a string literal
        float floatValue; // literal
        Name* name;       // variable
        mutable std::uint32_t hint; // index: where in its table the key stood last
    };

    FastNode() : name(nullptr) {}
};

struct FastExpression {
    std::vector<FastNode> nodes;
    std::vector<FastNodeIndex> arguments; // roots of call arguments, call by call
    std::vector<Variable> strings;        // decoded string literals
    FastNodeIndex root = noFastNode;
    bool givesValue = false; // also if the result is a number: it holds a literal of a container, or `...`

    bool isValid() const { return root != noFastNode; }
    const FastNode& node(FastNodeIndex index) const { return nodes[static_cast<std::size_t>(index)]; }
};

enum class ScalarKind : std::uint8_t { Invalid = 0, Nil = 1, Integer = 2, Float = 3, Boolean = 4 };

/// A number, boolean or nil in two words. Invalid means that the result is a Variable instead.
struct FastScalarValue {
    ScalarKind kind = ScalarKind::Invalid;
    union {
        int intValue;
        float floatValue;
        bool boolValue;
    };

    FastScalarValue() : intValue(0) {}
    bool isValid() const { return kind != ScalarKind::Invalid; }
};

inline FastScalarValue makeFastScalarInt(int number) {
    FastScalarValue value;
    value.kind = ScalarKind::Integer;
    value.intValue = number;
    return value;
}
inline FastScalarValue makeFastScalarFloat(float number) {
    FastScalarValue value;
    value.kind = ScalarKind::Float;
    value.floatValue = number;
    return value;
}
inline FastScalarValue makeFastScalarBool(bool truth) {
    FastScalarValue value;
    value.kind = ScalarKind::Boolean;
    value.boolValue = truth;
    return value;
}
inline FastScalarValue makeFastScalarNil() {
    FastScalarValue value;
    value.kind = ScalarKind::Nil;
    return value;
}

inline bool fastScalarIsNumeric(FastScalarValue value) { return value.kind >= ScalarKind::Integer; }
/// The condition rule of the scalar way: a number is true unless it is 0.
inline bool fastScalarIsTruthy(FastScalarValue value) {
    switch (value.kind) {
    case ScalarKind::Boolean: return value.boolValue;
    case ScalarKind::Integer: return value.intValue != 0;
    case ScalarKind::Float: return value.floatValue != 0.0F;
    default: return false;
    }
}
[[noreturn]] void failScalarNotNumeric();
/// Fails with "Expected a numeric value" for nil.
inline double fastScalarToDouble(FastScalarValue value) {
    switch (value.kind) {
    case ScalarKind::Integer: return value.intValue;
    case ScalarKind::Float: return static_cast<double>(value.floatValue);
    case ScalarKind::Boolean: return value.boolValue ? 1.0 : 0.0;
    default: failScalarNotNumeric();
    }
}
int fastScalarToInt(FastScalarValue value);
Variable fastScalarToVariable(FastScalarValue value);

/// Stores the scalar in `target` without building a Variable.
inline void assignFastScalarToVariable(Variable& target, FastScalarValue value) {
    switch (value.kind) {
    case ScalarKind::Integer: target.setInt(value.intValue); break;
    case ScalarKind::Float: target.setFloat(value.floatValue); break;
    case ScalarKind::Boolean: target.setBool(value.boolValue); break;
    default: target.setNil(); break;
    }
}

/// The scalar in a Variable; Invalid for strings, containers and the like.
inline FastScalarValue fastScalarFromVariable(const Variable& variable) {
    // In the order of how often they occur; a chain of tests is predicted better than a jump table.
    if (variable.type == VarType::Integer) return makeFastScalarInt(variable.asInt());
    if (variable.type == VarType::Float) return makeFastScalarFloat(variable.asFloat());
    if (variable.type == VarType::Boolean) return makeFastScalarBool(variable.asBool());
    if (variable.type == VarType::Nil) return makeFastScalarNil();
    return {};
}

/// Compiles the tokens from `first` up to but without `last`. The result is invalid if the range holds anything that
/// the nodes don't have (pointer literals) or doesn't follow the grammar; faults are
/// not reported here, because the token evaluator reports them when the line is reached.
FastExpression compileFastExpressionRange(const std::vector<std::string>& tokens,
                                          const std::vector<TokenAnalysis>& analysis, std::size_t first,
                                          std::size_t last);
