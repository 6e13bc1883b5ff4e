#include "ratio_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace pattern::bench {

namespace {

struct Mean {
    double logarithms = 0;
    int count = 0;

    void add(double ratio) {
        logarithms += std::log(ratio);
        ++count;
    }

    std::string text() const {
        char buffer[32] = "";
        if (count > 0) std::snprintf(buffer, sizeof buffer, "%.2f", std::exp(logarithms / count));
        return buffer;
    }
};

} // namespace

void RatioTable::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const bool isRepeated = run.repetitions > 1;
        const bool isMedian = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
        if (run.error_occurred || (isRepeated && !isMedian)) continue;
        const std::string& full = run.run_name.function_name;
        const std::size_t first = full.find('/');
        const std::size_t last = full.rfind('/');
        const std::string task = full.substr(0, first);
        const std::string name = full.substr(first + 1, last - first - 1);
        const auto isSame = [&](const Row& row) { return row.task == task && row.name == name; };
        auto row = std::find_if(rows_.begin(), rows_.end(), isSame);
        if (row == rows_.end()) row = rows_.insert(rows_.end(), Row{task, name, {}});
        row->seconds[full.substr(last + 1)] = run.real_accumulated_time / static_cast<double>(run.iterations);
    }
}

void RatioTable::Finalize() {
    std::string task;
    std::map<std::string, Mean> means;
    const auto closeTask = [&] {
        if (task.empty()) return;
        std::printf("| geometric mean | | %s | %s |\n", means["std"].text().c_str(), means["lua"].text().c_str());
        means.clear();
    };
    for (const Row& row : rows_) {
        if (row.task != task) {
            closeTask();
            task = row.task;
            std::printf("\n| %s | ours, µs | std::regex | Lua |\n|---|---|---|---|\n", task.c_str());
        }
        const auto ours = row.seconds.find("ours");
        if (ours == row.seconds.end()) continue;
        std::printf("| %s | %.2f |", row.name.c_str(), ours->second * 1e6);
        for (const char* const engine : {"std", "lua"}) {
            const auto theirs = row.seconds.find(engine);
            if (theirs == row.seconds.end()) {
                std::printf(" |");
                continue;
            }
            const double ratio = theirs->second / ours->second;
            means[engine].add(ratio);
            std::printf(" %.2f |", ratio);
        }
        std::printf("\n");
    }
    closeTask();
}

} // namespace pattern::bench
