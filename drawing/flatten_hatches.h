#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "drawing/geometry.h"
#include "drawing/hatch.h"

namespace drawing {

using Contours = std::vector<std::vector<Vector2>>;

/// What a hatch fills, in its plane: even-odd contours that close by themselves. Islands are there as far as the
/// hatch's style leaves them out. `stretch`: see largestStretch. Nothing where the boundary can't be understood.
std::optional<Contours> contoursOf(const Hatch& hatch, double stretch, double tolerance);

/// Straight pieces from `first` to `second`; dots have no length.
using Dashes = std::vector<std::pair<Vector2, Vector2>>;

/// Adds what of a pattern's lines lies in the contours. False, and an unfinished list, if that were more than `most`
/// dashes, or if the lines lie on each other.
bool addPatternDashes(const HatchPatternLine& line, const Contours& contours, std::size_t most, Dashes& dashes);

} // namespace drawing
