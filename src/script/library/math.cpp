// The table `math`.
//
// Everything is computed in double and narrowed once, at the end: to a float, or to an integer held to the 32-bit
// range. The formulas are functions of their own, because the scalar forms use the same ones.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <numbers>

int floorOf(double number) { return saturateToInt(std::floor(number)); }
int ceilingOf(double number) { return saturateToInt(std::ceil(number)); }
int absoluteOf(int number) {
    const auto bits = static_cast<unsigned>(number); // the smallest integer has no counterpart and stays as it is
    return static_cast<int>(number < 0 ? 0U - bits : bits);
}
float sineOf(double radians) { return static_cast<float>(std::sin(radians)); }
float cosineOf(double radians) { return static_cast<float>(std::cos(radians)); }
float radiansOf(double degrees) { return static_cast<float>(degrees * std::numbers::pi / 180.0); }
bool canTakeLogarithm(double number) { return number > 0.0; }
bool isLogarithmBase(double base) { return base > 0.0 && base != 1.0; }
float naturalLogarithmOf(double number) { return static_cast<float>(std::log(number)); }
float logarithmOf(double number, double base) { return static_cast<float>(std::log(number) / std::log(base)); }
bool canTakeSquareRoot(double number) { return number >= 0.0; }
float squareRootOf(double number) { return static_cast<float>(std::sqrt(number)); }

namespace {

template <typename Precedes> std::size_t extremeOf(const Variable* arguments, std::size_t count, Precedes precedes) {
    std::size_t best = 0;
    double bestNumber = toDouble(arguments[0]);
    for (std::size_t i = 1; i < count; ++i) {
        const double number = toDouble(arguments[i]);
        if (!precedes(number, bestNumber)) continue;
        best = i;
        bestNumber = number;
    }
    return best;
}

} // namespace

std::size_t smallestOf(const Variable* arguments, std::size_t count) {
    return extremeOf(arguments, count, [](double number, double best) { return number < best; });
}

std::size_t largestOf(const Variable* arguments, std::size_t count) {
    return extremeOf(arguments, count, [](double number, double best) { return number > best; });
}

namespace {

Variable floorFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['floor'](x) requires exactly 1 argument");
    return floorOf(toDouble(arguments[0]));
}

Variable ceilFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['ceil'](x) requires exactly 1 argument");
    return ceilingOf(toDouble(arguments[0]));
}

Variable absFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['abs'](x) requires exactly 1 argument");
    if (arguments[0].type == VarType::Float) return std::fabs(arguments[0].asFloat());
    return absoluteOf(toInt(arguments[0]));
}

Variable minFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count == 0) fail("math['min'](...) requires at least 1 argument");
    return arguments[smallestOf(arguments, count)];
}

Variable maxFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count == 0) fail("math['max'](...) requires at least 1 argument");
    return arguments[largestOf(arguments, count)];
}

Variable sinFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['sin'](x) requires exactly 1 argument");
    return sineOf(toDouble(arguments[0]));
}

Variable cosFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['cos'](x) requires exactly 1 argument");
    return cosineOf(toDouble(arguments[0]));
}

Variable radFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['rad'](x) requires exactly 1 argument");
    return radiansOf(toDouble(arguments[0]));
}

Variable logFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 && count != 2) fail("math['log'](x[, base]) requires 1 or 2 arguments");
    const double number = toDouble(arguments[0]);
    if (!canTakeLogarithm(number)) fail("math['log'] requires a positive value");
    if (count == 1) return naturalLogarithmOf(number);
    const double base = toDouble(arguments[1]);
    if (!isLogarithmBase(base)) fail("math['log'] base must be positive and not equal to 1");
    return logarithmOf(number, base);
}

Variable sqrtFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['sqrt'](x) requires exactly 1 argument");
    const double number = toDouble(arguments[0]);
    if (!canTakeSquareRoot(number)) fail("math['sqrt'] requires a non-negative value");
    return squareRootOf(number);
}

} // namespace

void registerMathLibrary(OstrelScript& engine) {
    registerLibraryTable(engine, "math",
                         {{"floor", floorFunction},
                          {"ceil", ceilFunction},
                          {"abs", absFunction},
                          {"min", minFunction},
                          {"max", maxFunction},
                          {"sin", sinFunction},
                          {"cos", cosFunction},
                          {"rad", radFunction},
                          {"log", logFunction},
                          {"sqrt", sqrtFunction},
                          {"random", randomFunction},
                          {"randomSeed", randomSeedFunction}});
}
