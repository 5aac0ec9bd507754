#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "drawing/geometry.h"

namespace drawing {

/// Dashes (positive), gaps (negative) and dots (0), in turn; in the unit of the points that they are laid along.
using DashPattern = std::vector<double>;

/// The length after which the pattern repeats; 0 if it has none.
double periodOf(const DashPattern& pattern);

/// Cuts a run of straight lines into the pattern's dashes, the pattern running on over the corners. Each dash goes to
/// `draw` as its straight pieces; a dot as a piece of no length. A pattern without length gives the lines as they are,
/// and so does one that would cut the run into more than mostDashes.
void drawDashed(std::span<const Vector2> points, const DashPattern& pattern, std::size_t mostDashes,
                const std::function<void(Vector2, Vector2)>& draw);

} // namespace drawing
