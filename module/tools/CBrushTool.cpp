#include "module/tools/CBrushTool.h"

#include "module/base/CArxApp.h"
#include "module/base/CScopeGuard.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/tools/Stroke.h"
#include "module/tools/ToolMessageHook.h"

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

int CBrushTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    const CCurentRaster current;
    // While the left button is held, the view has the mouse, and a dialog would get none of it.
    if (!current.m_pRaster || GetCapture() == m_pView->m_hWnd)
        return 1;
    m_pView->ClientToScreen(&point);
    const unsigned made = MadeSoFar();
    bool confirmed = false;
    {
        ToolInputEnabled = 0;
        const CScopeGuard enable([] { ToolInputEnabled = 1; });
        confirmed = AskAttributes(current, point);
    }
    // The dialog takes messages, and one of them may have ended the tool.
    const bool lives = g_pArxApp->m_pTool && MadeSoFar() == made;
    if (confirmed && lives && current.GetIfCurrent())
        RebuildCursor(*current.m_pRaster);
    return 1;
}

void CBrushTool::RebuildCursor(const CAcraster& raster)
{
    m_cursor.Rebuild(CursorHalfSize(raster, BrushWidth()));
}
