// A reporter that prints, behind the usual output, a table of the engines side by side.

#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace pattern::bench {

/// Expects runs named "task/case/engine". Prints one table in Markdown for each task: the time of our engine, and how
/// many times longer the others take; the last row is the geometric mean.
class RatioTable : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Row {
        std::string task;
        std::string name;
        std::map<std::string, double> seconds; // by engine
    };

    std::vector<Row> rows_;
};

} // namespace pattern::bench
