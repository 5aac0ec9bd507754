#pragma once

#include <span>
#include <vector>

#include "imaging/geometry.h"

namespace imaging {

/// A set of pixels as disjoint rectangles in canonical form, so that equal sets have equal lists: the rectangles lie in
/// bands from top to bottom; within a band all have the same top and bottom and run from left to right without
/// touching; two bands that touch differ in their spans. A value type; every operation takes time in proportion to the
/// rectangles.
class Region
{
public:
    Region() = default;
    explicit Region(const Rect& rect);

    /// The union of any rectangles, overlapping or empty ones too.
    static Region fromRects(std::span<const Rect> rects);

    const std::vector<Rect>& rects() const { return m_rects; }
    bool empty() const { return m_rects.empty(); }

    /// The smallest rectangle around the region; an empty region has an empty one.
    Rect box() const { return m_box; }

    bool contains(Point p) const;

    /// Whether every pixel of the row from left up to, but without, right belongs to the region.
    bool containsSpan(int y, int left, int right) const;

    /// The rectangles of the band that crosses row y; empty when none does.
    std::span<const Rect> band(int y) const;

    void offset(int dx, int dy);

    bool operator==(const Region& other) const { return m_rects == other.m_rects; }

private:
    friend class RegionBuilder;

    std::vector<Rect> m_rects;
    Rect m_box;
};

Region unite(const Region& a, const Region& b);
Region subtract(const Region& a, const Region& b);
Region intersect(const Region& a, const Region& b);

} // namespace imaging
