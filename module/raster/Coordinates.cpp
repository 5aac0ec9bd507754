#include "module/raster/Coordinates.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

resbuf ReadVariable(const ACHAR* name)
{
    resbuf value = {};
    acedGetVar(name, &value);
    return value;
}

} // namespace

int TruncateToInt(double value)
{
    if (std::isnan(value))
        return 0; // a view without a size divides by zero
    constexpr double least = std::numeric_limits<int>::min();
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, least, most));
}

CSize ReadViewSize()
{
    const resbuf size = ReadVariable(L"screensize");
    return CSize(TruncateToInt(size.resval.rpoint[0]), TruncateToInt(size.resval.rpoint[1]));
}

ViewScale::ViewScale()
    : m_size(ReadViewSize()), m_centre(ReadVariable(L"viewctr")),
      m_unitsPerPixel(ReadVariable(L"viewsize").resval.rreal / m_size.cy)
{
    m_left = m_centre.resval.rpoint[0] / m_unitsPerPixel;
    m_left = m_left - m_size.cx * 0.5;
    m_middle = m_centre.resval.rpoint[1] / m_unitsPerPixel;
}

// The cursors compare converted values for equality to notice a pan or a zoom, so in both conversions the order of the
// arithmetic must stay as it is.
CPoint ViewScale::ToView(const AcGePoint3d& point) const
{
    const double halfHeight = m_size.cy * 0.5;
    return CPoint(TruncateToInt(point.x / m_unitsPerPixel - m_left + 0.5),
                  TruncateToInt(m_size.cy - point.y / m_unitsPerPixel - (m_size.cy - m_middle - halfHeight) + 0.5));
}

AcGePoint3d ViewScale::ToWorld(CPoint point) const
{
    const double halfHeight = m_size.cy * 0.5;
    return AcGePoint3d((point.x + m_left) * m_unitsPerPixel,
                       ((m_size.cy - point.y) - (m_size.cy - m_middle - halfHeight)) * m_unitsPerPixel, 0);
}

CPoint WorldToView(const AcGePoint3d& point)
{
    return ViewScale().ToView(point);
}

AcGePoint3d ViewToWorld(CPoint point)
{
    return ViewScale().ToWorld(point);
}
