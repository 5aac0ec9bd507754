#include "module/tools/CBaseRotateTool.h"

#include <numbers>

#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"

IMPLEMENT_DYNAMIC(CBaseRotateTool, CTool)

namespace {
constexpr double angles[] = {std::numbers::pi / 2, 3 * std::numbers::pi / 2, std::numbers::pi};
}

CBaseRotateTool::CBaseRotateTool()
{
    m_tip.Create(m_pView);
}

CBaseRotateTool::~CBaseRotateTool()
{
    m_tip.Destroy();
}

void CBaseRotateTool::UpdateCursor()
{
    SetToolCursor(IDC_ROTATE_BASE);
}

int CBaseRotateTool::OnMouseMove(CPoint /*point*/, UINT /*flags*/)
{
    m_tip.Show(IDS_ROTATE_BASE_POINT);
    return 1;
}

int CBaseRotateTool::PreMessage(MSG* message)
{
    m_tip.Relay(message);
    return 0;
}

int CBaseRotateTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    if (m_bDone)
        return 0;
    const CWaitCursor wait;
    const CCurentRaster current;
    if (current.m_pRaster) {
        current.m_pRaster->Rotate(angles[m_nAngleIndex], current.m_pRaster->ViewToPixel(point), true, false);
        current.m_pRaster->Reload(true);
    }
    m_bDone = true;
    return 1;
}

int CBaseRotateTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    return !m_bDone;
}

int CBaseRotateTool::OnCommand(UINT /*id*/)
{
    return m_bWaiting;
}
