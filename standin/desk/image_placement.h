#pragma once

#include <optional>

#include "imaging/geometry.h"
#include "standin/desk/vec2.h"

namespace desk {

/// Where a raster image lies in the drawing. Image points are pixels of the raster that is shown, x to the right and y
/// down from its top left corner, with pixels' corners at whole numbers; the raster may have another size than the
/// entity tells.
struct ImagePlacement
{
    Vec2 position;        // lower left corner of the lower left pixel
    Vec2 u, v;            // edges of one pixel
    imaging::Size pixels; // as the entity tells them

    /// Edges of the whole image.
    Vec2 right() const { return u * pixels.width; }
    Vec2 up() const { return v * pixels.height; }

    Vec2 toDrawing(Vec2 image, imaging::Size raster) const
    {
        return position + right() * (image.x / raster.width) + up() * (1 - image.y / raster.height);
    }
    /// Nothing if the image has no extent.
    std::optional<Vec2> toImage(Vec2 drawing, imaging::Size raster) const;

    friend bool operator==(const ImagePlacement& a, const ImagePlacement& b)
    {
        return a.position == b.position && a.u == b.u && a.v == b.v && a.pixels == b.pixels;
    }
};

} // namespace desk
