// The global functions that the host adds: a sum, and lengths in the units that level designers think in.
//
// A world unit of height comes from feet; the other functions bring feet and inches, or metres and centimetres, to
// feet. Their arity messages stand as they are, without a function name before them.

#include "host/binding.h"
#include "host/index.h"
#include "host/registration.h"

#include <stdexcept>

namespace {

constexpr double inchesPerFoot = 12.0;
constexpr double feetPerMetre = 3.280839895;
constexpr double feetPerCentimetre = 0.032808399;
constexpr double eyeLevelFeet = 5.8825; // the height that is 0 in the world
constexpr double heightUnitsPerFoot = 184.95;

void requireCount(const std::vector<Variable>& arguments, std::size_t count, const char* message) {
    if (arguments.size() != count) throw std::runtime_error(message);
}

Variable addBinding(const std::vector<Variable>& arguments) {
    requireCount(arguments, 2, "add requires exactly 2 arguments");
    const double left = numericValue(arguments[0], "add", "left");
    const double right = numericValue(arguments[1], "add", "right");
    const auto sum = static_cast<float>(left + right);
    if (arguments[0].type == VarType::Float || arguments[1].type == VarType::Float) return sum;
    return saturateToInt(static_cast<double>(sum));
}

Variable dFeetBinding(const std::vector<Variable>& arguments) {
    requireCount(arguments, 2, "dFeet(feet, inches) requires exactly 2 arguments");
    const double feet = numericValue(arguments[0], "dFeet", "feet");
    const double inches = numericValue(arguments[1], "dFeet", "inches");
    return static_cast<float>(feet + inches / inchesPerFoot);
}

Variable dMetresBinding(const std::vector<Variable>& arguments) {
    requireCount(arguments, 2, "dMetres(metres, centimetres) requires exactly 2 arguments");
    const double metres = numericValue(arguments[0], "dMetres", "metres");
    const double centimetres = numericValue(arguments[1], "dMetres", "centimetres");
    return static_cast<float>(metres * feetPerMetre + centimetres * feetPerCentimetre);
}

Variable calcHeightBinding(const std::vector<Variable>& arguments) {
    requireCount(arguments, 1, "calcHeight(feet) requires exactly 1 argument");
    const double feet = numericValue(arguments[0], "calcHeight", "feet");
    return static_cast<float>((feet - eyeLevelFeet) * heightUnitsPerFoot);
}

void publish(const char* name, Variable (*function)(const std::vector<Variable>&)) {
    engine.pushVariable(name, engine.makeNativeCallable(function, name));
}

} // namespace

void registerGlobalHelpers() {
    publish("add", addBinding);
    publish("dFeet", dFeetBinding);
    publish("dMetres", dMetresBinding);
    publish("calcHeight", calcHeightBinding);
}
