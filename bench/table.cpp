#include "table.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace bench {

void TableReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.error_occurred) {
            std::cerr << run.benchmark_name() << ": " << run.error_message << "\n";
            continue;
        }
        if (run.run_type != Run::RT_Iteration)
            continue;
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        const std::string row = name.substr(0, slash);
        if (!m_rows.contains(row))
            m_order.push_back(row);
        const bool split = name.ends_with("/all");
        const double time = split ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        double& best = m_rows[row].try_emplace(name.substr(slash + 1), time).first->second;
        best = std::min(best, time);
    }
}

std::string TableReporter::cell(const Row& row, const std::string& who)
{
    const auto found = row.find(who);
    if (found == row.end())
        return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << found->second;
    return text.str();
}

std::string TableReporter::advantage(const Row& row)
{
    double peers = 0;
    for (const auto& [who, spent] : row)
        if (who != "one" && who != "all")
            peers = peers == 0 ? spent : std::min(peers, spent);
    const auto ours = row.find("one");
    if (peers == 0 || ours == row.end())
        return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << peers / ours->second;
    return text.str();
}

void TableReporter::Finalize()
{
    std::cout << "Milliseconds, the best of five: by the clock on all cores, elsewhere of processor time.\n\n"
              << "| Operation | one core | all cores | Leptonica | libtiff | times as fast on one core |\n"
              << "|---|---:|---:|---:|---:|---:|\n";
    for (const std::string& name : m_order) {
        const Row& row = m_rows[name];
        std::cout << "| " << name;
        for (const char* who : {"one", "all", "leptonica", "libtiff"})
            std::cout << " | " << cell(row, who);
        std::cout << " | " << advantage(row) << " |\n";
    }
}

} // namespace bench
