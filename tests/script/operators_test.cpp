// The operators: arithmetic, hyperoperators, order, equality, and the elements of containers.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr int smallest = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The result's type name and text, or the message behind "! ".
std::string applied(const Variable& left, BinaryOperator binaryOperator, const Variable& right) {
    static const OstrelScript engine;
    try {
        const Variable result = engine.performOperation(left, binaryOperator, right);
        return engine.typeName(result.type) + " " + result.toString();
    } catch (const std::exception& error) {
        return std::string("! ") + error.what();
    }
}

std::string add(const Variable& left, const Variable& right) { return applied(left, BinaryOperator::Add, right); }
std::string divide(const Variable& left, const Variable& right) { return applied(left, BinaryOperator::Divide, right); }
std::string divideWhole(const Variable& left, const Variable& right) {
    return applied(left, BinaryOperator::IntegerDivide, right);
}
std::string modulo(const Variable& left, const Variable& right) { return applied(left, BinaryOperator::Modulo, right); }
std::string power(const Variable& left, const Variable& right) { return applied(left, BinaryOperator::Power, right); }
std::string tetrate(const Variable& height, const Variable& base) {
    return applied(height, BinaryOperator::Tetration, base);
}
std::string pentate(const Variable& base, const Variable& count) {
    return applied(base, BinaryOperator::Pentation, count);
}

const BinaryOperator arithmetic[] = {BinaryOperator::Add,          BinaryOperator::Subtract, BinaryOperator::Multiply,
                                     BinaryOperator::Divide,       BinaryOperator::Modulo,   BinaryOperator::Power,
                                     BinaryOperator::IntegerDivide};

} // namespace

// --- Sum, difference, product ---

TEST(Arithmetic, TwoIntegersGiveAnIntegerThatWraps) {
    EXPECT_EQ(add(2, 3), "int 5");
    EXPECT_EQ(add(largest, 1), "int -2147483648");
    EXPECT_EQ(applied(smallest, BinaryOperator::Subtract, 1), "int 2147483647");
    EXPECT_EQ(applied(65536, BinaryOperator::Multiply, 65536), "int 0");
    EXPECT_EQ(applied(smallest, BinaryOperator::Multiply, -1), "int -2147483648");
    EXPECT_EQ(applied(-7, BinaryOperator::Multiply, 6), "int -42");
}

TEST(Arithmetic, ABooleanCountsAsAnInteger) {
    EXPECT_EQ(add(true, true), "int 2");
    EXPECT_EQ(add(true, 5), "int 6");
    EXPECT_EQ(applied(false, BinaryOperator::Subtract, true), "int -1");
    EXPECT_EQ(applied(true, BinaryOperator::Multiply, 2.5F), "float 2.500000");
    EXPECT_EQ(add(true, 0.5F), "float 1.500000");
}

TEST(Arithmetic, AFloatOnEitherSideMakesAFloatThroughDouble) {
    EXPECT_EQ(add(1, 0.5F), "float 1.500000");
    EXPECT_EQ(add(0.5F, 1), "float 1.500000");
    EXPECT_EQ(applied(5, BinaryOperator::Subtract, 5.0F), "float 0.000000");
    // The integer isn't narrowed before the sum: 16777217 has no float, 16777217 - 16777216 has.
    EXPECT_EQ(applied(16777217, BinaryOperator::Subtract, 16777216.0F), "float 1.000000");
    EXPECT_EQ(applied(3e38F, BinaryOperator::Multiply, 10), "float inf");
    EXPECT_NE(applied(infinity, BinaryOperator::Subtract, infinity).find("nan"), std::string::npos);
}

TEST(Arithmetic, AStringOnEitherSideOfASumJoinsTexts) {
    EXPECT_EQ(add("a", 1), "string a1");
    EXPECT_EQ(add(1, "a"), "string 1a");
    EXPECT_EQ(add("a", 1.5F), "string a1.500000");
    EXPECT_EQ(add("a", Variable()), "string anot");
    EXPECT_EQ(add(Variable(), "a"), "string nota");
    EXPECT_EQ(add("a", true), "string atrue");
    EXPECT_EQ(add("a", makeArray({1, "b"})), "string a[1, b]");
    EXPECT_EQ(add(makeTable(), "a"), "string {}a");
    EXPECT_EQ(add("a", makeMulti({})), "string a[multivalue]");
    EXPECT_EQ(add("a", std::vector<char>{'x'}), "string a[unconvertible type]");
    EXPECT_EQ(add("a", static_cast<void*>(nullptr)), "string a$0");
    EXPECT_EQ(add("", ""), "string ");
}

