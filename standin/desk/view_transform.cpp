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
    return {(drawing.x - centre_.x) / scale + client_.width * 0.5,
            (centre_.y - drawing.y) / scale + client_.height * 0.5};
}

Vec2 ViewTransform::toDrawing(Vec2 view) const
{
    const double scale = unitsPerPixel();
    return {centre_.x + (view.x - client_.width * 0.5) * scale, centre_.y - (view.y - client_.height * 0.5) * scale};
}

Box ViewTransform::visible() const
{
    Box box;
    box.add(toDrawing({-0.5, -0.5}));
    box.add(toDrawing({client_.width - 0.5, client_.height - 0.5}));
    return box;
}

void ViewTransform::resize(imaging::Size client)
{
    const double scale = unitsPerPixel();
    client_ = {std::max(client.width, 1), std::max(client.height, 1)};
    height_ = scale * client_.height;
}

void ViewTransform::set(Vec2 centre, double height)
{
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y) || !(height >= smallestHeight && height <= largestHeight))
        return;
    const double scale = height / client_.height;
    if (std::max(std::abs(centre.x), std::abs(centre.y)) > scale * 1e13)
        return;
    centre_ = centre;
    height_ = height;
}

void ViewTransform::zoomAbout(Vec2 view, double factor)
{
    if (!(factor > 0))
        return;
    const Vec2 held = toDrawing(view);
    set(held + (centre_ - held) * (1 / factor), height_ / factor);
}

void ViewTransform::pan(int dx, int dy)
{
    const double scale = unitsPerPixel();
    set({centre_.x - dx * scale, centre_.y + dy * scale}, height_);
}

void ViewTransform::fit(const Box& box, double margin)
{
    if (box.empty())
        return;
    const double aspect = double(client_.width) / client_.height;
    const double height = std::max(box.height(), box.width() / aspect) / (1 - 2 * margin);
    // A single point has no size to fit: keep the scale and go there.
    set(box.centre(), height > smallestHeight ? height : height_);
}

} // namespace desk
