// Values: types, copies, truth, text, keys, conversions, and letting go of deep data.

#include "evaluating.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <variant>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr int smallest = std::numeric_limits<int>::min();
constexpr int largest = std::numeric_limits<int>::max();

struct TypeRow {
    VarType type;
    unsigned number;
    const char* name;
    bool truth; // of a value whose content is zero, empty or null
};

const TypeRow typeRows[] = {
    {VarType::Nil, 0, "not", false},
    {VarType::Integer, 1, "int", true},
    {VarType::Float, 2, "float", true},
    {VarType::String, 3, "string", true},
    {VarType::Raw, 4, "raw", true},
    {VarType::Boolean, 5, "bool", false},
    {VarType::Pointer, 6, "pointer", true},
    {VarType::Array, 7, "array", true},
    {VarType::Multi, 8, "multivalue", true},
    {VarType::Table, 9, "table", true},
    {VarType::Function, 10, "function", true},
};

/// A value of the type with nothing in it: zero, empty, null.
Variable emptyOf(VarType type) {
    switch (type) {
    case VarType::Nil: return {};
    case VarType::Integer: return 0;
    case VarType::Float: return 0.0F;
    case VarType::String: return "";
    case VarType::Raw: return std::vector<char>();
    case VarType::Boolean: return false;
    case VarType::Pointer: return static_cast<void*>(nullptr);
    case VarType::Array: return makeArray({});
    case VarType::Multi: return makeMulti({});
    case VarType::Table: return makeTable();
    case VarType::Function: return makeRef<ScriptCallable>();
    }
    return {};
}

} // namespace

TEST(Variable, TypeNumbersAreThoseOfTheFiles) {
    for (const TypeRow& row : typeRows) EXPECT_EQ(static_cast<unsigned>(row.type), row.number) << row.name;
    EXPECT_EQ(sizeof(VarType), 4U);
}

TEST(Variable, EveryConstructorSetsItsType) {
    for (const TypeRow& row : typeRows) EXPECT_EQ(emptyOf(row.type).type, row.type) << row.name;
}

TEST(Variable, TypeNamesAreTheLanguagesOwn) {
    const OstrelScript engine;
    for (const TypeRow& row : typeRows) EXPECT_EQ(engine.typeName(row.type), row.name);
    EXPECT_EQ(engine.typeName(static_cast<VarType>(11)), "unknown");
    EXPECT_EQ(engine.typeName(static_cast<VarType>(0xFFFFFFFF)), "unknown");
}

TEST(Variable, OnlyNilAndFalseAreFalse) {
    const OstrelScript engine;
    for (const TypeRow& row : typeRows) EXPECT_EQ(engine.isTruthy(emptyOf(row.type)), row.truth) << row.name;
    EXPECT_TRUE(engine.isTruthy(true));
}

TEST(Variable, AnUnknownTypeIsFalseAndHasNoText) {
    const OstrelScript engine;
    Variable unknown;
    unknown.type = static_cast<VarType>(11);
    EXPECT_FALSE(engine.isTruthy(unknown));
    EXPECT_EQ(unknown.toString(), "[unconvertible type]");
    unknown.type = VarType::Nil;
}

TEST(Variable, ReadingAnotherTypesAlternativeIsAnInternalFailure) {
    const Variable number = 5;
    EXPECT_THROW(number.asFloat(), std::bad_variant_access);
    EXPECT_THROW(number.asString(), std::bad_variant_access);
    EXPECT_THROW(number.asBool(), std::bad_variant_access);
    EXPECT_THROW(number.asPointer(), std::bad_variant_access);
    EXPECT_THROW(number.asRaw(), std::bad_variant_access);
    EXPECT_THROW(number.asArray(), std::bad_variant_access);
    EXPECT_THROW(number.asTable(), std::bad_variant_access);
    EXPECT_THROW(number.asFunction(), std::bad_variant_access);
    EXPECT_THROW(number.asMulti(), std::bad_variant_access);
    EXPECT_THROW(Variable("5").asInt(), std::bad_variant_access);
    EXPECT_EQ(Variable().asInt(), 0);
}

// --- Copies ---

TEST(VariableCopy, PlainValuesKeepTypeAndContent) {
    int place = 0;
    const Variable values[] = {Variable(), Variable(-7), Variable(1.5F), Variable(true),
                               Variable(static_cast<void*>(&place))};
    for (const Variable& value : values) {
        Variable copy(value);
        EXPECT_EQ(copy.type, value.type);
        EXPECT_EQ(copy.toString(), value.toString());
        Variable assigned = "something that is let go of";
        assigned = value;
        EXPECT_EQ(assigned.type, value.type);
        EXPECT_EQ(assigned.toString(), value.toString());
    }
}

