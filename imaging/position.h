#pragma once

namespace imaging {

/// A position between the pixels, in pixels, x to the right and y down: the pixel (x, y) covers the square from (x, y)
/// to (x + 1, y + 1), and its centre lies at (x + 0.5, y + 0.5).
struct Position
{
    double x = 0;
    double y = 0;
};

} // namespace imaging
