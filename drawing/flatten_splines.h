#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// A curve by control points: piecewise polynomial, or rational if it has weights.
struct ControlledCurve
{
    int degree = 3;
    std::vector<double> knots;   // rising; as many as control points, and degree + 1 more
    std::vector<double> weights; // positive, one for each control point; or none
    std::vector<Vector3> controlPoints;
};

/// The curve as straight lines that stray from it by the tolerance at most; 0: a fixed fineness. Nothing if the numbers
/// make no curve. The number of points is bounded, at the price of the tolerance.
std::optional<std::vector<Vector3>> flattenedCurve(const ControlledCurve& curve, double tolerance);

/// The same for a smooth curve through points: cubic between two of them, with the curvature continuous, its parameter
/// the length along the chords. Without a tangent an end isn't curved; closed, the curve runs from the last point back
/// to the first.
std::vector<Vector3> flattenedFit(std::vector<Vector3> points, bool closed, const std::optional<Vector3>& startTangent,
                                  const std::optional<Vector3>& endTangent, double tolerance);

} // namespace drawing