TEST(VariableCopy, StringsAreValues) {
    Variable first = "abc";
    Variable second = first;
    second.editString()[0] = 'X';
    EXPECT_EQ(first.asString(), "abc");
    EXPECT_EQ(second.asString(), "Xbc");
}

TEST(VariableCopy, RawBuffersAreValues) {
    Variable first = std::vector<char>{'a', '\0', 'b'};
    const Variable second = first;
    first = std::vector<char>{'c'};
    EXPECT_EQ(second.asRaw(), (std::vector<char>{'a', '\0', 'b'}));
}

TEST(VariableCopy, ATextThatIsWrittenToIsItsOwn) {
    Variable first = std::string(100, 'a');
    const Variable second = first;
    const Variable literal = first;
    first.editString() += 'b';
    EXPECT_EQ(first.asString(), std::string(100, 'a') + 'b');
    EXPECT_EQ(second.asString(), std::string(100, 'a'));
    const char* const place = first.asString().data();
    first.editString()[0] = 'X';
    EXPECT_EQ(first.asString().data(), place); // one holder writes in place
}

TEST(VariableSize, IsTwoWords) { EXPECT_EQ(sizeof(Variable), 16U); }

TEST(VariableCopy, ContainersFunctionsAndMultiValuesAreShared) {
    const Variable array = makeArray({1});
    const Variable arrayCopy = array;
    arrayCopy.asArray()->push_back(2);
    EXPECT_EQ(array.asArray()->size(), 2U);

    const Variable table = makeTable();
    const Variable tableCopy = table;
    tableCopy.asTable()->set("k", 5);
    EXPECT_EQ(table.asTable()->find("k")->asInt(), 5);

    const Variable function = makeRef<ScriptCallable>();
    EXPECT_EQ(Variable(function).asFunction(), function.asFunction());
    const Variable multi = makeMulti({1, 2});
    EXPECT_EQ(Variable(multi).asMulti(), multi.asMulti());
}

TEST(VariableCopy, MovingLeavesNilBehindAndKeepsTheContent) {
    for (const TypeRow& row : typeRows) {
        Variable source = emptyOf(row.type);
        Variable target(std::move(source));
        EXPECT_EQ(target.type, row.type) << row.name;
        Variable assigned = makeArray({1, 2});
        assigned = std::move(target);
        EXPECT_EQ(assigned.type, row.type) << row.name;
    }
    Variable text = "a text that is too long for the inline form of a string";
    Variable taken = std::move(text);
    EXPECT_TRUE(text.isNil());
    EXPECT_EQ(taken.asString().size(), 55U);
}

TEST(VariableCopy, AssigningToItselfChangesNothing) {
    Variable text = "abc";
    const Variable& alias = text;
    text = alias;
    EXPECT_EQ(text.asString(), "abc");
    Variable array = makeArray({1});
    const Variable& arrayAlias = array;
    array = arrayAlias;
    EXPECT_EQ(array.toString(), "[1]");
}

TEST(VariableCopy, AnElementMayReplaceItsOwnContainer) {
    Variable outer = makeArray({makeArray({makeArray({7})})});
    outer = (*outer.asArray())[0];
    EXPECT_EQ(outer.toString(), "[[7]]");
    outer = std::move((*outer.asArray())[0]);
    EXPECT_EQ(outer.toString(), "[7]");
}

TEST(VariableCopy, NumbersReplaceAnythingInPlace) {
    for (const TypeRow& row : typeRows) {
        Variable value = emptyOf(row.type);
        value.setInt(5);
        EXPECT_EQ(value.asInt(), 5) << row.name;
        value = emptyOf(row.type);
        value.setFloat(2.5F);
        EXPECT_EQ(value.asFloat(), 2.5F) << row.name;
        value = emptyOf(row.type);
        value.setBool(true);
        EXPECT_TRUE(value.asBool()) << row.name;
        value = emptyOf(row.type);
        value.setNil();
        EXPECT_TRUE(value.isNil()) << row.name;
    }
}

// --- Text ---

