#pragma once

#include <cstdint>
#include <vector>

namespace imaging {

/// Where one direction's source pixels come to lie among the target's. A target pixel is unit() long; edge e of the
/// source, which lies before pixel e or at the end, falls `fraction` beyond the beginning of target pixel `pixel`. In a
/// direction that grows, edges fall between target pixels and the unit is 1.
class ResampleAxis
{
public:
    struct Edge
    {
        int pixel;
        int fraction;
    };

    /// Both counts of pixels are at least 1.
    ResampleAxis(int source, int target);

    int source() const { return int(m_edges.size()) - 1; }
    int target() const { return m_edges.back().pixel; }
    std::int64_t unit() const { return m_unit; }
    const Edge& operator[](int edge) const { return m_edges[std::size_t(edge)]; }
    std::int64_t position(int edge) const { return m_edges[std::size_t(edge)].pixel * m_unit + (*this)[edge].fraction; }

    /// The first source pixel that covers some of target pixel t, and the first one behind these.
    int firstSource(int t) const;
    int endSource(int t) const;

    /// How much of target pixel t source pixel s covers, in parts of the unit; 0 for none.
    std::int64_t overlap(int s, int t) const;

private:
    std::vector<Edge> m_edges;
    std::int64_t m_unit = 1;
};

} // namespace imaging
