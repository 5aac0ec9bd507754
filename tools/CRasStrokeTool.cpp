#include "tools/CRasStrokeTool.h"

#include <memory>
#include <utility>

#include "raster/CAcraster.h"
#include "tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasStrokeTool, CTool)

CRasStrokeTool::CRasStrokeTool(UINT cursorId, double& lastViewKey)
    : m_cursor(cursorId, CPoint(15, 16)), m_lastViewKey(lastViewKey)
{}

CRasStrokeTool::~CRasStrokeTool()
{
    if (m_bStarted)
        CRasStrokeTool::Stop();
    ::ReleaseCapture();
}

int CRasStrokeTool::Start()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 0;
    m_bStarted = true;
    m_cursor.Rebuild(CursorHalfSize(*current.m_pRaster, BrushWidth()));
    return 1;
}

void CRasStrokeTool::Stop()
{
    CTool::Stop();
    m_bStarted = false;
}

void CRasStrokeTool::UpdateCursor()
{
    const double key = CursorViewKey();
    if (key != m_lastViewKey) {
        m_lastViewKey = key;
        const CCurentRaster current;
        if (current.m_pRaster)
            m_cursor.Rebuild(CursorHalfSize(*current.m_pRaster, BrushWidth()));
    }
    m_cursor.Set();
}

void CRasStrokeTool::BeginStroke(CPoint point)
{
    // A release that never came leaves the guard of the stroke before, and its raster may have gone since.
    if (m_pStrokeGuard && !m_pStrokeGuard->GetIfCurrent())
        delete std::exchange(m_pStrokeGuard, nullptr);
    if (!m_pStrokeGuard)
        m_pStrokeGuard = new CCurentRaster;
    if (CAcraster* raster = m_pStrokeGuard->GetIfCurrent())
        PaintStamp(*raster, raster->ViewToPixel(point));
    m_bStroke = true;
}

int CRasStrokeTool::OnMouseMove(CPoint point, UINT /*flags*/)
{
    if (!m_bStroke)
        return 1;
    // Nested in the stroke's own lock, so it costs a count; it also notices a raster that went during the stroke.
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    CAcraster& raster = *current.m_pRaster;
    ForEachStrokePixel(m_lastPixel, raster.ViewToPixel(point), [&](CPoint pixel) { PaintStamp(raster, pixel); });
    return 1;
}

int CRasStrokeTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    const CWaitCursor wait;
    ::ReleaseCapture();
    m_bStroke = false;
    const std::unique_ptr<CCurentRaster> guard(std::exchange(m_pStrokeGuard, nullptr));
    if (CAcraster* raster = guard ? guard->GetIfCurrent() : nullptr)
        raster->Reload();
    return 1;
}

void CRasStrokeTool::PaintStamp(CAcraster& raster, CPoint pixel)
{
    m_lastPixel = pixel;
    const int side = StampSide(raster, BrushWidth());
    raster.SetStampSize(side);
    raster.SetColor(BrushColor());
    raster.Stamp(pixel);
    ShowStamp(raster, pixel, side);
}

// On the view at once; the drawing shows the stroke only after the commit.
void CRasStrokeTool::ShowStamp(const CAcraster& raster, CPoint pixel, int side)
{
    const CPoint corner(pixel.x - side / 2, pixel.y - side / 2);
    CRect rect(raster.PixelToView(corner), raster.PixelToView(CPoint(corner.x + side, corner.y + side)));
    rect.NormalizeRect();
    CClientDC view(m_pView);
    CBrush brush(BrushColor());
    view.FillRect(rect, &brush);
}
