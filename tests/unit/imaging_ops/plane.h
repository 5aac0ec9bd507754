// What strokes and areas are checked by.
#pragma once

#include <cmath>

#include "imaging/bitmap.h"
#include "imaging/position.h"

inline imaging::Position centreOf(int x, int y)
{
    return {x + 0.5, y + 0.5};
}

/// From a position to the nearest point of a segment.
inline double distanceTo(const imaging::Position& a, const imaging::Position& b, const imaging::Position& p)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    const double along = square > 0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / square : 0;
    const double t = std::min(1.0, std::max(0.0, along));
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

/// The groups of ink that touches at edges or corners.
int countGroups(const imaging::Bitmap& bitmap);
