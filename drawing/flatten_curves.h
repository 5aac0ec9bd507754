#pragma once

#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// By how much the map stretches lengths of the xy plane, at most, as seen from above.
double largestStretch(const Transform& map);

/// The angle from start to end, counter-clockwise, all in radians. Equal angles make a full turn, and so does an end
/// that lies whole turns above the start but for the rounding of the digits in a file.
double sweepBetween(double start, double end);

/// How many straight lines an arc needs. `radius` is as drawn, `sweep` in radians. A tolerance of 0 asks for a fixed
/// fineness.
int arcSteps(double radius, double sweep, double tolerance);

/// Points of an arc in a plane, from its start to its end, both included: centre + radius (cos, sin).
std::vector<Vector2> arcPoints(const Vector2& center, double radius, double start, double sweep, int steps);

/// Points from `from` to `to` along a bulge (tangent of a quarter of the angle, positive to the left), without `from`
/// and with `to`. `stretch`: see largestStretch.
std::vector<Vector2> bulgePoints(const Vector2& from, const Vector2& to, double bulge, double stretch,
                                 double tolerance);

} // namespace drawing
