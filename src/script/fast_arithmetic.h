#pragma once

// What nodes compute from two operands that are there already: arithmetic, joins and comparisons.

#include "script/fast_expression.h"

class OstrelScript;

/// An operand: a valid scalar, or else a Variable that is the caller's storage or a borrowed place.
struct FastOperand {
    FastScalarValue scalar;
    const Variable* boxed = nullptr;

    /// The operand as a Variable; a scalar is boxed in `storage`.
    const Variable& value(Variable& storage) const {
        if (!scalar.isValid()) return *boxed;
        assignFastScalarToVariable(storage, scalar);
        return storage;
    }
};

/// The result of a binary node, Add to GreaterOrEqual, from two valid scalars: a scalar, or else `boxed` holds it.
FastScalarValue combineScalars(const OstrelScript& engine, FastKind kind, FastScalarValue left, FastScalarValue right,
                               Variable& boxed);

/// The same from operands of which at least one is a Variable; the result is always left in `boxed`.
/// @param boxed         may hold the left operand; a text in it grows in place when something is joined to it
/// @param rightStorage  where a scalar on the right side is boxed, if it has to be; may hold the right operand
void combineBoxed(const OstrelScript& engine, FastKind kind, const FastOperand& left, const FastOperand& right,
                  Variable& boxed, Variable& rightStorage);
