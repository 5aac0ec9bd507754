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
        const Milliseconds time{run.GetAdjustedRealTime(), run.GetAdjustedCPUTime()};
        Milliseconds& best = m_rows[row].try_emplace(name.substr(slash + 1), time).first->second;
        best.clock = std::min(best.clock, time.clock);
        best.processor = std::min(best.processor, time.processor);
    }
}

std::string TableReporter::cell(const Row& row, const std::string& who)
{
    const auto found = row.find(who);
    if (found == row.end())
        return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << found->second.clock << " (" << found->second.processor << ")";
    return text.str();
}

std::string TableReporter::advantage(const Row& row, double Milliseconds::*time)
{
    double peers = 0;
    for (const auto& [who, spent] : row)
        if (who != "halvoran")
            peers = peers == 0 ? spent.*time : std::min(peers, spent.*time);
    const auto ours = row.find("halvoran");
    if (peers == 0 || ours == row.end())
        return "";
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << peers / (ours->second.*time);
    return text.str();
}

void TableReporter::Finalize()
{
    std::cout << "Milliseconds by the clock, in brackets processor time of all cores; the best of seven.\n\n"
              << "| Operation | Halvoran | Leptonica | libtiff | times as fast | by processor time |\n"
              << "|---|---:|---:|---:|---:|---:|\n";
    for (const std::string& name : m_order) {
        const Row& row = m_rows[name];
        std::cout << "| " << name << " | " << cell(row, "halvoran") << " | " << cell(row, "leptonica") << " | "
                  << cell(row, "libtiff") << " | " << advantage(row, &Milliseconds::clock) << " | "
                  << advantage(row, &Milliseconds::processor) << " |\n";
    }
}

} // namespace bench
