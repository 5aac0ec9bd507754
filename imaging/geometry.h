// Integer geometry of the pixel grid: x to the right, y down, in pixels.
#pragma once

#include <algorithm>

namespace imaging {

struct Point
{
    int x = 0;
    int y = 0;

    bool operator==(const Point&) const = default;
};

struct Size
{
    int width = 0;
    int height = 0;

    bool empty() const { return width <= 0 || height <= 0; }
    bool operator==(const Size&) const = default;
};

/// Right and bottom are exclusive. A rectangle whose right is not beyond its left, or bottom not beyond its top, is
/// empty. Coordinates stay within +-2^30, so that widths and sums of two coordinates fit in an int.
struct Rect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    static Rect of(Size size) { return {0, 0, size.width, size.height}; }
    static Rect of(Point topLeft, Size size)
    {
        return {topLeft.x, topLeft.y, topLeft.x + size.width, topLeft.y + size.height};
    }

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    Size size() const { return {width(), height()}; }
    bool empty() const { return right <= left || bottom <= top; }

    bool contains(Point p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }

    /// The common part; empty when there is none.
    Rect intersect(const Rect& other) const
    {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }

    /// The smallest rectangle that holds both; an empty one adds nothing.
    Rect unite(const Rect& other) const
    {
        if (other.empty())
            return *this;
        if (empty())
            return other;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    Rect offset(int dx, int dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }

    bool operator==(const Rect&) const = default;
};

} // namespace imaging
