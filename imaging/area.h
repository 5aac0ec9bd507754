#pragma once

#include <span>
#include <vector>

#include "imaging/position.h"
#include "imaging/span_painter.h"

namespace imaging {

/// What lies inside closed contours.
enum class FillRule
{
    evenOdd, // what an odd number of contours goes around
    nonZero  // what contours go around more often one way than the other
};

/// Fills the area inside closed contours, each of which runs from its last point back to its first. A pixel is ink
/// where its centre lies inside; a centre on the border counts as inside to the right of the area and below it.
///
/// Thin parts leave a trace: where the line through the centres of a row or a column passes through the area without
/// meeting a centre, the pixel in the middle of this passage is ink as well. An area so small that no such line meets
/// it makes the pixel that holds it ink. So nothing grows that has a pixel's width, as an outline would make it.
///
/// Contours with a coordinate that is not finite are left out. What lies outside costs nothing, however far it reaches.
void fillArea(SpanPainter& painter, std::span<const std::vector<Position>> contours, FillRule rule);

} // namespace imaging
