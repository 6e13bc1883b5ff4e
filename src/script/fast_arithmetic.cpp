// The arithmetic of nodes.
//
// Two integers or two floats, which is what frame loops compute with, are combined on the spot. Every other pair takes
// the general operations; they are the definition, and the evaluation of tokens uses them as well.

#include "script/fast_arithmetic.h"

#include "script/numeric_operation.h"
#include "script/ostrel_script.h"

namespace {

BinaryOperator arithmeticOf(FastKind kind) {
    return static_cast<BinaryOperator>(static_cast<int>(BinaryOperator::Add) + static_cast<int>(kind) -
                                       static_cast<int>(FastKind::Add));
}

bool isHyperOperation(FastKind kind) { return kind == FastKind::Tetration || kind == FastKind::Pentation; }

unsigned unsignedOf(int number) { return static_cast<unsigned>(number); }

bool holds(FastKind kind, int order) {
    switch (kind) {
    case FastKind::Less: return order < 0;
    case FastKind::Greater: return order > 0;
    case FastKind::LessOrEqual: return order <= 0;
    default: return order >= 0;
    }
}

bool compareBoxed(const OstrelScript& engine, FastKind kind, const Variable& left, const Variable& right) {
    if (kind == FastKind::Equal) return engine.variablesEqual(left, right);
    if (kind == FastKind::NotEqual) return !engine.variablesEqual(left, right);
    return holds(kind, engine.compareVariables(left, right));
}

bool compare(const OstrelScript& engine, FastKind kind, FastScalarValue left, FastScalarValue right) {
    if (!fastScalarIsNumeric(left) || !fastScalarIsNumeric(right))
        return compareBoxed(engine, kind, fastScalarToVariable(left), fastScalarToVariable(right));
    if (kind == FastKind::Equal || kind == FastKind::NotEqual)
        return (fastScalarToDouble(left) == fastScalarToDouble(right)) == (kind == FastKind::Equal);
    return holds(kind, compareScalars(left, right));
}

FastScalarValue combineOtherScalars(const OstrelScript& engine, FastKind kind, FastScalarValue left,
                                    FastScalarValue right, Variable& boxed) {
    if (kind >= FastKind::Equal) return makeFastScalarBool(compare(engine, kind, left, right));
    if (!isHyperOperation(kind)) return numericOperation(arithmeticOf(kind), left, right);
    boxed = engine.performOperation(fastScalarToVariable(left), arithmeticOf(kind), fastScalarToVariable(right));
    return fastScalarFromVariable(boxed);
}

} // namespace

FastScalarValue combineScalars(const OstrelScript& engine, FastKind kind, FastScalarValue left, FastScalarValue right,
                               Variable& boxed) {
    if (left.kind == ScalarKind::Integer && right.kind == ScalarKind::Integer) {
        const int a = left.intValue;
        const int b = right.intValue;
        switch (kind) {
        case FastKind::Add: return makeFastScalarInt(static_cast<int>(unsignedOf(a) + unsignedOf(b)));
        case FastKind::Subtract: return makeFastScalarInt(static_cast<int>(unsignedOf(a) - unsignedOf(b)));
        case FastKind::Multiply: return makeFastScalarInt(static_cast<int>(unsignedOf(a) * unsignedOf(b)));
        case FastKind::Modulo:
            if (b > 0) return makeFastScalarInt(a % b);
            break;
        case FastKind::Equal: return makeFastScalarBool(a == b);
        case FastKind::NotEqual: return makeFastScalarBool(a != b);
        case FastKind::Less: return makeFastScalarBool(a < b);
        case FastKind::Greater: return makeFastScalarBool(a > b);
        case FastKind::LessOrEqual: return makeFastScalarBool(a <= b);
        case FastKind::GreaterOrEqual: return makeFastScalarBool(a >= b);
        default: break;
        }
    } else if (left.kind == ScalarKind::Float && right.kind == ScalarKind::Float) {
        // The definition computes with doubles and rounds once more. For these four operations on floats that is
        // the same as rounding once.
        const float a = left.floatValue;
        const float b = right.floatValue;
        switch (kind) {
        case FastKind::Add: return makeFastScalarFloat(a + b);
        case FastKind::Subtract: return makeFastScalarFloat(a - b);
        case FastKind::Multiply: return makeFastScalarFloat(a * b);
        case FastKind::Divide:
            if (b != 0) return makeFastScalarFloat(a / b);
            break;
        default: break;
        }
    }
    return combineOtherScalars(engine, kind, left, right, boxed);
}

void combineBoxed(const OstrelScript& engine, FastKind kind, const FastOperand& left, const FastOperand& right,
                  Variable& boxed, Variable& rightStorage) {
    const FastScalarValue leftNumber = left.scalar.isValid() ? left.scalar : fastScalarFromVariable(*left.boxed);
    const FastScalarValue rightNumber = right.scalar.isValid() ? right.scalar : fastScalarFromVariable(*right.boxed);
    if (fastScalarIsNumeric(leftNumber) && fastScalarIsNumeric(rightNumber) && !isHyperOperation(kind)) {
        assignFastScalarToVariable(boxed, combineScalars(engine, kind, leftNumber, rightNumber, boxed));
        return;
    }
    // A text that was just made grows in place: a chain of joins builds one string.
    if (kind == FastKind::Add && left.boxed == &boxed && !left.scalar.isValid() && boxed.isString()) {
        if (right.scalar.isValid())
            fastScalarToVariable(right.scalar).appendTo(boxed.editString());
        else
            right.boxed->appendTo(boxed.editString());
        return;
    }
    Variable leftStorage;
    const Variable& leftValue = left.value(leftStorage);
    const Variable& rightValue = right.value(rightStorage);
    if (kind >= FastKind::Equal)
        boxed = compareBoxed(engine, kind, leftValue, rightValue);
    else
        boxed = engine.performOperation(leftValue, arithmeticOf(kind), rightValue);
}
