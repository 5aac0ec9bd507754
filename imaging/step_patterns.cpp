#include "imaging/step_patterns.h"

#include <algorithm>

namespace imaging {

namespace {

StepPatterns::Pattern patternFrom(std::int64_t fraction, std::int64_t step)
{
    constexpr int size = StepPatterns::groupSize;
    StepPatterns::Pattern pattern;
    for (int group = 0; group < StepPatterns::groups; ++group) {
        const std::int64_t end = fraction + ((StepPatterns::groups - group) * size - 1) * step;
        const std::int64_t least = std::min(end, end - (size - 1) * step) >> 32;
        pattern.least[std::size_t(group)] = std::int32_t(least);
        for (int i = 0; i < size; ++i)
            pattern.beyond[std::size_t(group * size + i)] = std::uint8_t(((end - i * step) >> 32) - least);
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
    std::size_t first = 0;
    for (std::size_t i = 0; i < m_patternIn.size(); ++i) {
        std::size_t last = first;
        while (m_thresholds[last] < (i + 1) << partShift)
            ++last;
        m_patternIn[i] = first == last ? std::uint8_t(first) : several;
        first = last;
    }
}

std::size_t StepPatterns::search(std::uint32_t fraction) const
{
    return std::size_t(std::upper_bound(m_thresholds.begin(), m_thresholds.end(), fraction) - m_thresholds.begin());
}

} // namespace imaging
