#include "module/start/MonitorTimer.h"

#include <cstdlib>
#include <memory>

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/Coordinates.h"
#include "module/raster/PendingFileSwap.h"
#include "module/resources/resource.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/CTool.h"
#include "module/tools/ViewDrawing.h"

namespace {

constexpr UINT monitorPeriod = 50; // ms
constexpr int phases = 8;          // the pattern bitmaps are 8 pixels wide
constexpr int boxTolerance = 3;    // view pixels

UINT_PTR monitorTimer;

// What survives from one tick to the next.
int phase;
std::unique_ptr<CRgn> viewRegion; // the selection in view space
CRect viewBox;                    // the view region's box
DWORD regionSize;                 // bytes of the selection's region data then
unsigned regionRebuilds;
bool replacing; // a postponed file swap is under way

CWnd* ActiveView()
{
    return acedGetAcadFrame()->MDIGetActive()->GetActiveView();
}

bool IsNear(const CRect& a, const CRect& b)
{
    return std::abs(a.left - b.left) < boxTolerance && std::abs(a.top - b.top) < boxTolerance &&
           std::abs(a.right - b.right) < boxTolerance && std::abs(a.bottom - b.bottom) < boxTolerance;
}

// Rebuilds the view region only when box or size tell of a change. A view that moved by less than the tolerance is
// painted with the old region once more.
void UpdateViewRegion(CAcraster& raster)
{
    CRect box = raster.PixelToView(raster.GetRegionBox());
    box.IntersectRect(box, CRect(CPoint(0, 0), ReadViewSize()));
    const DWORD size = GetRegionData(raster.GetRegion(), 0, nullptr);
    if (viewRegion && IsNear(box, viewBox) && size == regionSize)
        return;
    viewRegion = std::make_unique<CRgn>();
    raster.GetViewRegion(*viewRegion);
    viewRegion->GetRgnBox(viewBox);
    regionSize = size;
    ++regionRebuilds;
}

// False if a pattern could not be loaded.
bool DrawFrames(CAcraster& raster)
{
    const CTempMFC resources;
    CBitmap pattern;
    if (!pattern.LoadBitmap(IDB_RASTER_PATTERN))
        return false;
    CClientDC view(ActiveView());
    CBrush brush(&pattern);
    // The two patterns run in opposite directions, so that they look different even where they coincide.
    view.SetBrushOrg(phases - 1 - phase, 0);
    view.FrameRect(raster.GetViewRect(), &brush);
    if (raster.HasSelection()) {
        UpdateViewRegion(raster);
        view.SetROP2(R2_COPYPEN);
        if (!FrameRegionWithPattern(view, *viewRegion, IDB_SELECTION_PATTERN, CPoint(phase, 0), 1))
            return false;
    }
    CTool* tool = g_pArxApp->m_pTool;
    if (tool && tool->ToolId() == ToolIdFreeRotate) {
        auto* rotate = static_cast<CFreeRotateTool*>(tool);
        if (!rotate->IsDragging())
            rotate->DrawHandles(view);
    }
    return true;
}

void CarryOutFileSwap()
{
    if (!g_pPendingFileSwap || replacing)
        return;
    replacing = true;
    RunFileSwap(*g_pPendingFileSwap);
    g_pPendingFileSwap.reset();
    replacing = false;
}

void DrawCurrentRaster()
{
    CAcraster* raster = g_pArxApp->m_pRaster;
    if (raster && !raster->Lock(1)) {
        DropCurrentRaster();
        raster = nullptr;
    }
    if (g_pArxApp->m_pRaster)
        g_pArxApp->m_pRaster->Lock(0); // only adds to the count; both locks are given back below

    // Without its patterns, which only damaged resources lack, a tick ends early and leaves one lock counted.
    if (raster && !DrawFrames(*raster)) {
        raster->Unlock();
        return;
    }
    if (g_pArxApp->m_pRaster)
        g_pArxApp->m_pRaster->Unlock();
    if (raster && raster == g_pArxApp->m_pRaster)
        raster->Unlock();
}

void CALLBACK MonitorTimerProc(HWND, UINT, UINT_PTR, DWORD)
{
    if (g_bInCommand)
        return;
    phase = (phase + 1) % phases;
    CarryOutFileSwap();
    // Editing works in model space only.
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database && !database->tilemode())
        DropCurrentRaster();
    DrawCurrentRaster();
}

} // namespace

void StartMonitorTimer()
{
    monitorTimer = SetTimer(nullptr, 0, monitorPeriod, MonitorTimerProc);
}

void StopMonitorTimer()
{
    if (monitorTimer)
        KillTimer(nullptr, monitorTimer);
    monitorTimer = 0;
    viewRegion.reset();
}

unsigned MonitorRegionRebuilds()
{
    return regionRebuilds;
}