TEST(VariableText, OfPlainValues) {
    EXPECT_EQ(Variable().toString(), "not");
    EXPECT_EQ(Variable(0).toString(), "0");
    EXPECT_EQ(Variable(-12).toString(), "-12");
    EXPECT_EQ(Variable(smallest).toString(), "-2147483648");
    EXPECT_EQ(Variable(largest).toString(), "2147483647");
    EXPECT_EQ(Variable(true).toString(), "true");
    EXPECT_EQ(Variable(false).toString(), "false");
    EXPECT_EQ(Variable("a \"b\"").toString(), "a \"b\"");
    EXPECT_EQ(Variable(std::string("a\0b", 3)).toString().size(), 3U);
}

TEST(VariableText, AFloatHasSixDecimals) {
    EXPECT_EQ(Variable(1.5F).toString(), "1.500000");
    EXPECT_EQ(Variable(-0.0F).toString(), "-0.000000");
    EXPECT_EQ(Variable(0.0000001F).toString(), "0.000000");
    EXPECT_EQ(Variable(0.0000005F).toString(), "0.000000");
    EXPECT_EQ(Variable(0.0000006F).toString(), "0.000001");
    EXPECT_EQ(Variable(16777216.0F).toString(), "16777216.000000");
    EXPECT_EQ(Variable(std::numeric_limits<float>::max()).toString(), "340282346638528859811704183484516925440.000000");
}

TEST(VariableText, FloatsThatAreNoNumbersHaveWords) {
    EXPECT_EQ(Variable(infinity).toString(), "inf");
    EXPECT_EQ(Variable(-infinity).toString(), "-inf");
    EXPECT_EQ(Variable(notANumber).toString(), "nan");
    EXPECT_EQ(Variable(std::copysign(notANumber, -1.0F)).toString(), "-nan");
}

TEST(VariableText, APointerIsUpperCaseHexadecimal) {
    EXPECT_EQ(Variable(static_cast<void*>(nullptr)).toString(), "$0");
    EXPECT_EQ(Variable(reinterpret_cast<void*>(std::uintptr_t{0xABCDEF01})).toString(), "$ABCDEF01");
    const auto all = ~std::uintptr_t{0};
    EXPECT_EQ(Variable(reinterpret_cast<void*>(all)).toString(), "$" + std::string(2 * sizeof all, 'F'));
}

TEST(VariableText, OfOpaqueValues) {
    EXPECT_EQ(emptyOf(VarType::Raw).toString(), "[unconvertible type]");
    EXPECT_EQ(emptyOf(VarType::Multi).toString(), "[multivalue]");
    EXPECT_EQ(emptyOf(VarType::Function).toString(), "[function]");
}

TEST(VariableText, OfContainers) {
    EXPECT_EQ(makeArray({}).toString(), "[]");
    EXPECT_EQ(makeArray({1, 2.5F, "x", true, Variable(), makeArray({makeArray({})})}).toString(),
              "[1, 2.500000, x, true, not, [[]]]");
    Variable table = makeTable();
    EXPECT_EQ(table.toString(), "{}");
    table.asTable()->set("k", makeArray({1}));
    EXPECT_EQ(table.toString(), "{k: [1]}");
    table.asTable()->set("j", "v");
    const std::string text = table.toString();
    EXPECT_TRUE(text == "{k: [1], j: v}" || text == "{j: v, k: [1]}") << text;
}

TEST(VariableText, AContainerInsideItselfEnds) {
    const Variable array = makeArray({1});
    array.asArray()->push_back(array);
    EXPECT_EQ(array.toString(), "[1, ...]");
    const Variable table = makeTable();
    table.asTable()->set("me", table);
    EXPECT_EQ(table.toString(), "{me: ...}");
    const Variable twice = makeArray({table, table}); // beside each other, not inside each other
    EXPECT_EQ(twice.toString(), "[{me: ...}, {me: ...}]");
    array.asArray()->clear();
    table.asTable()->clear();
}

TEST(VariableText, AContainerFarInsideItselfEnds) {
    std::string expected = "...";
    const Variable straight = makeArray({});
    Variable chain = straight;
    for (int level = 0; level < 40; ++level) {
        chain = makeArray({chain});
        expected = "[" + expected + "]";
    }
    straight.asArray()->push_back(chain);
    EXPECT_EQ(straight.toString(), "[" + expected + "]");
    straight.asArray()->clear();
}

TEST(VariableText, AppendsToWhatIsThere) {
    std::string text = "<";
    Variable(5).appendTo(text);
    makeArray({1, 2}).appendTo(text);
    EXPECT_EQ(text, "<5[1, 2]");
}

// --- Deep data ---

namespace {

constexpr int veryDeep = 1000000;

} // namespace

