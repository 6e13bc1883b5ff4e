// Numbers from text and numbers from chance.

#include "script/library/functions.h"

#include "script/token.h"

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

constexpr int decimalBase = 10;
constexpr int smallestBase = 2;
constexpr int largestBase = 36;

/// The whole text as an integer in this base: an optional sign and digits, within 32 bits.
bool parseInteger(std::string_view text, int base, int& out) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') return false;
    }
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, out, base);
    return parsed.ec == std::errc() && parsed.ptr == end;
}

/// The whole text as a decimal number. Too large a one is infinite, too small a one 0; the hexadecimal forms, the
/// words and the leading blanks that the C library would take are no numbers of the language.
bool parseDecimal(const std::string& text, float& out) {
    if (text.empty() || text.find_first_not_of("+-0123456789.eE") != std::string::npos) return false;
    char* stop = nullptr;
    out = std::strtof(text.c_str(), &stop);
    return stop == text.c_str() + text.size();
}

Variable numberInText(const std::string& text, int base) {
    int number = 0;
    if (base != decimalBase) return parseInteger(text, base, number) ? Variable(number) : Variable();
    if (text.find_first_of(".eE") == std::string::npos && parseInteger(text, base, number)) return number;
    float fraction = 0.0F;
    return parseDecimal(text, fraction) ? Variable(fraction) : Variable();
}

} // namespace

Variable toNumberFunction(OstrelScript&, const Variable* arguments, std::size_t count) {
    if (count != 1 && count != 2) fail("toNumber(x[, base]) requires 1 or 2 arguments");
    const int base = count == 2 ? toInt(arguments[1]) : decimalBase;
    if (base < smallestBase || base > largestBase) return {};
    const Variable& value = arguments[0];
    if (value.type == VarType::Integer || value.type == VarType::Float) return value;
    if (!value.isString()) return {};
    return numberInText(value.asString(), base);
}

namespace {

constexpr float unitOfRandomFloat = 2.3283064e-10F; // 1 / 2^32

/// A drawn value in a range of so many numbers from `minimum` on. The remainder favours small results a little; it
/// stays, because scripts count on the sequence that it gives. A range of all 2^32 numbers wraps to the size 0.
int drawnInRange(std::uint32_t drawn, std::uint32_t minimum, std::uint32_t size) {
    return static_cast<int>((size == 0 ? drawn : drawn % size) + minimum);
}

} // namespace

Variable randomFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    // One number is drawn in every case: a call that fails moves the sequence on like one that succeeds.
    const auto drawn = static_cast<std::uint32_t>(engine.randomGenerator()());
    if (count == 0) return static_cast<float>(drawn) * unitOfRandomFloat;
    if (count == 1) {
        if (arguments[0].type != VarType::Integer) fail("random function with one argument requires an integer");
        const int maximum = arguments[0].asInt();
        if (maximum < 1) fail("random function requires a positive maximum value");
        return drawnInRange(drawn, 1, static_cast<std::uint32_t>(maximum));
    }
    if (count != 2) fail("random function takes 0, 1, or 2 arguments");
    if (arguments[0].type != VarType::Integer || arguments[1].type != VarType::Integer)
        fail("random function with two arguments requires integers");
    const int minimum = arguments[0].asInt();
    const int maximum = arguments[1].asInt();
    if (minimum > maximum) fail("random function requires min <= max");
    const auto first = static_cast<std::uint32_t>(minimum);
    return drawnInRange(drawn, first, static_cast<std::uint32_t>(maximum) - first + 1);
}

Variable randomSeedFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("math['randomSeed'](seed) requires exactly 1 argument");
    engine.randomGenerator().seed(static_cast<std::uint32_t>(toInt(arguments[0])));
    return {};
}