TEST(Arithmetic, OtherPairingsAreUnsupportedUnderTheOperatorsOwnSign) {
    const std::pair<BinaryOperator, const char*> signs[] = {{BinaryOperator::Add, "+"},
                                                            {BinaryOperator::Subtract, "-"},
                                                            {BinaryOperator::Multiply, "*"},
                                                            {BinaryOperator::Divide, "/"},
                                                            {BinaryOperator::Modulo, "%"},
                                                            {BinaryOperator::Power, "^"},
                                                            {BinaryOperator::IntegerDivide, "\\\\"}};
    for (const auto& [binaryOperator, sign] : signs) {
        const std::string expected = std::string("! Unsupported operation '") + sign + "' between types";
        EXPECT_EQ(applied(Variable(), binaryOperator, 1), expected);
        EXPECT_EQ(applied(1, binaryOperator, Variable()), expected);
        EXPECT_EQ(applied(makeArray({}), binaryOperator, makeArray({})), expected);
        EXPECT_EQ(applied(makeTable(), binaryOperator, 0), expected) << "the types are looked at before the divisor";
        EXPECT_EQ(applied(1, binaryOperator, makeMulti({1})), expected);
        EXPECT_EQ(applied(static_cast<void*>(nullptr), binaryOperator, 1), expected);
        if (binaryOperator == BinaryOperator::Add) continue;
        EXPECT_EQ(applied("4", binaryOperator, 2), expected);
        EXPECT_EQ(applied(4, binaryOperator, "2"), expected);
    }
}

TEST(Arithmetic, OperatorsOfOtherKindsAreNone) {
    EXPECT_EQ(applied(1, BinaryOperator::Less, 2), "! Unsupported operation: <");
    EXPECT_EQ(applied("a", BinaryOperator::NotEqual, 2), "! Unsupported operation: !");
    EXPECT_EQ(applied(Variable(), BinaryOperator::And, 2), "! Unsupported operation: a");
    EXPECT_EQ(applied(1, BinaryOperator::None, 2), "! Unsupported operation: ");
}

// --- Divisions ---

TEST(Division, AlwaysGivesAFloat) {
    EXPECT_EQ(divide(4, 2), "float 2.000000");
    EXPECT_EQ(divide(7, 2), "float 3.500000");
    EXPECT_EQ(divide(true, 2), "float 0.500000");
    EXPECT_EQ(divide(-1, infinity), "float -0.000000");
    EXPECT_EQ(divide(largest, 1), "float 2147483648.000000");
}

TEST(Division, ByZeroIsAnErrorInAllThreeForms) {
    for (const Variable& zero : {Variable(0), Variable(0.0F), Variable(-0.0F), Variable(false)}) {
        EXPECT_EQ(divide(1, zero), "! Division by zero");
        EXPECT_EQ(divideWhole(1, zero), "! Division by zero");
        EXPECT_EQ(modulo(1, zero), "! Division by zero");
        EXPECT_EQ(modulo(1.5F, zero), "! Division by zero");
    }
    EXPECT_EQ(divideWhole(7, 0.9F), "! Division by zero") << "the divisor is read as an integer";
    EXPECT_EQ(divideWhole(7, notANumber), "! Division by zero");
    EXPECT_EQ(modulo(7, 0.9F), "float 0.700000");
}

TEST(Division, WholeOneTruncatesAndGivesAnInteger) {
    EXPECT_EQ(divideWhole(7, 2), "int 3");
    EXPECT_EQ(divideWhole(-7, 2), "int -3");
    EXPECT_EQ(divideWhole(7, -2), "int -3");
    EXPECT_EQ(divideWhole(7.9F, 2.9F), "int 3");
    EXPECT_EQ(divideWhole(true, true), "int 1");
    EXPECT_EQ(divideWhole(smallest, -1), "int -2147483648");
    EXPECT_EQ(divideWhole(3e9F, 1), "int 2147483647");
    EXPECT_EQ(divideWhole(-infinity, 1), "int -2147483648");
    EXPECT_EQ(divideWhole(notANumber, 1), "int 0");
}

TEST(Division, ModuloTakesTheSignOfTheDividend) {
    EXPECT_EQ(modulo(7, 3), "int 1");
    EXPECT_EQ(modulo(-7, 3), "int -1");
    EXPECT_EQ(modulo(7, -3), "int 1");
    EXPECT_EQ(modulo(smallest, -1), "int 0");
    EXPECT_EQ(modulo(true, 2), "int 1");
    EXPECT_EQ(modulo(7.5F, 2), "float 1.500000");
    EXPECT_EQ(modulo(-7.5F, 2), "float -1.500000");
    EXPECT_EQ(modulo(7, 2.5F), "float 2.000000");
    EXPECT_EQ(modulo(7, infinity), "float 7.000000");
    EXPECT_EQ(modulo(16777217, 2.0F), "float 0.000000") << "both are floats before the remainder is taken";
}

