#include "standin/desk/image_placement.h"

#include <cmath>

namespace desk {
namespace {

double cross(Vec2 a, Vec2 b)
{
    return a.x * b.y - a.y * b.x;
}

} // namespace

std::optional<Vec2> ImagePlacement::toImage(Vec2 drawing, imaging::Size raster) const
{
    const double determinant = cross(right(), up());
    if (!std::isfinite(determinant) || determinant == 0)
        return std::nullopt;
    const Vec2 from = drawing - position;
    const double across = cross(from, up()) / determinant;
    const double upward = cross(right(), from) / determinant;
    return Vec2{across * raster.width, (1 - upward) * raster.height};
}

} // namespace desk
