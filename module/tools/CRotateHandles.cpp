#include "module/tools/CRotateHandles.h"

#include <algorithm>

#include "module/raster/CAcraster.h"
#include "module/raster/Coordinates.h"
#include "module/tools/RotationGeometry.h"
#include "module/tools/ViewDrawing.h"

namespace {

constexpr int hitDistance = 4; // view pixels about a handle
constexpr int boxMargin = 5;   // view pixels about the box of the handles

CRect Around(CPoint center, int distance)
{
    return CRect(center.x - distance, center.y - distance, center.x + distance, center.y + distance);
}

void DrawBasePoint(CDC& view, CPoint base)
{
    view.MoveTo(base.x - 5, base.y);
    view.LineTo(base.x + 5, base.y);
    view.MoveTo(base.x, base.y - 5);
    view.LineTo(base.x, base.y + 5);
    view.MoveTo(base.x - 4, base.y);
    view.LineTo(base.x, base.y - 4);
    view.LineTo(base.x + 4, base.y);
    view.LineTo(base.x, base.y + 4);
    view.LineTo(base.x - 4, base.y);
}

} // namespace

void CRotateHandles::Place(const CAcraster& raster, CSize view)
{
    const int middleX = view.cx / 2;
    const int middleY = view.cy / 2;
    const int sixth = middleX / 6;
    const int twelfth = middleX / 12;
    m_base = raster.ViewToPixel(CPoint(middleX - sixth, middleY));
    m_firstArm = raster.ViewToPixel(CPoint(middleX + twelfth, middleY - sixth));
    m_secondArm = raster.ViewToPixel(CPoint(middleX + sixth, middleY));
}

// The box that holds the handles and the arc, in image pixels.
CRect CRotateHandles::Box(const CAcraster& raster) const
{
    const auto [left, right] = std::minmax({m_base.x, m_firstArm.x, m_secondArm.x});
    const auto [top, bottom] = std::minmax({m_base.y, m_firstArm.y, m_secondArm.y});
    CRect view = raster.BoundsInView(CRect(left, top, right, bottom));
    view.InflateRect(boxMargin, boxMargin);
    const int radius =
        TruncateToInt(0.5 * std::min(DistanceBetween(m_base, m_firstArm), DistanceBetween(m_base, m_secondArm)));
    CRect both;
    both.UnionRect(raster.BoundsInPixels(view), Around(m_base, radius + 1));
    return both;
}

CRotateHandles::Part CRotateHandles::HitAt(const CAcraster& raster, CPoint point) const
{
    if (!raster.BoundsInView(Box(raster)).PtInRect(point))
        return None;
    const auto hits = [&](CPoint handle) {
        CRect area = Around(raster.PixelToView(handle), hitDistance);
        area.right += 1; // both edges belong to the handle's area of 9 by 9 pixels
        area.bottom += 1;
        return area.PtInRect(point);
    };
    if (hits(m_base))
        return Base;
    if (hits(m_firstArm))
        return FirstArm;
    return hits(m_secondArm) ? SecondArm : All;
}

void CRotateHandles::Drop(Part part, CPoint start, CPoint end)
{
    if (part == All) {
        Offset(end - start);
    } else if (part == Base) {
        m_base = end;
    } else if (part == FirstArm) {
        m_firstArm = end;
    } else {
        m_secondArm = end;
    }
    m_bDirection = TurnsBackward(DirectionOf(m_base, m_firstArm), DirectionOf(m_base, m_secondArm));
}

void CRotateHandles::Offset(CSize pixels)
{
    for (CPoint* handle : {&m_base, &m_firstArm, &m_secondArm})
        *handle += pixels;
}

double CRotateHandles::SweptAngle() const
{
    const double first = DirectionOf(m_base, m_firstArm);
    const double second = DirectionOf(m_base, m_secondArm);
    const double angle = AngleBetween(first, second);
    return TurnsBackward(first, second) ? fullTurn - angle : angle;
}

void CRotateHandles::Draw(CDC& view, const CAcraster& raster) const
{
    const CPoint base = raster.PixelToView(m_base);
    const CPoint first = raster.PixelToView(m_firstArm);
    const CPoint second = raster.PixelToView(m_secondArm);
    for (const CPoint arm : {first, second})
        DrawOutline(view, Around(arm, 3));
    DrawBasePoint(view, base);
    view.MoveTo(first);
    view.LineTo(base);
    view.LineTo(second);
    DrawArc(view, base, first, second);
}

// The direction is that of the image's pixels. Over a mirrored image the arc therefore goes the other way round; the
// first arm comes to lie on the second by either way.
void CRotateHandles::DrawArc(CDC& view, CPoint base, CPoint first, CPoint second) const
{
    const double radius = 0.5 * std::min(DistanceBetween(base, first), DistanceBetween(base, second));
    const double firstDirection = DirectionOf(base, first);
    const double secondDirection = DirectionOf(base, second);
    const CPoint arcFirst = PointAt(base, firstDirection, radius);
    const CPoint arcSecond = PointAt(base, secondDirection, radius);
    const CRect box = Around(base, TruncateToInt(radius) + 1);

    // The head's two strokes stand at 45 degrees to either side of the arc's end.
    double headFrom = 0.7853981635;
    double headTo = 2.3561944905;
    if (m_bDirection) {
        view.Arc(box, arcFirst, arcSecond);
    } else {
        view.Arc(box, arcSecond, arcFirst);
        headFrom = 3.9269908175;
        headTo = 5.4977871445;
    }
    view.MoveTo(PointAt(arcSecond, secondDirection + headFrom, 5.0));
    view.LineTo(arcSecond);
    view.LineTo(PointAt(arcSecond, secondDirection + headTo, 5.0));
}