// --- Powers ---

TEST(Power, OfIntegersIsAnIntegerWhileItFits) {
    EXPECT_EQ(power(2, 10), "int 1024");
    EXPECT_EQ(power(2, 30), "int 1073741824");
    EXPECT_EQ(power(2, 31), "float 2147483648.000000");
    EXPECT_EQ(power(-2, 31), "int -2147483648");
    EXPECT_EQ(power(-2, 32), "float 4294967296.000000");
    EXPECT_EQ(power(46340, 2), "int 2147395600");
    EXPECT_EQ(power(46341, 2), "float 2147488256.000000");
    EXPECT_EQ(power(largest, 1), "int 2147483647");
    EXPECT_EQ(power(-3, 3), "int -27");
    EXPECT_EQ(power(1, largest), "int 1");
    EXPECT_EQ(power(-1, largest), "int -1");
    EXPECT_EQ(power(0, 5), "int 0");
}

TEST(Power, WithExponentZeroIsOne) {
    EXPECT_EQ(power(5, 0), "int 1");
    EXPECT_EQ(power(0, 0), "int 1");
    EXPECT_EQ(power(0.0F, 0), "float 1.000000");
    EXPECT_EQ(power(5, 0.0F), "float 1.000000");
    EXPECT_EQ(power(notANumber, 0), "float 1.000000");
}

TEST(Power, OfANegativeExponentIsAFloat) {
    EXPECT_EQ(power(2, -1), "float 0.500000");
    EXPECT_EQ(power(1, -1), "float 1.000000") << "also where it is whole";
    EXPECT_EQ(power(-2, -2), "float 0.250000");
}

TEST(Power, OfFloatsAndBooleansIsAFloat) {
    EXPECT_EQ(power(2.0F, 3), "float 8.000000");
    EXPECT_EQ(power(2, 3.0F), "float 8.000000");
    EXPECT_EQ(power(4, 0.5F), "float 2.000000");
    EXPECT_EQ(power(true, 2), "float 1.000000");
    EXPECT_EQ(power(2, true), "float 2.000000");
}

TEST(Power, WithoutAFiniteResultIsAnError) {
    EXPECT_EQ(power(0, -1), "! Invalid exponentiation result");
    EXPECT_EQ(power(-8, 0.5F), "! Invalid exponentiation result");
    EXPECT_EQ(power(10, 400), "! Invalid exponentiation result");
    EXPECT_EQ(power(infinity, 2), "! Invalid exponentiation result");
    EXPECT_EQ(power(notANumber, 1), "! Invalid exponentiation result");
}

TEST(Power, BeyondTheLargestFloatIsInfinite) {
    EXPECT_EQ(power(10, 300), "float inf");
    EXPECT_EQ(power(-10, 301), "float -inf");
    EXPECT_EQ(power(10, -300), "float 0.000000");
}

// --- Hyperoperators ---

TEST(Tetration, TakesTheHeightOnTheLeft) {
    EXPECT_EQ(tetrate(3, 2), "int 16");
    EXPECT_EQ(tetrate(2, 3), "int 27");
    EXPECT_EQ(tetrate(4, 2), "int 65536");
    EXPECT_EQ(tetrate(3, 3), "float 7625597517824.000000");
}

TEST(Tetration, HasItsSpecialBasesAndHeights) {
    EXPECT_EQ(tetrate(0, 5), "int 1");
    EXPECT_EQ(tetrate(1, 5), "int 5");
    EXPECT_EQ(tetrate(largest, 1), "int 1");
    EXPECT_EQ(tetrate(0, 0), "int 1");
    EXPECT_EQ(tetrate(1, 0), "int 0");
    EXPECT_EQ(tetrate(2, 0), "int 1");
    EXPECT_EQ(tetrate(largest, 0), "int 0");
}

TEST(Tetration, IsAFloatIfEitherOperandIsOne) {
    EXPECT_EQ(tetrate(2, 2.0F), "float 4.000000");
    EXPECT_EQ(tetrate(2.0F, 2), "float 4.000000");
    EXPECT_EQ(tetrate(0, 2.5F), "float 1.000000");
    EXPECT_EQ(tetrate(true, 5), "int 5");
    EXPECT_EQ(tetrate(2, true), "int 1");
    EXPECT_EQ(tetrate(false, false), "int 1");
    EXPECT_EQ(tetrate(2, -2), "float 0.250000") << "not near a whole number";
}

