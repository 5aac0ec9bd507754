#pragma once

#include <vector>

#include "platform/platform.h"

/// The rectangles of a region, right and bottom exclusive, ordered by rows from the top.
class RegionRectangles
{
public:
    explicit RegionRectangles(const CRgn& region);

    int Count() const { return static_cast<int>(m_rectangles.size()); }
    auto begin() const { return m_rectangles.begin(); }
    auto end() const { return m_rectangles.end(); }

private:
    std::vector<CRect> m_rectangles;
};
