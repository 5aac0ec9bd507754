#include "tools/Stroke.h"

#include <algorithm>

#include "raster/CAcraster.h"
#include "raster/Coordinates.h"

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
    const int viewWidth = std::abs(raster.PixelToView(CPoint(width, width)).x - raster.PixelToView(CPoint(0, 0)).x);
    return std::min(viewWidth / 2, largestHalfSize);
}

int StampSide(const CAcraster& raster, int width)
{
    const CPoint corner = raster.ViewToPixel(CPoint(largestCursor, largestCursor));
    const CPoint origin = raster.ViewToPixel(CPoint(0, 0));
    return std::min(static_cast<int>(std::abs(corner.x - origin.x)), width);
}
