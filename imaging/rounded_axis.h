#pragma once

#include <cstdint>

#include "imaging/resample_axis.h"

namespace imaging {

/// One direction of an image that shrinks to an n-th, rounded up or down where n does not divide it. Target pixels are
/// a trifle smaller or larger than n source pixels then. But for a few irregular ones, a target pixel covers a part of
/// its first source pixel, the n - 1 next ones wholly, and a part of one more:
///
///     source   |       |       |       |       |       |
///     target       |                               |          n = 4
///               first  whole   whole   whole    last
///
/// Lengths are in parts of the axis.
class RoundedAxis
{
public:
    /// How much of its first and of its last source pixel a target pixel covers; of an irregular one `last` is below 0
    /// or more than a whole pixel.
    struct Ends
    {
        std::int64_t first;
        std::int64_t last;
    };

    /// isRounded() has to hold for the axis, which has to outlive this.
    RoundedAxis(const ResampleAxis& axis, int n) : m_axis(axis), m_n(n), m_whole(axis.position(1)) {}

    /// Whether the axis shrinks to a rounded n-th, and to n pixels or more, so that each covers n + 2 at most.
    static bool isRounded(const ResampleAxis& axis, int n)
    {
        const std::int64_t rest = axis.source() - std::int64_t(axis.target()) * n;
        return axis.target() >= n && -n < rest && rest < n;
    }

    int n() const { return m_n; }
    int source() const { return m_axis.source(); }
    int target() const { return m_axis.target(); }
    std::int64_t whole() const { return m_whole; }
    std::int64_t targetPixel() const { return m_axis.unit(); }

    /// By how much n source pixels are longer than a target pixel.
    std::int64_t excess() const { return m_n * m_whole - targetPixel(); }

    int firstSource(int t) const { return int(t * targetPixel() / m_whole); }

    Ends endsOf(int t) const
    {
        const std::int64_t first = (firstSource(t) + 1) * m_whole - t * targetPixel();
        return {first, m_whole - excess() - first};
    }

    /// False where the last of the whole pixels is covered only in part, or more than one behind them.
    bool isRegular(Ends ends) const { return ends.last >= 0 && ends.last <= m_whole; }

private:
    const ResampleAxis& m_axis;
    int m_n;
    std::int64_t m_whole;
};

} // namespace imaging
