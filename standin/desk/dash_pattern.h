#pragma once

#include <functional>
#include <span>
#include <vector>

#include "standin/desk/vec2.h"

namespace desk {

/// Dashes (positive), gaps (negative) and dots (0) in drawing units, in turn.
using DashPattern = std::vector<double>;

/// Cuts a run of straight lines into the pattern's dashes, the pattern running on over the corners. Each dash goes to
/// `draw` as its straight pieces; a dot as a piece of no length. A pattern without length gives the lines as they are,
/// and so does one that would cut the run into more than maximumDashes.
void drawDashed(std::span<const Vec2> points, const DashPattern& pattern, int maximumDashes,
                const std::function<void(Vec2, Vec2)>& draw);

} // namespace desk
