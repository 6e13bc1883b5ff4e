#pragma once

#include "script/fast_expression.h"

/// Arithmetic on two scalars, from Add to Power; the one definition that the token road and the node road share. A
/// float on either side makes the result a float, two integers or booleans an integer that wraps at 32 bits. Fails
/// with "Division by zero", "Invalid exponentiation result", and for nil "Unsupported operation 'x' between types".
FastScalarValue numericOperation(BinaryOperator binaryOperator, FastScalarValue left, FastScalarValue right);
/// -1, 0 or 1 for two numeric scalars, compared as doubles.
int compareScalars(FastScalarValue left, FastScalarValue right);
