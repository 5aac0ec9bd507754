#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>

#include "standin/desk/canvas.h"
#include "standin/desk/palette.h"
#include "standin/desk/raster_coverage.h"
#include "standin/desk/scene.h"
#include "standin/desk/view_transform.h"

namespace desk {

/// The present pixels of an image entity, a new pointer whenever they have changed; null if its file is missing.
using PixelSource = std::function<std::shared_ptr<const imaging::Bitmap>(drawing::Handle image)>;

/// Draws a scene as a view shows it.
class ScenePainter
{
public:
    ScenePainter(PixelSource pixels, drawing::FontSource& fonts) : m_pixels(std::move(pixels)), m_fonts(fonts) {}

    /// Fills the canvas's clip with the ground and draws every item that shows there, the lowest first.
    void paint(Canvas& canvas, const Scene& scene, const ViewTransform& view, const Palette& palette, bool imageFrames);
    /// Draws the given entities once more, as selected: dashed outlines with grips.
    void paintSelected(Canvas& canvas, const Scene& scene, const ViewTransform& view, const Palette& palette,
                       const std::set<drawing::Handle>& selected);

    /// View pixels for which rasters were sampled since the last call.
    std::int64_t takeSampledPixels();

private:
    void paintPath(Canvas& canvas, const ScenePath& path, const ViewTransform& view, Color color) const;
    void paintText(Canvas& canvas, const drawing::FlatText& text, const ViewTransform& view, Color color) const;
    void paintImage(Canvas& canvas, const SceneItem& item, const ViewTransform& view, const Palette& palette,
                    bool imageFrames);
    void paintRaster(Canvas& canvas, const SceneImage& image, const std::shared_ptr<const imaging::Bitmap>& pixels,
                     const ViewTransform& view, const Palette& palette, Color color);
    void paintMissing(Canvas& canvas, const SceneImage& image, const ViewTransform& view, Color color);

    PixelSource m_pixels;
    drawing::FontSource& m_fonts;
    std::map<drawing::Handle, RasterCoverage> m_coverage;
    std::int64_t m_sampled = 0;
};

} // namespace desk
