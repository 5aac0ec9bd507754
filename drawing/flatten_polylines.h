#pragma once

#include <functional>
#include <vector>

#include "drawing/entities.h"
#include "drawing/flatten.h"
#include "drawing/geometry.h"

namespace drawing {

/// A flattened polyline: paths where it is thin, areas where it has a width. `map` goes from the
/// polyline's plane to the drawing.
void flattenPolyline(const std::vector<PolylinePoint>& points, bool closed, const Transform& map, double tolerance,
                     const std::function<void(FlatShape&&)>& emit);

/// The points as seen from above.
std::vector<Vector2> projected(const std::vector<Vector3>& points, const Transform& map);
FlatPath projectedPath(const std::vector<Vector3>& points, const Transform& map, bool closed);

} // namespace drawing
