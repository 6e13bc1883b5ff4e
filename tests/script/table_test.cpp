// Tables: keys, the remembered listings and what keeps them true.

#include "script/table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <random>

namespace {

using Keys = std::vector<std::string>;

/// The texts of the key readings, each behind its type's number: "1:10" is the integer 10.
Keys readingsOf(const Table& table) {
    Keys readings;
    for (const Variable& key : table.sortedKeyValues())
        readings.push_back(std::to_string(static_cast<unsigned>(key.type)) + ":" + key.toString());
    return readings;
}

} // namespace

TEST(Table, ANumberIsStoredUnderItsDigits) {
    Table table;
    table.set(12, "a");
    EXPECT_EQ(table.find("12")->asString(), "a");
    table.set("-3", "b");
    EXPECT_EQ(table.find(-3)->asString(), "b");
    table.set("12", "c");
    EXPECT_EQ(table.find(12)->asString(), "c");
    EXPECT_EQ(table.size(), 2U);
    EXPECT_EQ(table.find("012"), nullptr);
    EXPECT_EQ(table.find(13), nullptr);
}

TEST(Table, TheWidestNumbersAreKeys) {
    Table table;
    table.set(-2147483647 - 1, 1);
    table.set(2147483647, 2);
    EXPECT_TRUE(table.contains("-2147483648"));
    EXPECT_TRUE(table.contains("2147483647"));
}

TEST(Table, FindOrAddAddsNil) {
    Table table;
    EXPECT_TRUE(table.findOrAdd("k").isNil());
    EXPECT_TRUE(table.contains("k"));
    table.findOrAdd("k") = 5;
    EXPECT_EQ(table.findOrAdd("k").asInt(), 5);
    EXPECT_EQ(table.size(), 1U);
}

TEST(Table, EraseSaysWhetherTheKeyWasThere) {
    Table table;
    table.set("a", 1);
    table.set(2, 1);
    EXPECT_TRUE(table.erase("a"));
    EXPECT_FALSE(table.erase("a"));
    EXPECT_TRUE(table.erase(2));
    EXPECT_FALSE(table.erase(2));
    EXPECT_TRUE(table.empty());
}

TEST(TableListing, KeysStandInByteOrder) {
    Table table;
    for (int key = 1; key <= 10; ++key) table.set(key, key);
    EXPECT_EQ(table.sortedKeys(), (Keys{"1", "10", "2", "3", "4", "5", "6", "7", "8", "9"}));
    EXPECT_EQ(readingsOf(table), (Keys{"1:1", "1:10", "1:2", "1:3", "1:4", "1:5", "1:6", "1:7", "1:8", "1:9"}));
}

TEST(TableListing, HighBytesComeLastAndCapitalsFirst) {
    Table table;
    for (const char* key : {"b", "B", "\xC3\xA9", "a", "", "aa", "_"}) table.set(key, 0);
    EXPECT_EQ(table.sortedKeys(), (Keys{"", "B", "_", "a", "aa", "b", "\xC3\xA9"}));
}

TEST(TableListing, IsEmptyForAnEmptyTable) {
    const Table table;
    EXPECT_TRUE(table.sortedKeys().empty());
    EXPECT_TRUE(table.sortedKeyValues().empty());
    EXPECT_EQ(table.numericLength(), 0U);
    EXPECT_EQ(table.placeOf("a"), Table::noPlace);
}

TEST(TableListing, PlacesAreThoseOfTheKeys) {
    Table table;
    for (const char* key : {"c", "a", "b"}) table.set(key, 0);
    EXPECT_EQ(table.placeOf("a"), 0U);
    EXPECT_EQ(table.placeOf("c"), 2U);
    EXPECT_EQ(table.placeOf("d"), Table::noPlace);
    table.set("aa", 0);
    EXPECT_EQ(table.placeOf("aa"), 1U);
    EXPECT_EQ(table.placeOf("c"), 3U);
    table.erase("a");
    EXPECT_EQ(table.placeOf("a"), Table::noPlace);
    EXPECT_EQ(table.placeOf("aa"), 0U);
}

TEST(TableListing, IsRememberedUntilAKeyComesOrGoes) {
    Table table;
    table.set("a", 1);
    table.set("b", 2);
    const std::uint64_t before = table.mutationVersion();
    const std::string* const listed = table.sortedKeys().data();
    table.set("a", 3);
    table.findOrAdd("b") = 4;
    table.find("a")->setInt(5);
    EXPECT_EQ(table.mutationVersion(), before);
    EXPECT_EQ(table.sortedKeys().data(), listed);
    table.set("c", 1);
    EXPECT_EQ(table.mutationVersion(), before + 1);
    EXPECT_EQ(table.sortedKeys(), (Keys{"a", "b", "c"}));
    table.erase("b");
    EXPECT_EQ(table.mutationVersion(), before + 2);
    EXPECT_EQ(table.sortedKeys(), (Keys{"a", "c"}));
    table.erase("no such key");
    EXPECT_EQ(table.mutationVersion(), before + 2);
    table.clear();
    EXPECT_EQ(table.mutationVersion(), before + 3);
    EXPECT_TRUE(table.sortedKeys().empty());
}

TEST(TableListing, NumericLengthStopsAtTheFirstMissingKey) {
    Table table;
    for (const int key : {1, 2, 3, 5}) table.set(key, key);
    EXPECT_EQ(table.numericLength(), 3U);
    table.set(4, Variable());
    EXPECT_EQ(table.numericLength(), 5U) << "a key with nil is there";
    table.erase(2);
    EXPECT_EQ(table.numericLength(), 1U);
    table.erase(1);
    EXPECT_EQ(table.numericLength(), 0U);
    table.set("1.000000", 1);
    table.set("01", 1);
    EXPECT_EQ(table.numericLength(), 0U);
}

