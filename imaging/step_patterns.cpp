#include "imaging/step_patterns.h"

#include <algorithm>

namespace imaging {

namespace {

StepPatterns::Pattern patternFrom(std::int64_t fraction, std::int64_t step)
{
    constexpr int size = StepPatterns::groupSize;
    StepPatterns::Pattern pattern;
    for (std::size_t group = 0; group < pattern.least.size(); ++group) {
        const std::int64_t end = fraction + (StepPatterns::steps - 1 - std::int64_t(group) * size) * step;
        const std::int64_t least = std::min(end, end - (size - 1) * step) >> 32;
        pattern.least[group] = std::int32_t(least);
        for (std::size_t i = 0; i < size; ++i) {
            const std::int64_t whole = (end - std::int64_t(i) * step) >> 32;
            pattern.beyond[group * size + i] = std::uint8_t(whole - least);
        }
    }
    return pattern;
}

} // namespace

StepPatterns::StepPatterns(std::int64_t step)
{
    constexpr std::uint64_t whole = std::uint64_t(1) << 32;
    for (std::size_t i = 0; i <= steps; ++i)
        m_thresholds[i] = whole - std::uint32_t(i < steps ? std::int64_t(i) * step : 0);
    std::sort(m_thresholds.begin(), m_thresholds.end());
    for (std::size_t i = 0; i <= steps; ++i)
        m_patterns[i] = patternFrom(i > 0 ? std::int64_t(m_thresholds[i - 1]) : 0, step);
    for (std::size_t i = 0; i < m_firstIn.size(); ++i) {
        const auto first = std::lower_bound(m_thresholds.begin(), m_thresholds.end(), i << partShift);
        m_firstIn[i] = std::uint8_t(first - m_thresholds.begin());
    }
}

} // namespace imaging
