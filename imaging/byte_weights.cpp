#include "imaging/byte_weights.h"

#include <algorithm>
#include <cmath>

namespace imaging {

ByteWeights::Ends ByteWeights::nearest(RoundedAxis::Ends ends) const
{
    const auto rounded = [this](std::int64_t part) {
        return int((2 * part * m_whole + m_axis.whole()) / (2 * m_axis.whole()));
    };
    return {rounded(ends.first), rounded(ends.last)};
}

float ByteWeights::error(RoundedAxis::Ends ends, Ends bytes) const
{
    // Half of all is wrong by half of what both ends are, and either end may be ink or not.
    const float byte = float(m_whole) / float(m_axis.whole());
    return (std::abs(float(bytes.first) - float(ends.first) * byte) +
            std::abs(float(bytes.last) - float(ends.last) * byte)) /
           2;
}

std::optional<ByteWeights::Ends> ByteWeights::alike(RoundedAxis::Ends ends) const
{
    // Both ends together cover a trifle less or more than a whole pixel, and their bytes have to as well.
    const int nearestSum = nearest({m_axis.whole() - m_axis.excess(), 0}).first;
    const int both = m_axis.excess() > 0 ? std::min(nearestSum, m_whole - 1) : std::max(nearestSum, m_whole + 1);
    const int first = nearest(ends).first;
    for (const int off : {0, 1, -1, 2, -2, 3, -3}) {
        const Ends bytes{first + off, both - first - off};
        if (bytes.first >= 0 && bytes.last >= 0 && areAlike(ends, bytes))
            return bytes;
    }
    return std::nullopt;
}

bool ByteWeights::areAlike(RoundedAxis::Ends ends, Ends bytes) const
{
    const int n = m_axis.n();
    const int most = n * (n - 1);
    const auto reachesHalf = [&](std::int64_t endInk, int between) {
        return 2 * (endInk + between * m_axis.whole()) >= n * m_axis.targetPixel();
    };
    for (int first = 0; first <= n; ++first) {
        for (int last = 0; last <= n; ++last) {
            // How many of the pixels between the ends have to be ink too, by bytes:
            const int missing = n * sum(bytes) - 2 * (first * bytes.first + last * bytes.last);
            const int between = std::clamp((missing + 2 * m_whole - 1) / (2 * m_whole), 0, most + 1);
            const std::int64_t endInk = first * ends.first + last * ends.last;
            if ((between <= most && !reachesHalf(endInk, between)) || (between > 0 && reachesHalf(endInk, between - 1)))
                return false;
        }
    }
    return true;
}

} // namespace imaging
