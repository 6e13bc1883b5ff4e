// How rows are shared out to workers.

#include "plush/rows.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <stdexcept>

namespace {

using Ranges = std::vector<RowRange>;

TEST(Rows, TheCeilingRuleGivesEqualRunsAndAShorterLast) {
    EXPECT_EQ(rowRanges(10, 4, RowSplit::Ceiling), (Ranges{{0, 3}, {3, 6}, {6, 9}, {9, 10}}));
    EXPECT_EQ(rowRanges(8, 4, RowSplit::Ceiling), (Ranges{{0, 2}, {2, 4}, {4, 6}, {6, 8}}));
}

TEST(Rows, TheCeilingRuleLeavesWorkersWithoutRowsOut) {
    EXPECT_EQ(rowRanges(5, 4, RowSplit::Ceiling), (Ranges{{0, 2}, {2, 4}, {4, 5}}));
    EXPECT_EQ(rowRanges(2, 8, RowSplit::Ceiling), (Ranges{{0, 1}, {1, 2}}));
}

TEST(Rows, TheEvenRuleGivesTheRemainderToTheFirst) {
    EXPECT_EQ(rowRanges(10, 4, RowSplit::Even), (Ranges{{0, 3}, {3, 6}, {6, 8}, {8, 10}}));
    EXPECT_EQ(rowRanges(5, 4, RowSplit::Even), (Ranges{{0, 2}, {2, 3}, {3, 4}, {4, 5}}));
    EXPECT_EQ(rowRanges(2, 8, RowSplit::Even), (Ranges{{0, 1}, {1, 2}}));
}

TEST(Rows, FewerThanOneWorkerIsOne) {
    for (const RowSplit rule : {RowSplit::Ceiling, RowSplit::Even}) {
        for (const int workers : {1, 0, -1, std::numeric_limits<int>::min()}) {
            EXPECT_EQ(rowRanges(7, workers, rule), (Ranges{{0, 7}}));
        }
    }
}

TEST(Rows, WithoutRowsThereIsNoRun) {
    for (const RowSplit rule : {RowSplit::Ceiling, RowSplit::Even}) {
        EXPECT_TRUE(rowRanges(0, 4, rule).empty());
        EXPECT_TRUE(rowRanges(-3, 4, rule).empty());
    }
}

TEST(Rows, TheLargestNumbersDoNotOverflow) {
    constexpr int most = std::numeric_limits<int>::max();
    for (const RowSplit rule : {RowSplit::Ceiling, RowSplit::Even}) {
        const Ranges ranges = rowRanges(most, 7, rule);
        EXPECT_EQ(ranges.size(), 7U);
        EXPECT_EQ(ranges.back().last, most);
        EXPECT_EQ(rowRanges(3, most, rule), (Ranges{{0, 1}, {1, 2}, {2, 3}}));
    }
}

TEST(Rows, EveryRowIsDoneExactlyOnce) {
    constexpr int mostRows = 40;
    for (const RowSplit rule : {RowSplit::Ceiling, RowSplit::Even}) {
        for (int rows = 0; rows <= mostRows; ++rows) {
            for (const int workers : {-1, 1, 2, 3, 8, 50, 1000000}) {
                std::vector<std::atomic<int>> visits(mostRows);
                splitRows(rows, workers, rule, [&visits](RowRange range) {
                    for (int row = range.first; row < range.last; ++row) ++visits[static_cast<std::size_t>(row)];
                });
                for (int row = 0; row < mostRows; ++row) {
                    EXPECT_EQ(visits[static_cast<std::size_t>(row)], row < rows ? 1 : 0)
                        << rows << " rows, " << workers << " workers, row " << row;
                }
            }
        }
    }
}

TEST(Rows, AFailureOfAWorkerReachesTheCallerAfterAllHaveEnded) {
    std::atomic<int> finished = 0;
    const auto work = [&finished](RowRange range) {
        ++finished;
        if (range.first == 2) throw std::runtime_error("row 2");
    };
    EXPECT_THROW(splitRows(8, 4, RowSplit::Even, work), std::runtime_error);
    EXPECT_EQ(finished, 4);
}

TEST(Rows, SixThreadsAreAllowedAtFirst) { EXPECT_EQ(AllowedThreads, 6); }

} // namespace
