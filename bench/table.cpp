#include "table.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

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
        if (!milliseconds_.contains(row))
            order_.push_back(row);
        const double time = run.GetAdjustedRealTime();
        double& best = milliseconds_[row].try_emplace(name.substr(slash + 1), time).first->second;
        best = std::min(best, time);
    }
}

void TableReporter::Finalize()
{
    const std::vector<std::string> peers = {"leptonica", "libtiff"};
    std::cerr << "\n";
    std::cout
        << "| Operation | Halvoran, ms | Leptonica, ms | libtiff, ms | times as fast |\n|---|---:|---:|---:|---:|\n"
        << std::fixed;
    for (const std::string& row : order_) {
        const std::map<std::string, double>& times = milliseconds_[row];
        const auto ours = times.find("halvoran");
        if (ours == times.end())
            continue;
        std::cout << "| " << row << " | " << std::setprecision(1) << ours->second << " |";
        double best = 0;
        for (const std::string& peer : peers) {
            const auto theirs = times.find(peer);
            if (theirs == times.end()) {
                std::cout << " |";
                continue;
            }
            std::cout << " " << theirs->second << " |";
            best = best == 0 ? theirs->second : std::min(best, theirs->second);
        }
        if (best > 0)
            std::cout << " " << std::setprecision(1) << best / ours->second;
        std::cout << " |\n";
    }
}

} // namespace bench
