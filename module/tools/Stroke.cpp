#include "module/tools/Stroke.h"

#include "module/raster/CAcraster.h"
#include "module/raster/Coordinates.h"

int PenWidth = 3;
int LineWidth = 3;
int EraserWidth = 10;
COLORREF PenColor = 0;
COLORREF LineColor = 0;

namespace {

// A custom cursor is 32 view pixels wide, so its square can't be wider than this.
constexpr int largestCursor = 31;
constexpr int largestHalfSize = 15;

} // namespace

double CursorViewKey()
{
    return ViewToWorld(CPoint(-10, -10)).x;
}

int CursorHalfSize(const CAcraster& raster, int width)
{
    // Wide, for at a near zoom the two can lie a whole int's range apart.
    const long long corner = raster.PixelToView(CPoint(width, width)).x;
    const long long viewWidth = std::abs(corner - raster.PixelToView(CPoint(0, 0)).x);
    return static_cast<int>(std::min<long long>(viewWidth / 2, largestHalfSize));
}

int StampSide(const CAcraster& raster, int width)
{
    const CPoint corner = raster.ViewToPixel(CPoint(largestCursor, largestCursor));
    const CPoint origin = raster.ViewToPixel(CPoint(0, 0));
    const long long covered = std::abs(static_cast<long long>(corner.x) - origin.x);
    return static_cast<int>(std::min<long long>(covered, width));
}

int PrepareStamp(CAcraster& raster, int width, COLORREF color)
{
    const int side = StampSide(raster, width);
    raster.SetStampSize(side);
    raster.SetColor(color);
    return side;
}

CRect StrokeReach(const CAcraster& raster, int side, const CWnd* view)
{
    CRect reach = raster.GetImageRect();
    if (view && !raster.GetViewRect().IsRectEmpty()) {
        CRect client;
        view->GetClientRect(client);
        // All four corners, for the image may be turned by any angle.
        for (const CPoint corner : {client.TopLeft(), CPoint(client.right, client.top), client.BottomRight(),
                                    CPoint(client.left, client.bottom)}) {
            const CPoint pixel = raster.ViewToPixel(corner);
            reach.left = std::min(reach.left, pixel.x);
            reach.top = std::min(reach.top, pixel.y);
            reach.right = std::max(reach.right, pixel.x);
            reach.bottom = std::max(reach.bottom, pixel.y);
        }
    }
    constexpr int farthest = 1 << 30;
    reach.IntersectRect(reach, CRect(-farthest, -farthest, farthest, farthest));
    reach.InflateRect(side + 2, side + 2); // the square about a pixel, and the conversions' rounding
    return reach;
}
