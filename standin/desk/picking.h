#pragma once

#include <span>
#include <vector>

#include "standin/desk/vec2.h"

namespace desk {

/// What of an entity can be pointed at, flattened to straight pieces in drawing units. A contour of one point is a
/// point. The contours of a filled piece close by themselves, and it is also hit inside them, by the even-odd rule.
struct PickPiece
{
    std::vector<std::vector<Vec2>> contours;
    bool filled = false;
};
using PickShape = std::vector<PickPiece>;

Box boundsOf(const PickShape& shape);

/// The distance from `at` to the shape; 0 inside a filled piece. Infinite for an empty shape.
double distanceTo(const PickShape& shape, Vec2 at);

/// Whether all of the shape lies inside the window. False for an empty shape.
bool insideWindow(const PickShape& shape, const Box& window);

/// Whether any of the shape lies inside the window or crosses its edge, or the window lies in a filled piece.
bool touchesWindow(const PickShape& shape, const Box& window);

} // namespace desk