TEST(Tetration, RefusesWhatHasNoResult) {
    EXPECT_EQ(tetrate(5, 2), "! Invalid tetration result");
    EXPECT_EQ(tetrate(2, 30), "! Invalid tetration result") << "finite as a double, but no float";
    EXPECT_EQ(tetrate(3, -5), "! Invalid tetration result");
    EXPECT_EQ(tetrate(2, infinity), "! tetration base must be finite");
    EXPECT_EQ(tetrate(2, notANumber), "! tetration base must be finite");
    EXPECT_EQ(tetrate(infinity, 2), "! tetration height must be finite");
    EXPECT_EQ(tetrate(2.5F, 2), "! tetration height must be an integer");
    EXPECT_EQ(tetrate(2.00001F, 2), "! tetration height must be an integer");
    EXPECT_EQ(tetrate(-1, 2), "! tetration height must be a non-negative integer");
    EXPECT_EQ(tetrate(2147483648.0F, 2), "! tetration height must be a non-negative integer");
    for (const Variable& value : {Variable(), Variable("2"), makeArray({2})}) {
        EXPECT_EQ(tetrate(value, 2), "! tetration requires numeric operands");
        EXPECT_EQ(tetrate(2, value), "! tetration requires numeric operands");
    }
}

TEST(Tetration, ANearlyWholeHeightCounts) {
    EXPECT_EQ(tetrate(2.0000005F, 2), "float 4.000000");
    EXPECT_EQ(tetrate(-0.0000005F, 2), "float 1.000000");
}

TEST(Tetration, AnyHeightOfASettlingTowerIsDoneAtOnce) {
    EXPECT_EQ(tetrate(largest, 0.5F), "float 0.641186");
    EXPECT_EQ(tetrate(largest, -1), "int -1");
}

TEST(Tetration, ATowerThatGoesRoundIsFollowedExactly) {
    // -1000, 0, 1, -1000, 0, 1, ...
    EXPECT_EQ(tetrate(1, -1000), "int -1000");
    EXPECT_EQ(tetrate(2, -1000), "int 0");
    EXPECT_EQ(tetrate(3, -1000), "int 1");
    EXPECT_EQ(tetrate(4, -1000), "int -1000");
    EXPECT_EQ(tetrate(5, -1000), "int 0");
    EXPECT_EQ(tetrate(2147483645, -1000), "int 0");
    EXPECT_EQ(tetrate(2147483646, -1000), "int 1");
    EXPECT_EQ(tetrate(2147483647, -1000), "int -1000");
}

TEST(Tetration, LongTowersAreWhatStepByStepGives) {
    for (const float base : {0.01F, 0.05F, 0.06F, 0.3F, 0.9F, 1.2F, 1.4F, -1.0F, -1000.0F, -40.0F}) {
        double value = static_cast<double>(base);
        for (int height = 1; height <= 300 && std::isfinite(value); ++height) {
            EXPECT_EQ(tetrate(height, base), "float " + floatText(static_cast<float>(value))) << base << " " << height;
            value = std::pow(static_cast<double>(base), value);
        }
    }
}

TEST(Pentation, TakesTheBaseOnTheLeft) {
    EXPECT_EQ(pentate(2, 3), "int 65536");
    EXPECT_EQ(pentate(2, 2), "int 4");
    EXPECT_EQ(pentate(3, 2), "float 7625597517824.000000");
}

TEST(Pentation, HasItsSpecialBasesAndCounts) {
    EXPECT_EQ(pentate(2, 0), "int 1");
    EXPECT_EQ(pentate(7, 1), "int 7");
    EXPECT_EQ(pentate(2.5F, 1), "float 2.500000");
    EXPECT_EQ(pentate(1, largest), "int 1");
    EXPECT_EQ(pentate(0, 0), "int 1");
    EXPECT_EQ(pentate(0, 1), "int 0");
    EXPECT_EQ(pentate(0, 2), "int 1");
    EXPECT_EQ(pentate(0, 3), "int 0");
    EXPECT_EQ(pentate(-2, 1), "int -2");
    EXPECT_EQ(pentate(true, 9), "int 1");
    EXPECT_EQ(pentate(9, true), "int 9");
}

