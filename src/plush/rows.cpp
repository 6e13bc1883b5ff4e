// Sharing the rows of an image out to threads.

#include "plush/rows.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <thread>

int AllowedThreads = 6;

namespace {

/// More threads than any machine of ours has processors only cost their start; scripts may ask for any number.
constexpr int maximumWorkers = 256;

} // namespace

std::vector<RowRange> rowRanges(int rows, int workers, RowSplit rule) {
    std::vector<RowRange> ranges;
    if (rows < 1) return ranges;
    const int count = std::max(workers, 1);
    if (rule == RowSplit::Ceiling) {
        const int chunk = rows / count + (rows % count != 0 ? 1 : 0);
        for (std::int64_t first = 0; first < rows; first += chunk) {
            ranges.push_back({static_cast<int>(first), static_cast<int>(std::min<std::int64_t>(first + chunk, rows))});
        }
        return ranges;
    }
    const int chunk = rows / count;
    const int remainder = rows % count;
    int first = 0;
    for (int worker = 0; worker < count && first < rows; ++worker) {
        const int last = first + chunk + (worker < remainder ? 1 : 0);
        ranges.push_back({first, last});
        first = last;
    }
    return ranges;
}

void splitRows(int rows, int workers, RowSplit rule, const std::function<void(RowRange)>& work) {
    const std::vector<RowRange> ranges = rowRanges(rows, std::min(workers, maximumWorkers), rule);
    if (ranges.empty()) return;
    if (ranges.size() == 1) {
        work(ranges.front());
        return;
    }

    std::vector<std::exception_ptr> failures(ranges.size());
    const auto run = [&](std::size_t index) noexcept {
        try {
            work(ranges[index]);
        } catch (...) {
            failures[index] = std::current_exception();
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(ranges.size() - 1);
    for (std::size_t index = 0; index + 1 < ranges.size(); ++index) {
        try {
            threads.emplace_back(run, index);
        } catch (const std::exception&) {
            run(index); // the machine has no thread or memory left: the work is done all the same
        }
    }
    run(ranges.size() - 1);
    for (std::thread& thread : threads) thread.join();
    for (const std::exception_ptr& failure : failures) {
        if (failure) std::rethrow_exception(failure);
    }
}
