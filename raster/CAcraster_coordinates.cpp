// Between image space, drawing space and view space.

#include "raster/CAcraster.h"
#include "raster/Coordinates.h"
#include "raster/RegionRectangles.h"

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

CRect CAcraster::GetViewRect() const
{
    return PixelToView(GetImageRect());
}

int CAcraster::GetViewRegion(CRgn& viewRegion) const
{
    const CRect screen(CPoint(0, 0), ReadViewSize());
    const RegionRectangles rectangles(*m_pRegion);
    viewRegion.CreateRectRgn(0, 0, 0, 0);
    for (const CRect rect : rectangles) {
        CRect viewRect = PixelToView(rect);
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
