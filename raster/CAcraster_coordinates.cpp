// Between image space, drawing space and view space.

#include <utility>

#include "raster/CAcraster.h"
#include "raster/Coordinates.h"
#include "raster/RegionRectangles.h"

namespace {

// A turned or mirrored image converts a rectangle's corners in any order.
CRect OrderedRect(CPoint corner, CPoint opposite)
{
    CRect rect(corner, opposite);
    if (rect.left > rect.right)
        std::swap(rect.left, rect.right);
    if (rect.top > rect.bottom)
        std::swap(rect.top, rect.bottom);
    return rect;
}

} // namespace

AcGePoint3d CAcraster::PixelToWorld(CPoint pixel) const
{
    return PixelToWorld(pixel.x - 0.5, pixel.y - 0.5);
}

AcGePoint3d CAcraster::PixelToWorld(double x, double y) const
{
    AcGePoint3d point(x, y, 0);
    return point.transformBy(m_pixelToModel);
}

// Truncation goes toward zero, so a point less than half a pixel left of or above the image still lies in pixel 0.
CPoint CAcraster::WorldToPixel(const AcGePoint3d& point) const
{
    AcGePoint3d pixel = point;
    pixel.transformBy(m_pixelToModel.inverse());
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

CRect CAcraster::GetViewRect() const
{
    const CSize size = GetSize();
    return OrderedRect(PixelToView(CPoint(0, 0)), PixelToView(CPoint(size.cx, size.cy)));
}

int CAcraster::GetViewRegion(CRgn& viewRegion) const
{
    const CRect screen(CPoint(0, 0), ReadViewSize());
    const RegionRectangles rectangles(*m_pRegion);
    viewRegion.CreateRectRgn(0, 0, 0, 0);
    for (const CRect rect : rectangles) {
        CRect viewRect = OrderedRect(PixelToView(rect.TopLeft()), PixelToView(rect.BottomRight()));
        // What is smaller than a view pixel stays visible.
        if (viewRect.top == viewRect.bottom)
            ++viewRect.bottom;
        if (viewRect.left == viewRect.right)
            ++viewRect.right;
        CRect visible;
        visible.IntersectRect(viewRect, screen);
        if (visible.IsRectEmpty())
            continue;
        CRgn part;
        part.CreateRectRgnIndirect(viewRect);
        viewRegion.CombineRgn(&viewRegion, &part, RGN_OR);
    }
    return rectangles.Count();
}
