#include "module/tools/CRasLineTool.h"

#include <utility>

#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/PenAttributes.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasLineTool, CBrushTool)

namespace {

double lastViewKey = 0;

auto BandOf(const CTwoPointDrag& drag)
{
    return [&drag](CDC& view) {
        if (drag.IsShort())
            return;
        view.MoveTo(drag.Start());
        view.LineTo(drag.End());
    };
}

} // namespace

CRasLineTool::CRasLineTool() : CBrushTool(IDB_CURSOR_LINE, lastViewKey), m_xorPen(PS_SOLID, 0, 0xFFFFFF) {}

int CRasLineTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    SaveScreen();
    m_pView->SetCapture();
    m_pDrag = std::make_unique<CTwoPointDrag>(m_pView, m_xorPen, point);
    return 1;
}

int CRasLineTool::OnMouseMove(CPoint point, UINT flags)
{
    if (m_pDrag)
        m_pDrag->MoveEnd(flags & MK_SHIFT ? m_pDrag->SnapToAxis(point) : point, BandOf(*m_pDrag));
    return 1;
}

int CRasLineTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    const CWaitCursor wait;
    if (!m_pDrag)
        return 1;
    m_pDrag->DrawFigure(BandOf(*m_pDrag));
    ::ReleaseCapture();
    const std::unique_ptr<CTwoPointDrag> drag = std::move(m_pDrag);
    if (!drag->IsShort())
        DrawLine(drag->Start(), drag->End());
    return 1;
}

void CRasLineTool::DrawLine(CPoint from, CPoint to)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    CAcraster& raster = *current.m_pRaster;
    // The start pixel has no stamp of its own: the first one, beside it, covers it if the line is wide.
    const CRect reach = StrokeReach(raster, PrepareStamp(raster, BrushWidth(), BrushColor()), nullptr);
    ForEachStrokePixel(raster.ViewToPixel(from), raster.ViewToPixel(to), reach,
                       [&raster](CPoint pixel) { raster.Stamp(pixel); });
    raster.Reload(true);
}

int CRasLineTool::BrushWidth() const
{
    return LineWidth;
}

COLORREF CRasLineTool::BrushColor() const
{
    return LineColor;
}

bool CRasLineTool::AskAttributes(const CCurentRaster& current, CPoint screenPoint)
{
    return AskPenAttributes(current, screenPoint, LineWidth, LineColor);
}
