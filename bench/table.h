#pragma once

#include <benchmark/benchmark.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// Prints the best times of each benchmark named "row/who" as a table in Markdown: a row for each operation, with ours
/// on one core and on all, the peers', which use one, and how many times as long the fastest peer takes as we do on one
/// core. On one core processor time counts, which is that of the clock on a quiet machine; on all of them the clock.
class TableReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    using Times = std::map<std::string, double>; // milliseconds of "one", "all" or a peer

    struct Row
    {
        std::int64_t registered; // as which of all benchmarks its first one was
        Times times;
    };

    static std::string cell(const Times& times, const std::string& who);
    static std::string advantage(const Times& times);

    std::map<std::string, Row> m_rows;
};

} // namespace bench