TEST(Pentation, RefusesWhatHasNoResult) {
    EXPECT_EQ(pentate(2, 4), "! Invalid pentation result");
    EXPECT_EQ(pentate(3, 3), "! pentation intermediate height must be a non-negative integer");
    EXPECT_EQ(pentate(2.5F, 2), "! pentation intermediate height must be an integer");
    EXPECT_EQ(pentate(-2, 2), "! pentation intermediate height must be a non-negative integer");
    EXPECT_EQ(pentate(infinity, 2), "! pentation base must be finite");
    EXPECT_EQ(pentate(2, infinity), "! pentation count must be finite");
    EXPECT_EQ(pentate(2, 2.5F), "! pentation count must be an integer");
    EXPECT_EQ(pentate(2, -1), "! pentation count must be a non-negative integer");
    for (const Variable& value : {Variable(), Variable("2"), makeTable()}) {
        EXPECT_EQ(pentate(value, 2), "! pentation requires numeric operands");
        EXPECT_EQ(pentate(2, value), "! pentation requires numeric operands");
    }
}

TEST(Pentation, AnyCountThatGoesRoundIsDoneAtOnce) {
    // Read as a height, the base is 0, which gives 1, and height 1 gives the base again.
    EXPECT_EQ(pentate(0.0000001F, largest), "float 0.000000");
    EXPECT_EQ(pentate(0.0000001F, largest - 1), "float 1.000000");
}

// --- Order and equality ---

TEST(Comparison, NumbersCompareAsDoubles) {
    const OstrelScript engine;
    EXPECT_EQ(engine.compareVariables(1, 2), -1);
    EXPECT_EQ(engine.compareVariables(2, 2.0F), 0);
    EXPECT_EQ(engine.compareVariables(true, 0), 1);
    EXPECT_EQ(engine.compareVariables(16777217, 16777216.0F), 1);
    EXPECT_EQ(engine.compareVariables(-infinity, smallest), -1);
    EXPECT_EQ(engine.compareVariables(0.0F, -0.0F), 0);
    EXPECT_EQ(engine.compareVariables(notANumber, 1), 0) << "neither is less";
}

TEST(Comparison, StringsCompareAsBytes) {
    const OstrelScript engine;
    EXPECT_EQ(engine.compareVariables("a", "b"), -1);
    EXPECT_EQ(engine.compareVariables("abc", "ab"), 1);
    EXPECT_EQ(engine.compareVariables("", ""), 0);
    EXPECT_EQ(engine.compareVariables("Z", "a"), -1);
    EXPECT_EQ(engine.compareVariables("\xC3\xA9", "z"), 1);
    EXPECT_EQ(engine.compareVariables(std::string("a\0a", 3), std::string("a\0b", 3)), -1);
}

TEST(Comparison, OtherPairsHaveNoOrder) {
    const OstrelScript engine;
    const auto fault = [&engine](const Variable& left, const Variable& right) {
        return messageOf([&] { engine.compareVariables(left, right); });
    };
    EXPECT_EQ(fault("1", 1), "Cannot compare string with int");
    EXPECT_EQ(fault(Variable(), Variable()), "Cannot compare not with not");
    EXPECT_EQ(fault(1.5F, Variable()), "Cannot compare float with not");
    EXPECT_EQ(fault(true, "a"), "Cannot compare bool with string");
    EXPECT_EQ(fault(makeArray({}), makeTable()), "Cannot compare array with table");
    EXPECT_EQ(fault(makeMulti({}), std::vector<char>()), "Cannot compare multivalue with raw");
    EXPECT_EQ(fault(static_cast<void*>(nullptr), makeRef<ScriptCallable>()), "Cannot compare pointer with function");
}

TEST(Equality, NumbersAreEqualAsDoubles) {
    const OstrelScript engine;
    EXPECT_TRUE(engine.variablesEqual(1, 1.0F));
    EXPECT_TRUE(engine.variablesEqual(true, 1));
    EXPECT_TRUE(engine.variablesEqual(false, -0.0F));
    EXPECT_FALSE(engine.variablesEqual(16777217, 16777216.0F));
    EXPECT_FALSE(engine.variablesEqual(notANumber, notANumber));
}

TEST(Equality, DifferentTypesAreUnequal) {
    const OstrelScript engine;
    EXPECT_FALSE(engine.variablesEqual("1", 1));
    EXPECT_FALSE(engine.variablesEqual(Variable(), false));
    EXPECT_FALSE(engine.variablesEqual(Variable(), 0));
    EXPECT_FALSE(engine.variablesEqual("a", std::vector<char>{'a'}));
    EXPECT_FALSE(engine.variablesEqual(makeArray({}), makeTable()));
    EXPECT_FALSE(engine.variablesEqual(static_cast<void*>(nullptr), 0));
}

