#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "imaging/bitmap.h"
#include "standin/desk/scene.h"
#include "standin/desk/view_transform.h"

namespace desk {

/// How many whole pixels the drawing has moved from one view to the other; nothing if they differ in more than that.
std::optional<imaging::Point> panBetween(const ViewTransform& from, const ViewTransform& to);

/// A raster image as the view shows it: the share of ink in each view pixel, kept from one painting to the next.
/// A pan shifts what is there and samples the uncovered strips alone.
class RasterCoverage
{
public:
    /// Brings the picture up to date and returns one byte per client pixel, row by row: 0 no ink, 255 all ink.
    /// The span holds until the next call.
    const std::vector<std::uint8_t>&
    update(const SceneImage& image, const std::shared_ptr<const imaging::Bitmap>& pixels, const ViewTransform& view);

    /// View pixels sampled by the last update.
    std::int64_t sampled() const { return m_sampled; }

private:
    void shift(imaging::Point pan);
    void sample(const imaging::Rect& area);

    SceneImage m_image;
    std::shared_ptr<const imaging::Bitmap> m_pixels;
    ViewTransform m_view;
    std::vector<std::uint8_t> m_coverage;
    std::int64_t m_sampled = 0;
};

} // namespace desk
