#pragma once

// How the work on an image is shared out to threads: by rows.
//
// An operation names the number of rows and of workers and a function for a run of rows. Threads are started for the
// one call and joined before it returns; there is no pool and no lock, because no two workers are given the same row.
// An operation whose rows depend on nothing but its input therefore gives the same bytes with any number of workers.

#include <functional>
#include <vector>

/// How many workers an image operation may use. Scripts set it to whatever they like; values below 1 count as 1.
extern int AllowedThreads;

/// How rows are shared out.
enum class RowSplit {
    Ceiling, // runs of ceil(rows / workers) rows; the last run is shorter, and some workers may get none
    Even,    // rows / workers each, and one more for the first of them until the remainder is used up
};

/// Rows `first` up to, but not including, `last`.
struct RowRange {
    int first = 0;
    int last = 0;

    bool operator==(const RowRange&) const = default;
};

/// The runs of rows of each worker that has any, in order. Without rows there are none; a number of workers below 1
/// is taken as 1.
std::vector<RowRange> rowRanges(int rows, int workers, RowSplit rule);

/// Calls `work` with each run of rows, all at the same time, and returns when all are done. The calling thread does
/// the last run itself. If a run fails with an exception, that of the first such run is thrown on when all have ended.
void splitRows(int rows, int workers, RowSplit rule, const std::function<void(RowRange)>& work);