TEST(Equality, ContentDecidesForTextAndIdentityForContainers) {
    const OstrelScript engine;
    EXPECT_TRUE(engine.variablesEqual(Variable(), Variable()));
    EXPECT_TRUE(engine.variablesEqual("ab", "ab"));
    EXPECT_FALSE(engine.variablesEqual("ab", std::string("ab\0", 3)));
    EXPECT_TRUE(engine.variablesEqual(std::vector<char>{'a'}, std::vector<char>{'a'}));
    EXPECT_FALSE(engine.variablesEqual(std::vector<char>{'a'}, std::vector<char>{'b'}));
    int place = 0;
    EXPECT_TRUE(engine.variablesEqual(static_cast<void*>(&place), static_cast<void*>(&place)));
    EXPECT_FALSE(engine.variablesEqual(static_cast<void*>(&place), static_cast<void*>(nullptr)));
    for (const Variable& shared : {makeArray({1}), makeTable(), makeMulti({1}), Variable(makeRef<ScriptCallable>())})
        EXPECT_TRUE(engine.variablesEqual(shared, Variable(shared)));
    EXPECT_FALSE(engine.variablesEqual(makeArray({1}), makeArray({1})));
    EXPECT_FALSE(engine.variablesEqual(makeTable(), makeTable()));
    EXPECT_FALSE(engine.variablesEqual(makeMulti({1}), makeMulti({1})));
}

// --- Elements ---

TEST(ElementRead, OfATableIsByTheKeysText) {
    OstrelScript engine;
    const Variable table = makeTable();
    table.asTable()->set("1", "int");
    table.asTable()->set("1.500000", "float");
    table.asTable()->set("true", "bool");
    EXPECT_EQ(engine.getIndexedValue(table, 1).toString(), "int");
    EXPECT_EQ(engine.getIndexedValue(table, "1").toString(), "int");
    EXPECT_EQ(engine.getIndexedValue(table, 1.5F).toString(), "float");
    EXPECT_EQ(engine.getIndexedValue(table, true).toString(), "bool");
    EXPECT_TRUE(engine.getIndexedValue(table, 1.0F).isNil());
    EXPECT_TRUE(engine.getIndexedValue(table, "absent").isNil());
    EXPECT_EQ(messageOf([&] { engine.getIndexedValue(table, Variable()); }),
              "Table key must be string, number, or bool");
}

TEST(ElementRead, OfAnArrayNeverFails) {
    OstrelScript engine;
    const Variable array = makeArray({10, 20, 30});
    EXPECT_EQ(engine.getIndexedValue(array, 1).asInt(), 10);
    EXPECT_EQ(engine.getIndexedValue(array, 3.0F).asInt(), 30);
    for (const Variable& key : {Variable(0), Variable(-1), Variable(4), Variable(largest), Variable(smallest),
                                Variable(1.5F), Variable(2147483648.0F), Variable(infinity), Variable(notANumber),
                                Variable("1"), Variable(true), Variable(), makeArray({1})})
        EXPECT_TRUE(engine.getIndexedValue(array, key).isNil()) << key.toString();
}

TEST(ElementRead, OfAStringIsAByteOrAMethod) {
    OstrelScript engine;
    EXPECT_EQ(engine.getIndexedValue("abc", 2).toString(), "b");
    for (const int index : {0, -1, 4, largest, smallest}) EXPECT_TRUE(engine.getIndexedValue("abc", index).isNil());
    EXPECT_TRUE(engine.getIndexedValue("abc", "upper").isFunction());
    EXPECT_TRUE(engine.getIndexedValue("abc", "no such method").isNil());
    for (const Variable& key : {Variable(1.0F), Variable(true), Variable(), makeArray({})})
        EXPECT_EQ(messageOf([&] { engine.getIndexedValue("abc", key); }),
                  "String index must be an int or string method name");
}

TEST(ElementRead, AMethodNeedsTheGlobalTableAndAFunctionInIt) {
    OstrelScript engine;
    engine.pullVariable("string").asTable()->set("number", 5);
    EXPECT_TRUE(engine.getIndexedValue("abc", "number").isNil());
    engine.pushVariable("string", 5);
    EXPECT_TRUE(engine.getIndexedValue("abc", "upper").isNil());
    engine.pushVariable("string", Variable());
    EXPECT_TRUE(engine.getIndexedValue("abc", "upper").isNil());
}

