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
        Row& row = m_rows.try_emplace(name.substr(0, slash), Row{run.family_index, {}}).first->second;
        row.registered = std::min(row.registered, run.family_index);
        const bool split = name.ends_with("/all");
        const double time = split ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
        double& best = row.times.try_emplace(name.substr(slash + 1), time).first->second;
        best = std::min(best, time);
    }
}

std::string TableReporter::cell(const Times& times, const std::string& who)
{
    const auto found = times.find(who);
    if (found == times.end())
        return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << found->second;
    return text.str();
}

std::string TableReporter::advantage(const Times& times)
{
    double peers = 0;
    for (const auto& [who, spent] : times)
        if (who != "one" && who != "all")
            peers = peers == 0 ? spent : std::min(peers, spent);
    const auto ours = times.find("one");
    if (peers == 0 || ours == times.end())
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
    std::vector<std::pair<std::string, Row>> rows(m_rows.begin(), m_rows.end());
    std::ranges::sort(rows, {}, [](const auto& row) { return row.second.registered; });
    for (const auto& [name, row] : rows) {
        std::cout << "| " << name;
        for (const char* who : {"one", "all", "leptonica", "libtiff"})
            std::cout << " | " << cell(row.times, who);
        std::cout << " | " << advantage(row.times) << " |\n";
    }
}

} // namespace bench
