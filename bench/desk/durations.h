// Times of single steps, in microseconds.
#pragma once

#include <windows.h>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench {

template <typename Step> double microseconds(Step&& step)
{
    LARGE_INTEGER frequency;
    LARGE_INTEGER start;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    step();
    QueryPerformanceCounter(&end);
    return 1e6 * static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

class Durations
{
public:
    void add(double time) { m_times.push_back(time); }
    double median() const { return at(0.5); }
    // Of a hundred times, this many are no longer: percentile(0.99).
    double percentile(double share) const { return at(share); }
    double worst() const { return at(1); }

private:
    double at(double share) const
    {
        std::vector<double> sorted = m_times;
        std::sort(sorted.begin(), sorted.end());
        return sorted.at(static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1)));
    }

    std::vector<double> m_times;
};

} // namespace bench
