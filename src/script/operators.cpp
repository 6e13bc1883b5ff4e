// The operators: arithmetic on two kinds of 32-bit numbers, joining, comparing, truth.

#include "script/numeric_operation.h"
#include "script/ostrel_script.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double wholeTolerance = 1e-6; // how far from a whole number a computed result still counts as one
constexpr double largestFloat = 3.4028234663852886e38;
constexpr double largestInt = std::numeric_limits<int>::max();
constexpr double smallestInt = std::numeric_limits<int>::min();

[[noreturn]] void failUnsupported(BinaryOperator binaryOperator) {
    const std::string token(operatorToken(binaryOperator));
    if (binaryOperator < BinaryOperator::Add || binaryOperator > BinaryOperator::Power)
        throw std::runtime_error("Unsupported operation: " + token.substr(0, 1));
    // The backslash stands twice between the quotes.
    throw std::runtime_error("Unsupported operation '" + (token == "\\" ? token + token : token) + "' between types");
}

[[noreturn]] void failDivision() { throw std::runtime_error("Division by zero"); }

int wrapAdd(int left, int right) {
    return static_cast<int>(static_cast<unsigned>(left) + static_cast<unsigned>(right));
}
int wrapSubtract(int left, int right) {
    return static_cast<int>(static_cast<unsigned>(left) - static_cast<unsigned>(right));
}
int wrapMultiply(int left, int right) {
    return static_cast<int>(static_cast<unsigned>(left) * static_cast<unsigned>(right));
}

/// Truncating division; the one quotient that has no integer wraps.
int wrapDivide(int left, int right) { return right == -1 ? wrapSubtract(0, left) : left / right; }

bool isWholeInt(double value) {
    return std::fabs(value - std::round(value)) <= wholeTolerance && std::round(value) >= smallestInt &&
           std::round(value) <= largestInt;
}

/// By squaring, as long as every step fits 32 bits.
bool integerPower(int base, int exponent, int& out) {
    const auto fits = [](std::int64_t value) { return value == static_cast<int>(value); };
    std::int64_t result = 1;
    std::int64_t square = base;
    for (unsigned left = static_cast<unsigned>(exponent); left != 0;) {
        if ((left & 1U) != 0) result *= square;
        left >>= 1U;
        if (!fits(result)) return false;
        if (left == 0) break;
        square *= square;
        if (!fits(square)) return false;
    }
    out = static_cast<int>(result);
    return true;
}

FastScalarValue power(FastScalarValue left, FastScalarValue right) {
    const bool integers = left.kind == ScalarKind::Integer && right.kind == ScalarKind::Integer;
    const bool wholeExponent = integers && right.intValue >= 0;
    int exact = 0;
    if (wholeExponent && integerPower(left.intValue, right.intValue, exact)) return makeFastScalarInt(exact);
    const double result = std::pow(fastScalarToDouble(left), fastScalarToDouble(right));
    if (!std::isfinite(result)) throw std::runtime_error("Invalid exponentiation result");
    if (wholeExponent && isWholeInt(result)) return makeFastScalarInt(static_cast<int>(std::round(result)));
    return makeFastScalarFloat(static_cast<float>(result));
}

// --- Hyperoperators ---

bool isSameNumber(double left, double right) { return left == right && std::signbit(left) == std::signbit(right); }

/// Replaces a value by `step` of it, so many times. Heights and counts go up to two thousand million, but a sequence
/// that doesn't leave the range of numbers soon settles, or goes round between a few values. So the value is compared
/// with one that is marked ever further back; once it is the same, only the part of a last round is left to do.
template <typename Step> double iterate(double value, int times, const Step& step) {
    double marked = value;
    std::int64_t sinceMark = 0;
    std::int64_t nextMark = 1;
    for (std::int64_t left = times; left > 0;) {
        value = step(value);
        --left;
        ++sinceMark;
        if (isSameNumber(value, marked)) left %= sinceMark;
        if (sinceMark == nextMark) {
            marked = value;
            sinceMark = 0;
            nextMark *= 2;
        }
    }
    return value;
}

/// `base` to the power of itself, `height` levels high. `name` stands in the messages.
double tetrationDouble(double base, int height, const char* name) {
    if (!std::isfinite(base)) throw std::runtime_error(std::string(name) + " base must be finite");
    if (base == 1.0 || height == 0) return 1.0;
    if (base == 0.0) return height % 2 == 1 ? 0.0 : 1.0;
    return iterate(base, height - 1, [base, name](double value) {
        const double next = std::pow(base, value);
        if (!std::isfinite(next)) throw std::runtime_error(std::string("Invalid ") + name + " result");
        return next;
    });
}