TEST(ElementRead, AMethodPutsTheStringBeforeTheArguments) {
    OstrelScript engine;
    const Variable method = engine.getIndexedValue("abc", "sub");
    EXPECT_EQ(engine.callCallable(method, {2, 3}).toString(), "bc");
    ASSERT_TRUE(static_cast<bool>(method.asFunction()->nativeFunction));
    EXPECT_EQ(method.asFunction()->nativeFunction({2}).toString(), "bc");
}

TEST(ElementRead, OtherTypesHaveNoElements) {
    OstrelScript engine;
    for (const Variable& value :
         {Variable(), Variable(5), Variable(1.5F), Variable(true), Variable(static_cast<void*>(nullptr)),
          makeMulti({1}), Variable(std::vector<char>{'a'}), Variable(makeRef<ScriptCallable>())})
        EXPECT_EQ(messageOf([&] { engine.getIndexedValue(value, 1); }), "Indexing requires an array, table, or string");
}

TEST(ElementWrite, AnArrayIsReplacedOrGrown) {
    OstrelScript engine;
    Variable array = makeArray({1, 2});
    engine.setIndexedValue(array, 2, "x", false);
    engine.setIndexedValue(array, 4.0F, "y", true);
    EXPECT_EQ(array.toString(), "[1, x, not, y]");
    EXPECT_EQ(messageOf([&] { engine.setIndexedValue(array, 5, 0, false); }), "Array index out of range");
    EXPECT_EQ(array.asArray()->size(), 4U);
}

TEST(ElementWrite, AnArrayWithAnotherKeyBecomesATable) {
    OstrelScript engine;
    for (const Variable& key : {Variable(0), Variable(-1), Variable(1.5F), Variable("k"), Variable(true)}) {
        Variable array = makeArray({1, 2});
        const Variable other = array;
        engine.setIndexedValue(array, key, 9, true);
        ASSERT_TRUE(array.isTable());
        EXPECT_EQ(array.asTable()->size(), 3U);
        EXPECT_EQ(array.asTable()->find(engine.keyToString(key))->asInt(), 9);
        EXPECT_EQ(other.toString(), "[1, 2]");
    }
}

TEST(ElementWrite, AKeyThatNothingTakesLeavesAnArrayAnArray) {
    OstrelScript engine;
    Variable array = makeArray({1});
    EXPECT_EQ(messageOf([&] { engine.setIndexedValue(array, Variable(), 9, true); }),
              "Table key must be string, number, or bool");
    EXPECT_TRUE(array.isArray());
}

TEST(ElementWrite, WithoutCreationAnUnusableArrayKeyIsAnError) {
    OstrelScript engine;
    Variable array = makeArray({1});
    const auto fault = [&](const Variable& key) {
        return messageOf([&] { engine.setIndexedValue(array, key, 9, false); });
    };
    for (const int key : {0, -1, smallest}) EXPECT_EQ(fault(key), "Array index must be >= 1");
    for (const Variable& key :
         {Variable("k"), Variable(1.5F), Variable(true), Variable(), Variable(0.0F), makeArray({})})
        EXPECT_EQ(fault(key), "Array index must be an int") << key.toString();
}

TEST(ElementWrite, ATableNeedsTheKeyUnlessItIsCreated) {
    OstrelScript engine;
    Variable table = makeTable();
    EXPECT_EQ(messageOf([&] { engine.setIndexedValue(table, 1.5F, 1, false); }), "Table key not found: 1.500000");
    EXPECT_TRUE(table.asTable()->empty());
    engine.setIndexedValue(table, "k", 1, true);
    const std::uint64_t version = table.asTable()->mutationVersion();
    engine.setIndexedValue(table, "k", 2, false);
    engine.setIndexedValue(table, "k", Variable(), true);
    EXPECT_EQ(table.asTable()->mutationVersion(), version) << "a replaced value is no change of the keys";
    EXPECT_TRUE(table.asTable()->contains("k"));
    EXPECT_EQ(messageOf([&] { engine.setIndexedValue(table, Variable(), 1, true); }),
              "Table key must be string, number, or bool");
}

TEST(ElementWrite, AStringTakesOneByteAtAnIntegerInside) {
    OstrelScript engine;
    Variable text = "abc";
    engine.setIndexedValue(text, 3, "X", false);
    EXPECT_EQ(text.toString(), "abX");
    const auto fault = [&](const Variable& key, const Variable& value) {
        return messageOf([&] { engine.setIndexedValue(text, key, value, true); });
    };
    for (const Variable& key : {Variable(1.0F), Variable("1"), Variable(true), Variable()})
        EXPECT_EQ(fault(key, 5), "String index must be an int");
    EXPECT_EQ(fault(9, 5), "String element assignment requires a string value");
    EXPECT_EQ(fault(9, "xy"), "String element assignment requires a single-character string");
    EXPECT_EQ(fault(9, ""), "String element assignment requires a single-character string");
    for (const int index : {0, -1, 4, largest, smallest}) EXPECT_EQ(fault(index, "x"), "String index out of range");
    EXPECT_EQ(text.toString(), "abX");
}

