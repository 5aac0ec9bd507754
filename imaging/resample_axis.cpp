#include "imaging/resample_axis.h"

#include <algorithm>
#include <numeric>

namespace imaging {

ResampleAxis::ResampleAxis(int source, int target) : m_edges(std::size_t(source) + 1)
{
    const std::int64_t divisor = std::gcd(source, target);
    const std::int64_t from = std::max<std::int64_t>(source / divisor, 1);
    const std::int64_t to = target / divisor;
    m_unit = target < source ? from : 1;
    for (std::int64_t e = 0; e <= source; ++e) {
        // Growing, target pixel t takes source pixel floor((t + 1/2) from / to). The first t that takes e:
        const std::int64_t first = (2 * e * to + from - 1) / (2 * from);
        const std::int64_t position = target < source ? e * to : first;
        m_edges[std::size_t(e)] = {int(position / m_unit), int(position % m_unit)};
    }
}

int ResampleAxis::firstSource(int t) const
{
    const auto beyond = std::upper_bound(m_edges.begin(), m_edges.end(), t * m_unit, [&](std::int64_t at, Edge edge) {
        return at < edge.pixel * m_unit + edge.fraction;
    });
    return int(beyond - m_edges.begin()) - 1;
}

int ResampleAxis::endSource(int t) const
{
    int end = firstSource(t);
    while (end < source() && position(end) < (t + 1) * m_unit)
        ++end;
    return end;
}

std::int64_t ResampleAxis::overlap(int s, int t) const
{
    return std::max<std::int64_t>(0, std::min(position(s + 1), (t + 1) * m_unit) - std::max(position(s), t * m_unit));
}

} // namespace imaging
