// Reading arguments, failing, and making tables of native functions.

#include "host/binding.h"
#include "host/index.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Values = std::vector<Variable>;

int anchor = 0; // something to point at

/// The text of the std::runtime_error that an action ends with.
template <typename Action> std::string failureOf(const Action& action) {
    try {
        action();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no failure";
}

/// One value of every type.
const Values& everyType() {
    static const Values values = {Variable(),
                                  Variable(5),
                                  Variable(2.5F),
                                  Variable("text"),
                                  Variable(std::vector<char>{'r'}),
                                  Variable(true),
                                  Variable(static_cast<void*>(&anchor)),
                                  makeArray({}),
                                  makeMulti({Variable(1)}),
                                  makeTable(),
                                  engine.makeNativeCallable([](const Values&) { return Variable(); }, "none")};
    return values;
}

TEST(Binding, AnErrorIsTheFunctionAColonAndTheMessage) {
    EXPECT_EQ(failureOf([] { bindingError("Ostrel.sleep", "milliseconds must be numeric"); }),
              "Ostrel.sleep: milliseconds must be numeric");
}

TEST(Binding, NumbersAreIntegersFloatsAndBooleans) {
    EXPECT_EQ(numericValue(Variable(-7), "f", "a"), -7.0);
    EXPECT_EQ(numericValue(Variable(2.5F), "f", "a"), 2.5);
    EXPECT_EQ(numericValue(Variable(true), "f", "a"), 1.0);
    EXPECT_EQ(numericValue(Variable(false), "f", "a"), 0.0);
    for (const Variable& value : everyType()) {
        if (value.isNumeric()) continue;
        EXPECT_EQ(failureOf([&] { numericValue(value, "T.f", "width"); }), "T.f: width must be numeric");
    }
    EXPECT_EQ(failureOf([] { numericValue(Variable("5"), "T.f", "x"); }), "T.f: x must be numeric");
}

TEST(Binding, OnlyAStringIsAString) {
    EXPECT_EQ(stringValue(Variable("text"), "f", "a"), "text");
    EXPECT_EQ(stringValue(Variable(""), "f", "a"), "");
    for (const Variable& value : everyType()) {
        if (value.isString()) continue;
        EXPECT_EQ(failureOf([&] { stringValue(value, "T.f", "path"); }), "T.f: path must be a string");
    }
}

TEST(Binding, APointerIsItsAddressAndNilIsNull) {
    EXPECT_EQ(pointerValue(Variable(static_cast<void*>(&anchor)), "f", "a"), &anchor);
    EXPECT_EQ(pointerValue(Variable(), "f", "a"), nullptr);
    for (const Variable& value : everyType()) {
        if (value.isNil() || value.type == VarType::Pointer) continue;
        EXPECT_EQ(failureOf([&] { pointerValue(value, "T.f", "image"); }), "T.f: image must be a pointer");
    }
}

TEST(Binding, AFlagIsFalseForNilItselfForABooleanAndTrueForAllElse) {
    for (const Variable& value : everyType()) EXPECT_EQ(flagValue(value), !value.isNil());
    EXPECT_FALSE(flagValue(Variable(false)));
    EXPECT_TRUE(flagValue(Variable(0)));
    EXPECT_TRUE(flagValue(Variable(0.0F)));
    EXPECT_TRUE(flagValue(Variable("")));
}

TEST(Binding, SeveralValuesAreOneMultiValue) {
    const Variable result = returnValues({Variable(1), Variable("b"), Variable()});
    ASSERT_TRUE(result.isMulti());
    ASSERT_EQ(result.asMulti()->values.size(), 3U);
    EXPECT_EQ(result.asMulti()->values[0].asInt(), 1);
    EXPECT_EQ(result.asMulti()->values[1].asString(), "b");
    EXPECT_TRUE(result.asMulti()->values[2].isNil());
}

TEST(Arguments, AMissingOneIsNamedByItsPositionFromOne) {
    const Values one = {Variable(1)};
    const Arguments arguments("T.f", one);
    EXPECT_EQ(arguments.count(), 1U);
    EXPECT_EQ(arguments.number(0, "x"), 1.0);
    EXPECT_EQ(failureOf([&] { arguments.number(1, "y"); }), "T.f: missing argument 2");
    EXPECT_EQ(failureOf([&] { arguments.text(2, "t"); }), "T.f: missing argument 3");
    EXPECT_EQ(failureOf([&] { arguments.pointer(9, "p"); }), "T.f: missing argument 10");
    EXPECT_EQ(failureOf([&] { arguments.at(1); }), "T.f: missing argument 2");
}

TEST(Arguments, ANilIsThereButAMissingFlagIsFalse) {
    const Values one = {Variable()};
    const Arguments arguments("T.f", one);
    EXPECT_EQ(arguments.pointer(0, "image"), nullptr);
    EXPECT_FALSE(arguments.flag(0));
    EXPECT_FALSE(arguments.flag(1));
    EXPECT_EQ(failureOf([&] { arguments.number(0, "x"); }), "T.f: x must be numeric");
}

TEST(Arguments, AnIntegerIsTruncatedAndHeldToItsRange) {
    constexpr float infinite = std::numeric_limits<float>::infinity();
    const Values values = {Variable(2.9F),   Variable(-2.9F),    Variable(1e20F),
                           Variable(-1e20F), Variable(infinite), Variable(std::numeric_limits<float>::quiet_NaN()),
                           Variable(true)};
    const Arguments arguments("T.f", values);
    const std::vector<int> expected = {2, -2, 2147483647, -2147483647 - 1, 2147483647, 0, 1};
    for (std::size_t index = 0; index < expected.size(); ++index) {
        EXPECT_EQ(arguments.integer(index, "x"), expected[index]) << "argument " << index;
    }
}

// --- Tables ---

Variable countArguments(const Arguments& arguments) { return static_cast<int>(arguments.count()); }
Variable typeOfFirst(const Arguments& arguments) { return static_cast<int>(arguments.at(0).type); }
Variable failAlways(const Arguments& arguments) { arguments.fail("as told"); }

Variable testModule() {
    constexpr ModuleEntry entries[] = {
        {"count", countArguments},
        {"countAny", countArguments, 1},
        {"type", typeOfFirst, 0},
        {"fail", failAlways},
    };
    return makeModule("Test", entries);
}

Variable call(const char* key, const Values& arguments) {
    const Variable module = testModule();
    return engine.callCallable(*module.asTable()->find(key), arguments);
}

TEST(Module, ATableHoldsANativeFunctionUnderEachKey) {
    const Variable module = testModule();
    ASSERT_TRUE(module.isTable());
    EXPECT_EQ(module.asTable()->size(), 4U);
    const Variable* entry = module.asTable()->find("count");
    ASSERT_NE(entry, nullptr);
    ASSERT_TRUE(entry->isFunction());
    EXPECT_TRUE(entry->asFunction()->isNative);
    EXPECT_EQ(entry->asFunction()->name, "Test.count");
}

TEST(Module, AnEntryFailsUnderItsQualifiedName) {
    EXPECT_EQ(failureOf([] { call("fail", {}); }), "Test.fail: as told");
    EXPECT_EQ(failureOf([] { call("type", {}); }), "Test.type: missing argument 1");
}

TEST(Module, AMultiValueInTheLastPositionIsTakenApart) {
    const Variable three = makeMulti({Variable(1), Variable(2), Variable(3)});
    EXPECT_EQ(call("count", {three}).asInt(), 3);
    EXPECT_EQ(call("count", {Variable(0), three}).asInt(), 4);
    EXPECT_EQ(call("count", {Variable(0), makeMulti({})}).asInt(), 1);
    EXPECT_EQ(call("count", {makeMulti({three})}).asInt(), 1);
}

TEST(Module, AMultiValueInAnotherPositionStaysOneValue) {
    const Variable three = makeMulti({Variable(1), Variable(2), Variable(3)});
    EXPECT_EQ(call("count", {three, Variable(0)}).asInt(), 2);
    EXPECT_EQ(call("count", {three, three}).asInt(), 4);
}

TEST(Module, AParameterThatTakesAnyValueTakesAMultiValueAsItStands) {
    const Variable two = makeMulti({Variable(1), Variable(2)});
    EXPECT_EQ(call("countAny", {Variable(0), two}).asInt(), 2);
    EXPECT_EQ(call("countAny", {two}).asInt(), 2);
    EXPECT_EQ(call("countAny", {Variable(0), Variable(0), two}).asInt(), 4);
    EXPECT_EQ(call("type", {two}).asInt(), static_cast<int>(VarType::Multi));
}

} // namespace
