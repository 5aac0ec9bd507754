#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "imaging/geometry.h"

namespace desk::script {

/// A picture of the view; 0x00RRGGBB.
struct ViewPicture
{
    imaging::Size size;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const { return pixels[std::size_t(y) * size.width + x]; }
    bool holds(int x, int y) const { return x >= 0 && y >= 0 && x < size.width && y < size.height; }
};

/// The 8 by 8 pattern that a crawling frame is painted with.
using FramePattern = std::array<std::uint32_t, 64>;

/// The share, 0 to 1, of the rectangle's outline pixels inside the picture that show the pattern, at the pattern's best
/// position. 0 if nothing of the outline lies inside.
double outlineMatch(const ViewPicture& picture, const imaging::Rect& rectangle, const FramePattern& pattern);

/// Whether a level or upright run of the pattern, two periods long or more, is anywhere in the picture.
bool holdsPatternRun(const ViewPicture& picture, const FramePattern& pattern);

} // namespace desk::script
