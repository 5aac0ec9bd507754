#include "standin/desk/view_transform.h"

#include <algorithm>
#include <cmath>

namespace desk {
namespace {

// Beyond these a view's neighbouring pixels are no longer different doubles, or the drawing is a dot.
constexpr double smallestHeight = 1e-9;
constexpr double largestHeight = 1e12;

} // namespace

Vec2 ViewTransform::toView(Vec2 drawing) const
{
    const double scale = unitsPerPixel();
    return {(drawing.x - m_centre.x) / scale + m_client.width * 0.5,
            (m_centre.y - drawing.y) / scale + m_client.height * 0.5};
}

Vec2 ViewTransform::toDrawing(Vec2 view) const
{
    const double scale = unitsPerPixel();
    return {m_centre.x + (view.x - m_client.width * 0.5) * scale,
            m_centre.y - (view.y - m_client.height * 0.5) * scale};
}

Box ViewTransform::visible() const
{
    Box box;
    box.add(toDrawing({-0.5, -0.5}));
    box.add(toDrawing({m_client.width - 0.5, m_client.height - 0.5}));
    return box;
}

void ViewTransform::resize(imaging::Size client)
{
    const double scale = unitsPerPixel();
    m_client = {std::max(client.width, 1), std::max(client.height, 1)};
    m_height = scale * m_client.height;
}

void ViewTransform::set(Vec2 centre, double height)
{
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y) || !(height >= smallestHeight && height <= largestHeight))
        return;
    const double scale = height / m_client.height;
    if (std::max(std::abs(centre.x), std::abs(centre.y)) > scale * 1e13)
        return;
    m_centre = centre;
    m_height = height;
}

void ViewTransform::zoomAbout(Vec2 view, double factor)
{
    if (!(factor > 0))
        return;
    const Vec2 held = toDrawing(view);
    set(held + (m_centre - held) * (1 / factor), m_height / factor);
}

void ViewTransform::pan(int dx, int dy)
{
    const double scale = unitsPerPixel();
    set({m_centre.x - dx * scale, m_centre.y + dy * scale}, m_height);
}

void ViewTransform::fit(const Box& box, double margin)
{
    if (box.empty())
        return;
    const double aspect = double(m_client.width) / m_client.height;
    const double height = std::max(box.height(), box.width() / aspect) / (1 - 2 * margin);
    // A single point has no size to fit: keep the scale and go there.
    set(box.centre(), height > smallestHeight ? height : m_height);
}

} // namespace desk
