#include "module/tools/CRasLineTool.h"

#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CSelectObject.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasLineTool, CBrushTool)

namespace {
double lastViewKey = 0;
}

CRasLineTool::CRasLineTool() : CBrushTool(IDB_CURSOR_LINE, lastViewKey), m_xorPen(PS_SOLID, 0, 0xFFFFFF) {}

int CRasLineTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    SaveScreen();
    m_pView->SetCapture();
    m_pEndPoints = std::make_unique<EndPoints>(EndPoints{point, point});
    return 1;
}

int CRasLineTool::OnMouseMove(CPoint point, UINT flags)
{
    if (!m_pEndPoints)
        return 1;
    DrawBand();
    const CPoint start = m_pEndPoints->start;
    CPoint& end = m_pEndPoints->end;
    end = point;
    if (flags & MK_SHIFT) {
        if (std::abs(end.x - start.x) > std::abs(end.y - start.y)) {
            end.y = start.y;
        } else {
            end.x = start.x;
        }
    }
    DrawBand();
    return 1;
}

int CRasLineTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    const CWaitCursor wait;
    if (!m_pEndPoints)
        return 1;
    DrawBand();
    ::ReleaseCapture();
    const bool tooShort = IsTooShort();
    const std::unique_ptr<EndPoints> ends = std::move(m_pEndPoints);
    const CCurentRaster current;
    if (tooShort || !current.m_pRaster)
        return 1;

    CAcraster& raster = *current.m_pRaster;
    // The start pixel has no stamp of its own: the first one, beside it, covers it if the line is wide.
    const CRect reach = StrokeReach(raster, PrepareStamp(raster, BrushWidth(), BrushColor()), nullptr);
    ForEachStrokePixel(raster.ViewToPixel(ends->start), raster.ViewToPixel(ends->end), reach,
                       [&raster](CPoint pixel) { raster.Stamp(pixel); });
    raster.Reload();
    return 1;
}

bool CRasLineTool::IsTooShort() const
{
    return std::abs(m_pEndPoints->end.x - m_pEndPoints->start.x) < shortestDrag &&
           std::abs(m_pEndPoints->end.y - m_pEndPoints->start.y) < shortestDrag;
}

// Drawn a second time it erases itself.
void CRasLineTool::DrawBand()
{
    if (IsTooShort())
        return;
    CClientDC view(m_pView);
    view.SetROP2(R2_XORPEN);
    const CSelectObject pen(view, m_xorPen);
    view.MoveTo(m_pEndPoints->start);
    view.LineTo(m_pEndPoints->end);
}

int CRasLineTool::BrushWidth() const
{
    return LineWidth;
}

COLORREF CRasLineTool::BrushColor() const
{
    return LineColor;
}
