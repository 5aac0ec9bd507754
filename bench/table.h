#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// Prints the best times of each benchmark named "row/who" as a table in Markdown: a row for each operation, with the
/// time by the clock and the time that processors spent on it, all cores together, ours and the peers', and how many
/// times as long the fastest peer takes.
class TableReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Milliseconds
    {
        double clock;
        double processor;
    };
    using Row = std::map<std::string, Milliseconds>;

    static std::string cell(const Row& row, const std::string& who);
    static std::string advantage(const Row& row, double Milliseconds::*time);

    std::vector<std::string> m_order;
    std::map<std::string, Row> m_rows;
};

} // namespace bench
