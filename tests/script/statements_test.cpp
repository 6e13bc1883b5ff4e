// Statements with values that only a host makes: empty multi values, raw bytes, pointers; and with many of everything.

#include "probe.h"

#include <gtest/gtest.h>

namespace {

/// An engine whose host gives multi values of 0 to 3 parts, raw bytes and a null pointer.
class HostValues : public testing::Test {
protected:
    HostValues() {
        probe.addFunction("parts", [](const std::vector<Variable>& arguments) {
            std::vector<Variable> values;
            for (int i = 1; i <= toInt(arguments.at(0)); ++i) values.emplace_back(i);
            return makeMulti(std::move(values));
        });
        probe.engine.pushVariable("raw", Variable(std::vector<char>{'a', 'b'}));
        probe.engine.pushVariable("null", Variable(static_cast<void*>(nullptr)));
    }

    Probe probe;
};

} // namespace

TEST_F(HostValues, AnEmptyMultiValueIsNilForASingleTarget) {
    EXPECT_EQ(probe.hear("x = parts(0)\nsay(x)\nt = []\nt[1] = parts(0)\nsay(t)"), "not [not] ");
    EXPECT_EQ(probe.hear("local x = parts(0)\nsay(x)"), "not ");
    EXPECT_EQ(probe.run("x = 5\nx += parts(0)"), "OstrelScript error: Unsupported operation '+' between types");
}

TEST_F(HostValues, AnEmptyMultiValueInTheLastPositionAddsNothing) {
    EXPECT_EQ(probe.hear("a, b = parts(0)\nsay(a, b)"), "not not ");
    EXPECT_EQ(probe.hear("a, b, c = 1, parts(0)\nsay(a, b, c)"), "1 not not ");
    EXPECT_EQ(probe.hear("a, b, c = parts(0), 2\nsay(a, b, c)"), "not 2 not ");
    EXPECT_EQ(probe.hear("function f()\nreturn 1, parts(0)\nend\na, b = f()\nsay(a, b, typeOf(f()))"), "1 not table ");
    EXPECT_EQ(probe.hear("function f()\nreturn parts(0)\nend\na, b = f()\nsay(a, b, typeOf(f()))"), "not not table ");
    EXPECT_EQ(probe.hear("function f()\nreturn parts(0), 2\nend\na, b = f()\nsay(typeOf(a), b)"), "table 2 ");
}

TEST_F(HostValues, MultiValuesAreExpandedOverTheTargetsThatAreLeft) {
    EXPECT_EQ(probe.hear("a, b = parts(3)\nsay(a, b)"), "1 2 ");
    EXPECT_EQ(probe.hear("a, b, c, d = 0, parts(2)\nsay(a, b, c, d)"), "0 1 2 not ");
    EXPECT_EQ(probe.hear("a, b, c, d = parts(3), parts(3)\nsay(a, b, c, d)"), "1 1 2 3 ");
    EXPECT_EQ(probe.hear("a = 7, parts(3)\nsay(a)"), "7 ");
}

TEST_F(HostValues, OneOpaqueValueEverywhereElse) {
    EXPECT_EQ(probe.run("for i = parts(1), 3\nend"), "OstrelScript error: Expected a numeric value");
    EXPECT_EQ(probe.run("for v in parts(2)\nend"), "OstrelScript error: generic for loops expect an array iterator");
    EXPECT_EQ(probe.hear("if parts(0)\nsay(\"true\")\nend"), "true ");
    EXPECT_EQ(probe.hear("t = [parts(2), 3]\nsay(#t)"), "2 ");
    EXPECT_EQ(probe.run("t = []\nt[parts(1)] = 1"), "OstrelScript error: Table key must be string, number, or bool");
}

TEST_F(HostValues, BytesAndPointersAreTrueWhateverTheyHold) {
    EXPECT_EQ(probe.hear("if raw\nsay(\"raw\")\nend\nif null\nsay(\"null\")\nend"), "raw null ");
}

TEST_F(HostValues, BytesAndPointersAreNoContainers) {
    EXPECT_EQ(probe.run("raw[1] = 5"), "OstrelScript error: Indexing requires an array, table, or string");
    EXPECT_EQ(probe.run("null[1][2] = 5"), "OstrelScript error: Indexing requires an array or table");
    EXPECT_EQ(probe.run("for v in raw\nend"), "OstrelScript error: generic for loops expect an array iterator");
}

TEST(Statements, AThousandTargetsTakeAThousandValues) {
    std::string targets, values;
    for (int i = 1; i <= 1000; ++i) {
        targets += (i > 1 ? ", t" : "t") + std::to_string(i);
        values += (i > 1 ? ", " : "") + std::to_string(i * 3);
    }
    Probe probe;
    EXPECT_EQ(probe.hear(targets + " = " + values + "\nsay(t1, t500, t1000)"), "3 1500 3000 ");
    EXPECT_EQ(probe.hear("local " + targets + " = " + values + "\nsay(t1 + t1000)"), "3003 ");
    EXPECT_EQ(probe.hear("local " + targets + "\nsay(t1, t1000)"), "not not ");
}

TEST(Statements, AnAppendingLoopTakesNoLongerPerRoundAsTheTextGrows) {
    // 200,000 rounds that each copied the text would move 200 GB.
    Probe probe;
    EXPECT_EQ(probe.run("text = \"\"\nfor i = 1, 200000\ntext += \"0123456789\"\nend\nreturn #text"), "2000000");
    EXPECT_EQ(probe.run("t = {text = \"\"}\nfor i = 1, 2000\nt[\"text\"] += \"0123456789\"\nend\nreturn #t[\"text\"]"),
              "20000");
}