TEST(DeepData, AnArrayIsLetGoOfWithoutRecursion) {
    Variable value;
    for (int level = 0; level < veryDeep; ++level) value = makeArray({std::move(value)});
    value = 5;
    EXPECT_EQ(value.asInt(), 5);
}

TEST(DeepData, ATableIsLetGoOfWithoutRecursion) {
    Variable value;
    for (int level = 0; level < veryDeep; ++level) {
        const Variable outer = makeTable();
        outer.asTable()->set("k", std::move(value));
        value = outer;
    }
    value.setNil();
    EXPECT_TRUE(value.isNil());
}

TEST(DeepData, MultiValuesAndMixturesAreLetGoOfWithoutRecursion) {
    Variable value;
    for (int level = 0; level < veryDeep; ++level)
        value = level % 2 == 0 ? makeMulti({std::move(value), 1}) : makeArray({1, std::move(value)});
    value.setBool(false);
    EXPECT_FALSE(value.asBool());
}

TEST(DeepData, AMethodOfAMethodIsLetGoOfWithoutRecursion) {
    OstrelScript engine;
    engine.runScript("string[\"x\"] = string[\"upper\"]\n"
                     "for i = 1, 200000\n  string[\"x\"] = \"s\"[\"x\"]\nend\n"
                     "string[\"x\"] = not");
    EXPECT_EQ(textOf(engine, "\"a\"[\"upper\"]()"), "A");
}

TEST(DeepData, WhatIsStillHeldElsewhereStays) {
    const Variable inner = makeArray({1});
    Variable outer = makeArray({makeArray({inner})});
    outer.setNil();
    EXPECT_EQ(inner.toString(), "[1]");
    EXPECT_EQ(inner.asArray().useCount(), 2U); // one of them is this question's own
}

TEST(DeepData, TextFailsBeforeTheStackIsUsedUp) {
    Variable value;
    for (int level = 0; level < veryDeep; ++level) value = makeArray({std::move(value)});
    EXPECT_EQ(messageOf([&] { (void)value.toString(); }), "native stack exhausted");
    value.setNil();
}

// --- Keys ---

TEST(KeyText, OfEveryKeyType) {
    const OstrelScript engine;
    EXPECT_EQ(engine.keyToString(12), "12");
    EXPECT_EQ(engine.keyToString(-3), "-3");
    EXPECT_EQ(engine.keyToString(1.5F), "1.500000");
    EXPECT_EQ(engine.keyToString(2.0F), "2.000000");
    EXPECT_EQ(engine.keyToString("a b"), "a b");
    EXPECT_EQ(engine.keyToString(""), "");
    EXPECT_EQ(engine.keyToString(true), "true");
    EXPECT_EQ(engine.keyToString(false), "false");
}

TEST(KeyText, OtherTypesAreNoKeys) {
    const OstrelScript engine;
    for (const VarType type : {VarType::Nil, VarType::Raw, VarType::Pointer, VarType::Array, VarType::Multi,
                               VarType::Table, VarType::Function})
        EXPECT_EQ(messageOf([&] { engine.keyToString(emptyOf(type)); }), "Table key must be string, number, or bool");
}

TEST(ArrayKey, PositiveWholeNumbersPreferArrays) {
    EXPECT_TRUE(prefersArrayStorage(1));
    EXPECT_TRUE(prefersArrayStorage(largest));
    EXPECT_FALSE(prefersArrayStorage(0));
    EXPECT_FALSE(prefersArrayStorage(-1));
    EXPECT_TRUE(prefersArrayStorage(1.0F));
    EXPECT_TRUE(prefersArrayStorage(2147483648.0F));
    EXPECT_FALSE(prefersArrayStorage(2147483904.0F)); // the next float
    EXPECT_FALSE(prefersArrayStorage(1.5F));
    EXPECT_FALSE(prefersArrayStorage(0.5F));
    EXPECT_FALSE(prefersArrayStorage(0.0F));
    EXPECT_FALSE(prefersArrayStorage(-1.0F));
    EXPECT_FALSE(prefersArrayStorage(infinity));
    EXPECT_FALSE(prefersArrayStorage(notANumber));
    for (const VarType type : {VarType::Nil, VarType::String, VarType::Boolean, VarType::Array})
        EXPECT_FALSE(prefersArrayStorage(emptyOf(type)));
    EXPECT_FALSE(prefersArrayStorage("1"));
    EXPECT_FALSE(prefersArrayStorage(true));
}

