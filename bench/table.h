#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

/// Prints the best time of each benchmark named "row/who" as a table in Markdown: a row for each operation, with our
/// time, the peers' times and how many times as long the fastest of them takes.
class TableReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    std::vector<std::string> order_;
    std::map<std::string, std::map<std::string, double>> milliseconds_;
};

} // namespace bench
