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

bool insidePiece(const PickPiece& piece, Vec2 at)
{
    bool inside = false;
    for (const auto& contour : piece.contours) {
        for (std::size_t i = 0, j = contour.size() - 1; piece.filled && i < contour.size(); j = i++) {
            const Vec2 a = contour[i], b = contour[j];
            if ((a.y > at.y) != (b.y > at.y) && at.x < a.x + (b.x - a.x) * (at.y - a.y) / (b.y - a.y))
                inside = !inside;
        }
    }
    return inside;
}

// Calls `visit` with the ends of each straight piece until one returns true, which is then the result.
template <class Visitor> bool anySegment(const PickPiece& piece, const Visitor& visit)
{
    for (const auto& contour : piece.contours) {
        for (std::size_t i = 1; i < contour.size(); ++i) {
            if (visit(contour[i - 1], contour[i]))
                return true;
        }
        const bool closes = piece.filled || contour.size() == 1;
        if (!contour.empty() && closes && visit(contour.back(), contour.front()))
            return true;
    }
    return false;
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
        for (const auto& contour : piece.contours) {
            for (const Vec2 point : contour)
                box.add(point);
        }
    }
    return box;
}

double distanceTo(const PickShape& shape, Vec2 at)
{
    double nearest = std::numeric_limits<double>::infinity();
    for (const PickPiece& piece : shape) {
        if (insidePiece(piece, at))
            return 0;
        anySegment(piece, [&](Vec2 a, Vec2 b) {
            nearest = std::min(nearest, distanceToSegment(a, b, at));
            return false;
        });
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
        if (insidePiece(piece, window.low) ||
            anySegment(piece, [&](Vec2 a, Vec2 b) { return segmentTouches(a, b, window); }))
            return true;
    }
    return false;
}

} // namespace desk
