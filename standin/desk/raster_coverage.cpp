#include "standin/desk/raster_coverage.h"

#include <cmath>
#include <cstring>

#include "imaging/display.h"

namespace desk {
namespace {

// From the corners of the area's pixels to the image's pixel corners (y down from its top).
std::optional<imaging::Affine> fromAreaToImage(const ImagePlacement& image, imaging::Size raster,
                                               const ViewTransform& view, imaging::Point area)
{
    // Long arms keep the digits that a step of one pixel would lose.
    const double arm = 1024;
    const Vec2 corner{area.x - 0.5, area.y - 0.5};
    const auto origin = image.toImage(view.toDrawing(corner), raster);
    const auto across = image.toImage(view.toDrawing(corner + Vec2{arm, 0}), raster);
    const auto down = image.toImage(view.toDrawing(corner + Vec2{0, arm}), raster);
    if (!origin || !across || !down)
        return std::nullopt;
    const Vec2 x = (*across - *origin) * (1 / arm), y = (*down - *origin) * (1 / arm);
    return imaging::Affine{x.x, y.x, origin->x, x.y, y.y, origin->y};
}

} // namespace

std::optional<imaging::Point> panBetween(const ViewTransform& from, const ViewTransform& to)
{
    if (from.height() != to.height() || !(from.client() == to.client()))
        return std::nullopt;
    const Vec2 moved = to.toView(from.centre()) - from.toView(from.centre());
    const Vec2 whole{std::round(moved.x), std::round(moved.y)};
    constexpr double tolerance = 1e-3;
    if (std::abs(moved.x - whole.x) > tolerance || std::abs(moved.y - whole.y) > tolerance ||
        std::abs(whole.x) >= to.client().width || std::abs(whole.y) >= to.client().height)
        return std::nullopt;
    return imaging::Point{static_cast<int>(whole.x), static_cast<int>(whole.y)};
}

const std::vector<std::uint8_t>& RasterCoverage::update(const SceneImage& image,
                                                        const std::shared_ptr<const imaging::Bitmap>& pixels,
                                                        const ViewTransform& view)
{
    const imaging::Size client = view.client();
    m_sampled = 0;
    std::optional<imaging::Point> pan;
    if (pixels == m_pixels && image.placement == m_image.placement && !m_coverage.empty())
        pan = panBetween(m_view, view);
    m_image = image;
    m_pixels = pixels;
    m_view = view;
    if (!pan) {
        m_coverage.assign(std::size_t(client.width) * client.height, 0);
        sample(imaging::Rect::of(client));
        return m_coverage;
    }
    if (pan->x == 0 && pan->y == 0)
        return m_coverage;
    shift(*pan);
    const int newTop = pan->y > 0 ? 0 : client.height + pan->y;
    const int oldTop = std::max(pan->y, 0), oldBottom = client.height + std::min(pan->y, 0);
    sample({0, newTop, client.width, newTop + std::abs(pan->y)});
    const int newLeft = pan->x > 0 ? 0 : client.width + pan->x;
    sample({newLeft, oldTop, newLeft + std::abs(pan->x), oldBottom});
    return m_coverage;
}

void RasterCoverage::shift(imaging::Point pan)
{
    const imaging::Size client = m_view.client();
    const int kept = client.width - std::abs(pan.x);
    const int from = std::max(-pan.x, 0), to = std::max(pan.x, 0);
    const auto moveRow = [&](int y) {
        std::memmove(&m_coverage[std::size_t(y) * client.width + to],
                     &m_coverage[std::size_t(y - pan.y) * client.width + from], kept);
    };
    if (pan.y > 0) {
        for (int y = client.height - 1; y >= pan.y; --y)
            moveRow(y);
    } else {
        for (int y = 0; y < client.height + pan.y; ++y)
            moveRow(y);
    }
}

void RasterCoverage::sample(const imaging::Rect& area)
{
    const int width = m_view.client().width;
    if (area.empty())
        return;
    for (int y = area.top; y < area.bottom; ++y)
        std::memset(&m_coverage[std::size_t(y) * width + area.left], 0, area.width());

    // Only what the image's own box covers is looked at.
    Box box;
    for (const Vec2 corner : m_image.corners())
        box.add(m_view.toView(corner));
    const auto bounded = [](double value) { return static_cast<int>(std::clamp(value, -1e8, 1e8)); };
    const imaging::Rect part = area.intersect({bounded(std::floor(box.low.x)), bounded(std::floor(box.low.y)),
                                               bounded(std::ceil(box.high.x)) + 1, bounded(std::ceil(box.high.y)) + 1});
    if (part.empty())
        return;
    const auto map = fromAreaToImage(m_image.placement, m_pixels->size(), m_view, {part.left, part.top});
    if (!map)
        return;
    imaging::sampleCoverage(*m_pixels, *map, part.size(), &m_coverage[std::size_t(part.top) * width + part.left],
                            width);
    m_sampled += std::int64_t(part.width()) * part.height();
}

} // namespace desk
