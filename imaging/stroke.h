#pragma once

#include <span>

#include "imaging/position.h"
#include "imaging/span_painter.h"

namespace imaging {

/// Draws the straight lines from each point to the next, and back to the first if closed, with a round pen of `width`
/// pixels, at least 1. A single point is a dot of the pen.
///
/// From 2 pixels on a pixel is ink where its centre lies within half the width of the line. Of a centre at exactly that
/// distance, the one to the right of or below the line is ink, so that a line along the pixels' edges is as wide as
/// one along their centres.
///
/// With 1 pixel the line is as thin as it can be without a gap: a line that is at least as wide as high makes one pixel
/// of each column ink whose centre it passes, the one that it passes through there; a higher line one of each row. To
/// these come the pixels that hold its ends. Pixels that follow each other so touch at an edge or a corner.
///
/// Lines with a coordinate that is not finite are left out. What lies outside costs nothing, however far it reaches.
void stroke(SpanPainter& painter, std::span<const Position> points, bool closed, int width);

} // namespace imaging