TEST(TableListing, AnAddressThatIsUsedAgainShowsNothingOld) {
    for (int round = 0; round < 2000; ++round) {
        const auto table = std::make_unique<Table>();
        const std::string key = std::to_string(round) + "k";
        table->set(key, round);
        ASSERT_EQ(table->sortedKeys(), Keys{key});
        ASSERT_EQ(table->placeOf(key), 0U);
    }
}

TEST(TableListing, FollowsRandomChanges) {
    constexpr unsigned seed = 20261121;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Table table;
    Keys expected;
    for (int step = 0; step < 5000; ++step) {
        const std::string key = std::to_string(random() % 40);
        const auto place = std::lower_bound(expected.begin(), expected.end(), key);
        const bool known = place != expected.end() && *place == key;
        if (random() % 2 == 0) {
            table.set(key, step);
            if (!known) expected.insert(place, key);
        } else {
            EXPECT_EQ(table.erase(key), known);
            if (known) expected.erase(place);
        }
        if (random() % 3 != 0) continue;
        ASSERT_EQ(table.sortedKeys(), expected);
        unsigned length = 0;
        while (std::binary_search(expected.begin(), expected.end(), std::to_string(length + 1))) ++length;
        ASSERT_EQ(table.numericLength(), length);
    }
}

// --- The best reading of a key ---

TEST(KeyReading, WholeDecimalTextIsAnInteger) {
    for (const char* key : {"1", "0", "-5", "007", "2147483647", "-2147483648", "+5"})
        EXPECT_EQ(keyReading(key).type, VarType::Integer) << key;
    EXPECT_EQ(keyReading("-5").asInt(), -5);
    EXPECT_EQ(keyReading("007").asInt(), 7);
    EXPECT_EQ(keyReading("+5").asInt(), 5);
}

TEST(KeyReading, OtherNumbersAreFloats) {
    EXPECT_EQ(keyReading("1.5").asFloat(), 1.5F);
    EXPECT_EQ(keyReading("1e3").asFloat(), 1000.0F);
    EXPECT_EQ(keyReading("1.500000").asFloat(), 1.5F);
    EXPECT_EQ(keyReading("2147483648").asFloat(), 2147483648.0F);
    EXPECT_EQ(keyReading("-1E-2").asFloat(), -0.01F);
    EXPECT_EQ(keyReading(".5").asFloat(), 0.5F);
    EXPECT_EQ(keyReading("5.").asFloat(), 5.0F);
    EXPECT_EQ(keyReading(" 5").asFloat(), 5.0F) << "as the C library reads it";
    EXPECT_EQ(keyReading("0x10").asFloat(), 16.0F);
    EXPECT_TRUE(std::isinf(keyReading("inf").asFloat()));
    EXPECT_TRUE(std::isnan(keyReading("nan").asFloat()));
}

TEST(KeyReading, EverythingElseStaysText) {
    for (const char* key :
         {"", " ", "abc", "1a", "5 ", "1e", "1..2", "--1", "+-1", "+", "-", ".", "1e99", "1e-60", "true"})
        EXPECT_EQ(keyReading(key).type, VarType::String) << '"' << key << '"';
    EXPECT_EQ(keyReading(std::string("1\0", 2)).type, VarType::String);
    EXPECT_EQ(keyReading(std::string("1.5\0", 4)).type, VarType::String);
    EXPECT_EQ(keyReading(std::string(1000, '9')).type, VarType::String);
}

TEST(TableIndex, AgreesWithAPlainMapOverManyRandomChanges) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    Table table;
    std::map<std::string, int> plain;
    for (int round = 0; round < 60000; ++round) {
        // The range of keys grows and shrinks, so that the table goes through every size more than once.
        const unsigned range = 1 + static_cast<unsigned>(random() % (1 + static_cast<unsigned>(round / 100) % 200));
        const std::string key = "k" + std::to_string(random() % range);
        switch (random() % 4) {
        case 0:
        case 1:
            table.set(key, round);
            plain[key] = round;
            break;
        case 2: ASSERT_EQ(table.erase(key), plain.erase(key) == 1); break;
        default: {
            const auto expected = plain.find(key);
            const Variable* const found = table.find(std::string_view(key));
            ASSERT_EQ(found != nullptr, expected != plain.end()) << key;
            if (found != nullptr) {
                ASSERT_EQ(found->asInt(), expected->second) << key;
            }
        }
        }
        ASSERT_EQ(table.size(), plain.size());
    }
    Keys expected;
    for (const auto& [key, value] : plain) expected.push_back(key);
    EXPECT_EQ(table.sortedKeys(), expected);
}

TEST(TableIndex, AHintFromAnotherTableMisleadsNobody) {
    const Ref<ScriptText> key = makeRef<ScriptText>("k");
    Table first;
    Table second;
    std::uint32_t hint = 0;
    first.set("a", 1);
    first.findOrAdd(key) = 2;
    EXPECT_EQ(first.find(*key, hint)->asInt(), 2);
    EXPECT_EQ(hint, 1U);
    EXPECT_EQ(second.find(*key, hint), nullptr);
    second.set("k", 3);
    EXPECT_EQ(second.find(*key, hint)->asInt(), 3);
    first.erase("k");
    EXPECT_EQ(first.find(*key, hint), nullptr);
}
