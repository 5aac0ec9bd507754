#include "module/tools/CBrushTool.h"

#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/tools/Stroke.h"

IMPLEMENT_DYNAMIC(CBrushTool, CTool)

CBrushTool::CBrushTool(UINT cursorId, double& lastViewKey)
    : m_cursor(cursorId, CPoint(15, 16)), m_lastViewKey(lastViewKey)
{}

CBrushTool::~CBrushTool()
{
    EndStarted();
    ::ReleaseCapture();
}

int CBrushTool::Start()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 0;
    m_bStarted = true;
    RebuildCursor(*current.m_pRaster);
    return 1;
}

void CBrushTool::UpdateCursor()
{
    const double key = CursorViewKey();
    if (key != m_lastViewKey) {
        m_lastViewKey = key;
        const CCurentRaster current;
        if (current.m_pRaster)
            RebuildCursor(*current.m_pRaster);
    }
    m_cursor.Set();
}

void CBrushTool::RebuildCursor(const CAcraster& raster)
{
    m_cursor.Rebuild(CursorHalfSize(raster, BrushWidth()));
}