TEST(ArrayKey, AnyIntegerIsAnIndexAndWholePositiveFloatsAre) {
    int index = 99;
    EXPECT_TRUE(tryGetArrayIndex(3, index));
    EXPECT_EQ(index, 3);
    EXPECT_TRUE(tryGetArrayIndex(0, index));
    EXPECT_EQ(index, 0);
    EXPECT_TRUE(tryGetArrayIndex(smallest, index));
    EXPECT_EQ(index, smallest);
    EXPECT_TRUE(tryGetArrayIndex(4.0F, index));
    EXPECT_EQ(index, 4);
    EXPECT_TRUE(tryGetArrayIndex(2147483648.0F, index)); // beyond every array
    EXPECT_EQ(index, largest);
    for (const float number : {0.0F, -1.0F, 1.5F, 4294967296.0F, infinity, -infinity, notANumber})
        EXPECT_FALSE(tryGetArrayIndex(number, index)) << number;
    EXPECT_FALSE(tryGetArrayIndex("1", index));
    EXPECT_FALSE(tryGetArrayIndex(true, index));
    EXPECT_FALSE(tryGetArrayIndex(Variable(), index));
}

// --- From array to table ---

TEST(Promotion, MakesATableInThisVariableAlone) {
    const Variable inner = makeArray({9});
    Variable first = makeArray({10, inner, Variable()});
    const Variable second = first;
    promoteArrayVariableToTable(first);
    ASSERT_TRUE(first.isTable());
    EXPECT_EQ(first.asTable()->sortedKeys(), (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(first.asTable()->find("1")->asInt(), 10);
    EXPECT_EQ(first.asTable()->find("2")->asArray(), inner.asArray());
    EXPECT_TRUE(first.asTable()->find("3")->isNil());
    EXPECT_EQ(second.toString(), "[10, [9], not]");
    first.asTable()->set("1", 11);
    EXPECT_EQ(second.toString(), "[10, [9], not]");
}

TEST(Promotion, AnEmptyArrayBecomesAnEmptyTable) {
    Variable value = makeArray({});
    promoteArrayVariableToTable(value);
    EXPECT_EQ(value.toString(), "{}");
}

TEST(Promotion, LeavesEverythingElseAsItIs) {
    for (const TypeRow& row : typeRows) {
        if (row.type == VarType::Array) continue;
        Variable value = emptyOf(row.type);
        promoteArrayVariableToTable(value);
        EXPECT_EQ(value.type, row.type);
    }
}

// --- Numbers ---

TEST(NumberReading, AnIntegerTruncatesAndSaturates) {
    EXPECT_EQ(toInt(7), 7);
    EXPECT_EQ(toInt(7.9F), 7);
    EXPECT_EQ(toInt(-7.9F), -7);
    EXPECT_EQ(toInt(true), 1);
    EXPECT_EQ(toInt(false), 0);
    EXPECT_EQ(toInt(3e9F), largest);
    EXPECT_EQ(toInt(-3e9F), smallest);
    EXPECT_EQ(toInt(infinity), largest);
    EXPECT_EQ(toInt(-infinity), smallest);
    EXPECT_EQ(toInt(notANumber), 0);
    EXPECT_EQ(saturateToInt(2147483646.9), 2147483646);
    EXPECT_EQ(saturateToInt(2147483647.0), largest);
    EXPECT_EQ(saturateToInt(2147483647.5), largest);
    EXPECT_EQ(saturateToInt(-2147483648.0), smallest);
    EXPECT_EQ(saturateToInt(-2147483648.5), smallest);
    EXPECT_EQ(saturateToInt(-2147483647.5), -2147483647);
}

TEST(NumberReading, ADoubleIsExact) {
    EXPECT_EQ(toDouble(largest), 2147483647.0);
    EXPECT_EQ(toDouble(0.5F), 0.5);
    EXPECT_EQ(toDouble(true), 1.0);
    EXPECT_EQ(toDouble(false), 0.0);
}

TEST(NumberReading, OtherTypesAreRefused) {
    for (const VarType type : {VarType::Nil, VarType::String, VarType::Raw, VarType::Pointer, VarType::Array,
                               VarType::Multi, VarType::Table, VarType::Function}) {
        EXPECT_EQ(messageOf([&] { toInt(emptyOf(type)); }), "Expected a numeric value");
        EXPECT_EQ(messageOf([&] { toDouble(emptyOf(type)); }), "Expected a numeric value");
    }
    EXPECT_EQ(messageOf([] { toInt("5"); }), "Expected a numeric value");
}
