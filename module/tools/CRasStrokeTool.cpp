#include "module/tools/CRasStrokeTool.h"

#include <memory>
#include <utility>

#include "module/raster/CAcraster.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CRasStrokeTool, CBrushTool)

namespace {

// Paints the stamps of one mouse message: in the working image, and on the view at once, for the drawing shows the
// stroke only after the commit.
class StampPainter
{
public:
    StampPainter(CAcraster& raster, CWnd* view, int width, COLORREF color)
        : m_raster(raster), m_side(PrepareStamp(raster, width, color)), m_view(view), m_brush(color)
    {}

    int Side() const { return m_side; }

    void Paint(CPoint pixel)
    {
        m_raster.Stamp(pixel);
        const CPoint corner(pixel.x - m_side / 2, pixel.y - m_side / 2);
        m_view.FillRect(m_raster.PixelToView(CRect(corner, CSize(m_side, m_side))), &m_brush);
    }

private:
    CAcraster& m_raster;
    int m_side;
    CClientDC m_view;
    CBrush m_brush;
};

} // namespace

void CRasStrokeTool::BeginStroke(CPoint point)
{
    // A release that never came leaves the guard of the stroke before, and its raster may have gone since.
    if (m_pStrokeGuard && !m_pStrokeGuard->GetIfCurrent())
        delete std::exchange(m_pStrokeGuard, nullptr);
    if (!m_pStrokeGuard)
        m_pStrokeGuard = new CCurentRaster;
    if (CAcraster* raster = m_pStrokeGuard->GetIfCurrent()) {
        m_lastPixel = raster->ViewToPixel(point);
        StampPainter(*raster, m_pView, BrushWidth(), BrushColor()).Paint(m_lastPixel);
    }
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
    const CPoint pixel = raster.ViewToPixel(point);
    if (pixel == m_lastPixel)
        return 1;
    StampPainter painter(raster, m_pView, BrushWidth(), BrushColor());
    ForEachStrokePixel(m_lastPixel, pixel, StrokeReach(raster, painter.Side(), m_pView),
                       [&painter](CPoint passed) { painter.Paint(passed); });
    m_lastPixel = pixel;
    return 1;
}

int CRasStrokeTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    const CWaitCursor wait;
    ::ReleaseCapture();
    m_bStroke = false;
    const std::unique_ptr<CCurentRaster> guard(std::exchange(m_pStrokeGuard, nullptr));
    if (CAcraster* raster = guard ? guard->GetIfCurrent() : nullptr)
        raster->Reload(true);
    return 1;
}
