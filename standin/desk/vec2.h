#pragma once

#include "drawing/geometry.h"

namespace desk {

/// A point or a displacement: in drawing units (y up) or in view pixels (y down), as the name beside it says.
using Vec2 = drawing::Vector2;

/// An upright box. Empty until a point has been put into it.
struct Box
{
    Vec2 low{1e300, 1e300};
    Vec2 high{-1e300, -1e300};

    bool empty() const { return low.x > high.x || low.y > high.y; }
    double width() const { return high.x - low.x; }
    double height() const { return high.y - low.y; }
    Vec2 centre() const { return (low + high) * 0.5; }
    bool contains(Vec2 p) const { return p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y; }
    bool contains(const Box& other) const { return !other.empty() && contains(other.low) && contains(other.high); }
    bool overlaps(const Box& other) const
    {
        return low.x <= other.high.x && high.x >= other.low.x && low.y <= other.high.y && high.y >= other.low.y;
    }
    Box intersect(const Box& other) const
    {
        return {{low.x > other.low.x ? low.x : other.low.x, low.y > other.low.y ? low.y : other.low.y},
                {high.x < other.high.x ? high.x : other.high.x, high.y < other.high.y ? high.y : other.high.y}};
    }
    /// The box with a margin of so many times its own size on each side.
    Box widened(double times) const
    {
        const Vec2 margin{width() * times, height() * times};
        return {low - margin, high + margin};
    }
    void add(Vec2 p)
    {
        low = {p.x < low.x ? p.x : low.x, p.y < low.y ? p.y : low.y};
        high = {p.x > high.x ? p.x : high.x, p.y > high.y ? p.y : high.y};
    }
    void add(const Box& other)
    {
        if (!other.empty()) {
            add(other.low);
            add(other.high);
        }
    }
};

} // namespace desk
