#include "raster/Coordinates.h"

#include <algorithm>
#include <limits>

namespace {

resbuf ReadVariable(const ACHAR* name)
{
    resbuf value = {};
    acedGetVar(name, &value);
    return value;
}

// The host's view variables, and what both conversions work out from them in the same way.
struct ViewScale
{
    ViewScale()
        : size(ReadViewSize()), centre(ReadVariable(L"viewctr")),
          unitsPerPixel(ReadVariable(L"viewsize").resval.rreal / size.cy)
    {
        left = centre.resval.rpoint[0] / unitsPerPixel;
        left = left - size.cx * 0.5;
        middle = centre.resval.rpoint[1] / unitsPerPixel;
    }

    CSize size;
    resbuf centre;
    double unitsPerPixel;
    double left;   // of the view, in view pixels from the drawing's origin
    double middle; // of the view's height, likewise
};

} // namespace

int TruncateToInt(double value)
{
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, least, most));
}

CSize ReadViewSize()
{
    const resbuf size = ReadVariable(L"screensize");
    return CSize(TruncateToInt(size.resval.rpoint[0]), TruncateToInt(size.resval.rpoint[1]));
}

// The cursors compare converted values for equality to notice a pan or a zoom, so in both conversions the order of the
// arithmetic must stay as it is.
CPoint WorldToView(const AcGePoint3d& point)
{
    const ViewScale view;
    const double halfHeight = view.size.cy * 0.5;
    return CPoint(
        TruncateToInt(point.x / view.unitsPerPixel - view.left + 0.5),
        TruncateToInt(view.size.cy - point.y / view.unitsPerPixel - (view.size.cy - view.middle - halfHeight) + 0.5));
}

AcGePoint3d ViewToWorld(CPoint point)
{
    const ViewScale view;
    const double halfHeight = view.size.cy * 0.5;
    return AcGePoint3d((point.x + view.left) * view.unitsPerPixel,
                       ((view.size.cy - point.y) - (view.size.cy - view.middle - halfHeight)) * view.unitsPerPixel, 0);
}