int requireNonNegativeInteger(double value, const char* operation, const char* name) {
    const auto fail = [operation, name](const char* what) {
        throw std::runtime_error(std::string(operation) + " " + name + " must be " + what);
    };
    if (!std::isfinite(value)) fail("finite");
    if (std::fabs(value - std::round(value)) > wholeTolerance) fail("an integer");
    if (std::round(value) < 0 || std::round(value) > largestInt) fail("a non-negative integer");
    return static_cast<int>(std::round(value));
}

double pentationDouble(double base, int count) {
    constexpr const char* name = "pentation";
    if (!std::isfinite(base)) throw std::runtime_error("pentation base must be finite");
    if (count == 0 || base == 1.0) return 1.0;
    if (count == 1) return base;
    if (base == 0.0) return count % 2 == 1 ? 0.0 : 1.0;
    return iterate(base, count - 1, [base](double value) {
        return tetrationDouble(base, requireNonNegativeInteger(value, name, "intermediate height"), name);
    });
}

Variable makeHyperOperationResult(double value, bool integerResult, const char* name) {
    const bool isInteger = integerResult && isWholeInt(value);
    if (!std::isfinite(value) || (!isInteger && std::fabs(value) > largestFloat))
        throw std::runtime_error(std::string("Invalid ") + name + " result");
    if (isInteger) return static_cast<int>(std::round(value));
    return static_cast<float>(value);
}

/// The two read their operands the opposite way round: `height <- base`, `base -> count`.
Variable hyperOperation(const Variable& left, BinaryOperator binaryOperator, const Variable& right) {
    const bool isTetration = binaryOperator == BinaryOperator::Tetration;
    const char* const name = isTetration ? "tetration" : "pentation";
    if (!left.isNumeric() || !right.isNumeric())
        throw std::runtime_error(std::string(name) + " requires numeric operands");
    const bool integerResult = left.type != VarType::Float && right.type != VarType::Float;
    const double result =
        isTetration ? tetrationDouble(toDouble(right), requireNonNegativeInteger(toDouble(left), name, "height"), name)
                    : pentationDouble(toDouble(left), requireNonNegativeInteger(toDouble(right), name, "count"));
    return makeHyperOperationResult(result, integerResult, name);
}

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Scalars
// ---------------------------------------------------------------------------------------------------------------------

void failScalarNotNumeric() { throw std::runtime_error("Expected a numeric value"); }

int fastScalarToInt(FastScalarValue value) {
    switch (value.kind) {
    case ScalarKind::Integer: return value.intValue;
    case ScalarKind::Float: return saturateToInt(static_cast<double>(value.floatValue));
    case ScalarKind::Boolean: return value.boolValue ? 1 : 0;
    default: failScalarNotNumeric();
    }
}

Variable fastScalarToVariable(FastScalarValue value) {
    Variable variable;
    assignFastScalarToVariable(variable, value);
    return variable;
}

FastScalarValue numericOperation(BinaryOperator binaryOperator, FastScalarValue left, FastScalarValue right) {
    if (!fastScalarIsNumeric(left) || !fastScalarIsNumeric(right)) failUnsupported(binaryOperator);
    const bool isFloat = left.kind == ScalarKind::Float || right.kind == ScalarKind::Float;
    switch (binaryOperator) {
    case BinaryOperator::Add:
        if (!isFloat) return makeFastScalarInt(wrapAdd(fastScalarToInt(left), fastScalarToInt(right)));
        return makeFastScalarFloat(static_cast<float>(fastScalarToDouble(left) + fastScalarToDouble(right)));
    case BinaryOperator::Subtract:
        if (!isFloat) return makeFastScalarInt(wrapSubtract(fastScalarToInt(left), fastScalarToInt(right)));
        return makeFastScalarFloat(static_cast<float>(fastScalarToDouble(left) - fastScalarToDouble(right)));
    case BinaryOperator::Multiply:
        if (!isFloat) return makeFastScalarInt(wrapMultiply(fastScalarToInt(left), fastScalarToInt(right)));
        return makeFastScalarFloat(static_cast<float>(fastScalarToDouble(left) * fastScalarToDouble(right)));
    case BinaryOperator::Divide: {
        const double divisor = fastScalarToDouble(right);
        if (divisor == 0.0) failDivision();
        return makeFastScalarFloat(static_cast<float>(fastScalarToDouble(left) / divisor));
    }
    case BinaryOperator::IntegerDivide: {
        const int divisor = fastScalarToInt(right);
        if (divisor == 0) failDivision();
        return makeFastScalarInt(wrapDivide(fastScalarToInt(left), divisor));
    }
    case BinaryOperator::Modulo: {
        if (fastScalarToDouble(right) == 0.0) failDivision();
        if (isFloat)
            return makeFastScalarFloat(
                std::fmod(static_cast<float>(fastScalarToDouble(left)), static_cast<float>(fastScalarToDouble(right))));
        const int divisor = fastScalarToInt(right);
        return makeFastScalarInt(divisor == -1 ? 0 : fastScalarToInt(left) % divisor);
    }
    case BinaryOperator::Power: return power(left, right);
    default: failUnsupported(binaryOperator);
    }
}

