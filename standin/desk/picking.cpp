#include "standin/desk/picking.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace desk {
namespace {

double distanceToSegment(Vec2 a, Vec2 b, Vec2 at)
{
    const Vec2 along = b - a;
    const double lengthSquared = along.x * along.x + along.y * along.y;
    double share = 0;
    if (lengthSquared > 0)
        share = std::clamp(((at.x - a.x) * along.x + (at.y - a.y) * along.y) / lengthSquared, 0.0, 1.0);
    const Vec2 nearest = a + along * share;
    return std::hypot(at.x - nearest.x, at.y - nearest.y);
}

// Even-odd rule; the outline closes itself.
bool insideOutline(const std::vector<Vec2>& outline, Vec2 at)
{
    bool inside = false;
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
        const Vec2 a = outline[i], b = outline[j];
        if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y))
            inside = !inside;
    }
    return inside;
}

// Clips the segment to the box, edge by edge; true if anything is left.
bool segmentTouches(Vec2 a, Vec2 b, const Box& box)
{
    double first = 0, last = 1;
    const auto clip = [&](double direction, double room) {
        if (direction == 0)
            return room >= 0;
        const double share = room / direction;
        if (direction < 0) {
            first = std::max(first, share);
        } else {
            last = std::min(last, share);
        }
        return first <= last;
    };
    const Vec2 d = b - a;
    return clip(-d.x, a.x - box.low.x) && clip(d.x, box.high.x - a.x) && clip(-d.y, a.y - box.low.y) &&
           clip(d.y, box.high.y - a.y);
}

} // namespace

Box boundsOf(const PickShape& shape)
{
    Box box;
    for (const PickPiece& piece : shape) {
        for (const Vec2 point : piece.points)
            box.add(point);
    }
    return box;
}

double distanceTo(const PickShape& shape, Vec2 at)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (const PickPiece& piece : shape) {
        const auto& points = piece.points;
        if (points.empty())
            continue;
        if (piece.filled && insideOutline(points, at))
            return 0;
        nearest = std::min(nearest, std::hypot(at.x - points[0].x, at.y - points[0].y));
        for (std::size_t i = 1; i < points.size(); ++i)
            nearest = std::min(nearest, distanceToSegment(points[i - 1], points[i], at));
        if (piece.filled)
            nearest = std::min(nearest, distanceToSegment(points.back(), points.front(), at));
    }
    return nearest;
}

bool insideWindow(const PickShape& shape, const Box& window)
{
    return window.contains(boundsOf(shape));
}

bool touchesWindow(const PickShape& shape, const Box& window)
{
    for (const PickPiece& piece : shape) {
        const auto& points = piece.points;
        if (points.empty())
            continue;
        if (window.contains(points.front()) || (piece.filled && insideOutline(points, window.low)))
            return true;
        for (std::size_t i = 1; i < points.size(); ++i) {
            if (segmentTouches(points[i - 1], points[i], window))
                return true;
        }
        if (piece.filled && segmentTouches(points.back(), points.front(), window))
            return true;
    }
    return false;
}

} // namespace desk
