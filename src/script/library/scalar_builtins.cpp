// The pure numeric functions of the library for an expression that computes with scalars.
//
// Each takes its arguments and gives its result without a Variable being made for it. Whatever is not plain and right
// (a wrong count, a wrong type, an argument outside a function's domain) is declined, and the general function, which
// knows the messages, is called with the same arguments. Both use the same formulas.

#include "script/library/functions.h"

namespace {

/// One number to one integer or float.
template <typename Rule> FastScalarValue applyToOne(const Variable* arguments, std::size_t count, Rule rule) {
    if (count != 1 || !arguments[0].isNumeric()) return {};
    const auto result = rule(toDouble(arguments[0]));
    if constexpr (std::is_same_v<decltype(result), const int>)
        return makeFastScalarInt(result);
    else
        return makeFastScalarFloat(result);
}

bool allNumeric(const Variable* arguments, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (!arguments[i].isNumeric()) return false;
    return count > 0;
}

FastScalarValue scalarLength(const OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1 || !(arguments[0].isString() || arguments[0].isArray() || arguments[0].isTable())) return {};
    return makeFastScalarInt(engine.arrayLength(arguments[0]));
}

/// A selection of one byte is a number, an empty one is nil, a longer one is no scalar.
FastScalarValue scalarByte(const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) return {};
    if (count > 1 && !arguments[1].isNumeric()) return {};
    if (count > 2 && !arguments[2].isNumeric()) return {};
    const std::string& text = arguments[0].asString();
    const int from = count > 1 ? toInt(arguments[1]) : 1;
    const ByteRange range = selectBytes(text.size(), from, count > 2 ? toInt(arguments[2]) : from);
    if (range.isEmpty()) return makeFastScalarNil();
    if (range.size() > 1) return {};
    return makeFastScalarInt(static_cast<unsigned char>(text[range.first]));
}

FastScalarValue scalarAbsolute(const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isNumeric()) return {};
    if (arguments[0].type == VarType::Float) return makeFastScalarFloat(std::fabs(arguments[0].asFloat()));
    return makeFastScalarInt(absoluteOf(toInt(arguments[0])));
}

FastScalarValue scalarLogarithm(const Variable* arguments, std::size_t count) {
    if (count > 2 || !allNumeric(arguments, count) || !canTakeLogarithm(toDouble(arguments[0]))) return {};
    if (count == 1) return makeFastScalarFloat(naturalLogarithmOf(toDouble(arguments[0])));
    if (!isLogarithmBase(toDouble(arguments[1]))) return {};
    return makeFastScalarFloat(logarithmOf(toDouble(arguments[0]), toDouble(arguments[1])));
}

FastScalarValue scalarSquareRoot(const Variable* arguments, std::size_t count) {
    if (count != 1 || !arguments[0].isNumeric() || !canTakeSquareRoot(toDouble(arguments[0]))) return {};
    return makeFastScalarFloat(squareRootOf(toDouble(arguments[0])));
}

} // namespace

FastScalarValue nativeBuiltinScalar(const OstrelScript& engine, BuiltinId id, const Variable* arguments,
                                    std::size_t count) {
    switch (id) {
    case BuiltinId::Len: return scalarLength(engine, arguments, count);
    case BuiltinId::StringLen:
        if (count != 1 || !arguments[0].isString()) return {};
        return makeFastScalarInt(static_cast<int>(arguments[0].asString().size()));
    case BuiltinId::StringByte: return scalarByte(arguments, count);
    case BuiltinId::MathFloor: return applyToOne(arguments, count, floorOf);
    case BuiltinId::MathCeil: return applyToOne(arguments, count, ceilingOf);
    case BuiltinId::MathAbs: return scalarAbsolute(arguments, count);
    case BuiltinId::MathMin:
        if (!allNumeric(arguments, count)) return {};
        return fastScalarFromVariable(arguments[smallestOf(arguments, count)]);
    case BuiltinId::MathMax:
        if (!allNumeric(arguments, count)) return {};
        return fastScalarFromVariable(arguments[largestOf(arguments, count)]);
    case BuiltinId::MathSin: return applyToOne(arguments, count, sineOf);
    case BuiltinId::MathCos: return applyToOne(arguments, count, cosineOf);
    case BuiltinId::MathRad: return applyToOne(arguments, count, radiansOf);
    case BuiltinId::MathLog: return scalarLogarithm(arguments, count);
    case BuiltinId::MathSqrt: return scalarSquareRoot(arguments, count);
    case BuiltinId::Utf8Len:
        if (count != 1 || !arguments[0].isString()) return {};
        return makeFastScalarInt(countCharacters(arguments[0].asString()));
    default: return {};
    }
}

FastScalarValue OstrelScript::tryEvaluateNativeBuiltinScalar(BuiltinId id, const Variable* arguments,
                                                             std::size_t count) {
    return nativeBuiltinScalar(*this, id, arguments, count);
}
