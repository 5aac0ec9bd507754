#pragma once

#include <array>
#include <cstdint>

namespace imaging {

/// Where 64 steps of equal length lead, in whole pixels. It depends on where in its pixel the first step begins, but
/// each of the 64 sums reaches the next whole at one fraction of the first pixel only, so there are at most 65 answers:
///
///   step of 0.7, begun at 0.0   0 0 1 2 2 3 4 ...
///                begun at 0.1   0 0 1 2 2 3 4 ...
///                begun at 0.3   0 1 1 2 3 3 4 ...
///
/// A table of them takes the place of the sums. Lengths and fractions are fixed-point with 32 bits of fraction.
class StepPatterns
{
public:
    static constexpr int groups = 4;
    static constexpr int groupSize = 16;
    static constexpr int steps = groups * groupSize;

    /// The last step comes first, and the last sixteen are the first group: of each group the least whole, and of each
    /// step how far beyond its group's least it leads.
    struct Pattern
    {
        std::array<std::uint8_t, steps> beyond;
        std::array<std::int32_t, groups> least;
    };

    /// At most a pixel in either direction.
    explicit StepPatterns(std::int64_t step);

    const Pattern& from(std::uint32_t fraction) const
    {
        std::size_t i = m_firstIn[fraction >> partShift];
        while (m_thresholds[i] <= fraction)
            ++i;
        return m_patterns[i];
    }

private:
    static constexpr int partShift = 20; // parts of a 4096th of a pixel, few of which have thresholds

    std::array<std::uint64_t, steps + 1> m_thresholds; // at which one step more reaches its next whole
    std::array<Pattern, steps + 1> m_patterns;         // for fractions below the threshold of the same index
    std::array<std::uint8_t, std::size_t(1) << (32 - partShift)> m_firstIn; // the first threshold in each part
};

} // namespace imaging