TEST(ElementWrite, OtherTypesHaveNoElements) {
    OstrelScript engine;
    for (Variable value : {Variable(), Variable(5), Variable(true), makeMulti({1})}) {
        EXPECT_EQ(messageOf([&] { engine.setIndexedValue(value, 1, 1, true); }),
                  "Indexing requires an array, table, or string");
        EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(value, 1, true); }),
                  "Indexing requires an array or table");
    }
    Variable text = "abc";
    EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(text, 1, true); }), "Indexing requires an array or table");
}

TEST(ElementWrite, AnElementMayBeTheContainerOrComeFromIt) {
    OstrelScript engine;
    Variable array = makeArray({makeArray({7})});
    engine.setIndexedValue(array, 1, (*(*array.asArray())[0].asArray())[0], true);
    EXPECT_EQ(array.toString(), "[7]");
    engine.setIndexedValue(array, 3, array, true);
    EXPECT_EQ(array.toString(), "[7, not, ...]");
    engine.setIndexedValue(array, 3, Variable(), true);
}

TEST(ElementWrite, AnIndexBeyondEveryMachineIsRefused) {
    OstrelScript engine;
    Variable array = makeArray({1});
    for (const Variable& key : {Variable(largest), Variable(1500000000), Variable(2147483648.0F)})
        EXPECT_EQ(messageOf([&] { engine.setIndexedValue(array, key, 1, true); }), "Array index out of range");
    EXPECT_EQ(array.asArray()->size(), 1U);
}

TEST(ElementPlace, IsFoundOrMade) {
    OstrelScript engine;
    Variable array = makeArray({1});
    *engine.getIndexedValueMutable(array, 1, false) = 5;
    EXPECT_TRUE(engine.getIndexedValueMutable(array, 3, true)->isNil());
    EXPECT_EQ(array.toString(), "[5, not, not]");
    EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(array, 4, false); }), "Array index out of range");
    EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(array, 0, false); }), "Array index must be >= 1");
    EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(array, "k", false); }), "Array index must be an int");
    EXPECT_TRUE(engine.getIndexedValueMutable(array, "k", true)->isNil());
    EXPECT_TRUE(array.isTable());
    const std::uint64_t version = array.asTable()->mutationVersion();
    *engine.getIndexedValueMutable(array, "k", true) = 1;
    EXPECT_EQ(array.asTable()->mutationVersion(), version);
    engine.getIndexedValueMutable(array, "new", true);
    EXPECT_EQ(array.asTable()->mutationVersion(), version + 1);
    EXPECT_EQ(messageOf([&] { engine.getIndexedValueMutable(array, "none", false); }), "Table key not found: none");
}

TEST(Length, IsBytesElementsOrNumericLength) {
    const OstrelScript engine;
    EXPECT_EQ(engine.arrayLength("a\xC3\xA9"), 3);
    EXPECT_EQ(engine.arrayLength(makeArray({Variable(), Variable()})), 2);
    const Variable table = makeTable();
    table.asTable()->set(1, 0);
    table.asTable()->set(3, 0);
    table.asTable()->set("k", 0);
    EXPECT_EQ(engine.arrayLength(table), 1);
    for (const Variable& value :
         {Variable(), Variable(5), Variable(true), makeMulti({1, 2}), Variable(std::vector<char>{'a'})})
        EXPECT_EQ(messageOf([&] { engine.arrayLength(value); }), "len(x) expects an array, table, or string");
}

TEST(Arithmetic, EveryPairOfNumbersGivesAValueOrAKnownMessage) {
    const Variable numbers[] = {0,    1,     -1,    2,        largest,   smallest,   true,  false,
                                0.5F, -0.0F, 3e38F, infinity, -infinity, notANumber, 1e-40F};
    for (const Variable& left : numbers)
        for (const Variable& right : numbers)
            for (const BinaryOperator binaryOperator : arithmetic) {
                const std::string result = applied(left, binaryOperator, right);
                const bool isValue = result.rfind("int ", 0) == 0 || result.rfind("float ", 0) == 0;
                EXPECT_TRUE(isValue || result == "! Division by zero" || result == "! Invalid exponentiation result")
                    << left.toString() << " " << static_cast<int>(binaryOperator) << " " << right.toString() << ": "
                    << result;
            }
}
