// The sort under orders of every kind: real ones, contradictory ones, ones that mean harm, ones that want to stop.

#include "script/library/introsort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

namespace {

/// Compares integers and counts; may be told to stop.
struct CountingOrder {
    std::size_t calls = 0;
    std::size_t allowed = std::numeric_limits<std::size_t>::max();

    bool operator()(int left, int right) {
        ++calls;
        return left < right;
    }
    bool stopped() const { return calls >= allowed; }
};

double mostComparisons(std::size_t size) {
    return 4.0 * static_cast<double>(size) * std::log2(static_cast<double>(size) + 2);
}

TEST(Introsort, SortsListsOfEveryLength) {
    std::mt19937 generator(1);
    for (std::size_t size = 0; size < 200; ++size) {
        std::vector<int> list(size);
        for (int& number : list) number = static_cast<int>(generator() % 50);
        std::vector<int> sorted = list;
        std::sort(sorted.begin(), sorted.end());
        CountingOrder order;
        introsort(list, order);
        ASSERT_EQ(list, sorted) << size;
    }
}

TEST(Introsort, NeedsFewComparisonsForEveryShape) {
    constexpr std::size_t size = 20000;
    std::vector<std::vector<int>> shapes(6, std::vector<int>(size));
    std::mt19937 generator(2);
    for (std::size_t i = 0; i < size; ++i) {
        const auto number = static_cast<int>(i);
        shapes[0][i] = number;
        shapes[1][i] = -number;
        shapes[2][i] = 7;
        shapes[3][i] = number % 2;
        shapes[4][i] = std::abs(number - static_cast<int>(size / 2));
        shapes[5][i] = static_cast<int>(generator() % 1000);
    }
    for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
        CountingOrder order;
        introsort(shapes[shape], order);
        EXPECT_TRUE(std::is_sorted(shapes[shape].begin(), shapes[shape].end())) << shape;
        EXPECT_LT(static_cast<double>(order.calls), mostComparisons(size)) << shape;
    }
}

/// Decides the values only while they are compared, so that every split is as poor as can be: the pivot is always
/// among the smallest. Only a sort with a fall-back stays quick.
struct AdversaryOrder {
    std::vector<int> values;
    int solid = 0;
    int gas;
    int candidate = 0;
    std::size_t calls = 0;

    explicit AdversaryOrder(int size) : values(static_cast<std::size_t>(size), size), gas(size) {}

    bool operator()(int left, int right) {
        ++calls;
        int& a = values[static_cast<std::size_t>(left)];
        int& b = values[static_cast<std::size_t>(right)];
        if (a == gas && b == gas) (left == candidate ? a : b) = solid++;
        if (a == gas)
            candidate = left;
        else if (b == gas)
            candidate = right;
        return a < b;
    }
    static bool stopped() { return false; }
};

TEST(Introsort, FallsBackBeforePoorSplitsCostTooMuch) {
    constexpr int size = 20000;
    std::vector<int> list(size);
    std::iota(list.begin(), list.end(), 0);
    AdversaryOrder order(size);
    introsort(list, order);
    EXPECT_LT(static_cast<double>(order.calls), mostComparisons(size));
    std::vector<int> values;
    for (const int place : list) values.push_back(order.values[static_cast<std::size_t>(place)]);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
}

TEST(Introsort, KeepsTheElementsUnderAnyOrder) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    struct RandomOrder {
        std::mt19937 generator;
        unsigned likelihood;
        bool operator()(int, int) { return generator() % 8 < likelihood; }
        static bool stopped() { return false; }
    };
    for (unsigned round = 0; round < 900; ++round) {
        std::vector<int> list(round);
        std::iota(list.begin(), list.end(), 0);
        RandomOrder order{std::mt19937(seed + round), round % 9};
        introsort(list, order);
        std::sort(list.begin(), list.end());
        for (std::size_t i = 0; i < list.size(); ++i) ASSERT_EQ(list[i], static_cast<int>(i)) << round;
    }
}

TEST(Introsort, StopsWithinAFewComparisons) {
    for (std::size_t allowed = 0; allowed < 3000; allowed += 7) {
        std::vector<int> list(1000);
        std::mt19937 generator(3);
        for (int& number : list) number = static_cast<int>(generator() % 1000);
        CountingOrder order;
        order.allowed = allowed;
        const long before = std::accumulate(list.begin(), list.end(), 0L);
        introsort(list, order);
        ASSERT_LE(order.calls, allowed + list.size() + 2);
        ASSERT_EQ(std::accumulate(list.begin(), list.end(), 0L), before);
    }
}

} // namespace
