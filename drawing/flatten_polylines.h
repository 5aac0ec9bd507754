#pragma once

#include <functional>
#include <vector>

#include "drawing/entities.h"
#include "drawing/flatten.h"
#include "drawing/geometry.h"

namespace drawing {

/// A flattened polyline: lines where it is thin, filled outlines where it has a width. `map` goes from the
/// polyline's plane to the drawing.
void flattenPolyline(const std::vector<PolylinePoint>& points, bool closed, const Transform& map, double tolerance,
                     const std::function<void(FlatPath&&)>& emit);

/// The path of these points as seen from above.
FlatPath projectedPath(const std::vector<Vector3>& points, const Transform& map, bool closed, bool filled);

} // namespace drawing