int compareScalars(FastScalarValue left, FastScalarValue right) {
    const double leftNumber = fastScalarToDouble(left);
    const double rightNumber = fastScalarToDouble(right);
    if (leftNumber < rightNumber) return -1;
    return leftNumber > rightNumber ? 1 : 0;
}

// ---------------------------------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------------------------------

Variable OstrelScript::performOperation(const Variable& left, BinaryOperator binaryOperator,
                                        const Variable& right) const {
    if (binaryOperator == BinaryOperator::Tetration || binaryOperator == BinaryOperator::Pentation)
        return hyperOperation(left, binaryOperator, right);
    if (binaryOperator == BinaryOperator::Add && (left.isString() || right.isString())) {
        std::string text = left.toString();
        right.appendTo(text);
        return Variable(std::move(text));
    }
    if (!left.isNumeric() || !right.isNumeric()) failUnsupported(binaryOperator);
    return fastScalarToVariable(
        numericOperation(binaryOperator, fastScalarFromVariable(left), fastScalarFromVariable(right)));
}

int OstrelScript::compareVariables(const Variable& left, const Variable& right) const {
    if (left.isNumeric() && right.isNumeric())
        return compareScalars(fastScalarFromVariable(left), fastScalarFromVariable(right));
    if (left.isString() && right.isString()) {
        const int order = left.asString().compare(right.asString());
        return order < 0 ? -1 : (order > 0 ? 1 : 0);
    }
    throw std::runtime_error("Cannot compare " + typeName(left.type) + " with " + typeName(right.type));
}

bool OstrelScript::variablesEqual(const Variable& left, const Variable& right) const {
    if (left.isNumeric() && right.isNumeric()) return toDouble(left) == toDouble(right);
    if (left.type != right.type) return false;
    switch (left.type) {
    case VarType::String: return left.asString() == right.asString();
    case VarType::Raw: return left.asRaw() == right.asRaw();
    case VarType::Pointer: return left.asPointer() == right.asPointer();
    case VarType::Array: return left.asArray() == right.asArray();
    case VarType::Table: return left.asTable() == right.asTable();
    case VarType::Function: return left.asFunction() == right.asFunction();
    case VarType::Multi: return left.asMulti() == right.asMulti();
    default: return true; // nil
    }
}

bool OstrelScript::isTruthy(const Variable& value) const {
    switch (value.type) {
    case VarType::Nil: return false;
    case VarType::Boolean: return value.asBool();
    default: return value.type <= VarType::Function;
    }
}

std::string OstrelScript::typeName(VarType type) const {
    switch (type) {
    case VarType::Nil: return "not";
    case VarType::Integer: return "int";
    case VarType::Float: return "float";
    case VarType::String: return "string";
    case VarType::Raw: return "raw";
    case VarType::Boolean: return "bool";
    case VarType::Pointer: return "pointer";
    case VarType::Array: return "array";
    case VarType::Multi: return "multivalue";
    case VarType::Table: return "table";
    case VarType::Function: return "function";
    }
    return "unknown";
}

int OstrelScript::arrayLength(const Variable& value) const {
    switch (value.type) {
    case VarType::String: return static_cast<int>(value.asString().size());
    case VarType::Array: return static_cast<int>(value.asArray()->size());
    case VarType::Table: return static_cast<int>(value.asTable()->numericLength());
    default: throw std::runtime_error("len(x) expects an array, table, or string");
    }
}
