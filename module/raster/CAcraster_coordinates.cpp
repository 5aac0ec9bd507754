// Between image space, drawing space and view space.

#include <algorithm>
#include <span>
#include <vector>

#include "module/raster/CAcraster.h"
#include "module/raster/Coordinates.h"
#include "module/raster/RegionRectangles.h"

namespace {

// Attaches all rectangles together, of which there is one at least. By halves: joined one by one to a growing region,
// 5,000 of them would keep the view waiting.
void AttachUnion(std::span<const CRect> rectangles, CRgn& region)
{
    if (rectangles.size() == 1) {
        region.CreateRectRgnIndirect(rectangles.front());
        return;
    }
    const size_t half = rectangles.size() / 2;
    AttachUnion(rectangles.first(half), region);
    CRgn rest;
    AttachUnion(rectangles.subspan(half), rest);
    region.CombineRgn(&region, &rest, RGN_OR);
}

template <typename Convert> CRect BoundsOf(const CRect& rect, Convert convert)
{
    const CPoint corners[] = {convert(rect.TopLeft()), convert(CPoint(rect.right, rect.top)),
                              convert(CPoint(rect.left, rect.bottom)), convert(rect.BottomRight())};
    const auto [left, right] = std::ranges::minmax(corners, {}, &CPoint::x);
    const auto [top, bottom] = std::ranges::minmax(corners, {}, &CPoint::y);
    return CRect(left.x, top.y, right.x, bottom.y);
}

} // namespace

AcGePoint3d CAcraster::PixelToWorld(CPoint pixel) const
{
    return PixelToWorld(pixel.x - 0.5, pixel.y - 0.5);
}

AcGePoint3d CAcraster::PixelToWorld(double x, double y) const
{
    AcGePoint3d point(x, y, 0);
    return point.transformBy(m_objects.m_pixelToModel);
}

// Truncation goes toward zero, so a point less than half a pixel left of or above the image still lies in pixel 0.
CPoint CAcraster::WorldToPixel(const AcGePoint3d& point) const
{
    AcGePoint3d pixel = point;
    pixel.transformBy(m_objects.m_pixelToModel.inverse());
    return CPoint(TruncateToInt(pixel.x + 0.5), TruncateToInt(pixel.y + 0.5));
}

CPoint CAcraster::PixelToView(CPoint pixel) const
{
    return WorldToView(PixelToWorld(pixel));
}

CPoint CAcraster::ViewToPixel(CPoint point) const
{
    return WorldToPixel(ViewToWorld(point));
}

CRect CAcraster::PixelToView(const CRect& pixels) const
{
    CRect rect(PixelToView(pixels.TopLeft()), PixelToView(pixels.BottomRight()));
    rect.NormalizeRect();
    return rect;
}

CRect CAcraster::ViewToPixel(const CRect& rect) const
{
    CRect pixels(ViewToPixel(rect.TopLeft()), ViewToPixel(rect.BottomRight()));
    pixels.NormalizeRect();
    return pixels;
}

CRect CAcraster::BoundsInView(const CRect& pixels) const
{
    return BoundsOf(pixels, [this](CPoint corner) { return PixelToView(corner); });
}

CRect CAcraster::BoundsInPixels(const CRect& rect) const
{
    return BoundsOf(rect, [this](CPoint corner) { return ViewToPixel(corner); });
}

CRect CAcraster::GetViewRect() const
{
    return PixelToView(GetImageRect());
}

int CAcraster::GetViewRegion(CRgn& viewRegion) const
{
    const ViewScale view;
    const CRect screen(CPoint(0, 0), view.ViewSize());
    const RegionRectangles rectangles(*m_pRegion);
    std::vector<CRect> parts;
    for (const CRect rect : rectangles) {
        const CPoint corner = view.ToView(PixelToWorld(rect.TopLeft()));
        const CPoint opposite = view.ToView(PixelToWorld(rect.BottomRight()));
        // The image may be turned or mirrored.
        CRect part(std::min(corner.x, opposite.x), std::min(corner.y, opposite.y), std::max(corner.x, opposite.x),
                   std::max(corner.y, opposite.y));
        // What is smaller than a view pixel stays visible.
        if (part.top == part.bottom)
            ++part.bottom;
        if (part.left == part.right)
            ++part.right;
        CRect visible;
        visible.IntersectRect(part, screen);
        if (!visible.IsRectEmpty())
            parts.push_back(part);
    }
    if (parts.empty()) {
        viewRegion.CreateRectRgn(0, 0, 0, 0);
    } else {
        AttachUnion(parts, viewRegion);
    }
    return rectangles.Count();
}
