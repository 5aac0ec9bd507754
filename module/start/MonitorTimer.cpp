#include "module/start/MonitorTimer.h"

#include "module/base/CArxApp.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/raster/PendingFileSwap.h"
#include "module/start/CrawlingFrames.h"
#include "module/tools/CTool.h"

namespace {

constexpr UINT monitorPeriod = 50; // ms

UINT_PTR monitorTimer;

// A tool draws on the view that it was started in, and gets nothing of what the mouse does in another one. The host may
// go on to another drawing without a message that the tool would end by.
void EndToolOfOtherView()
{
    if (g_pArxApp->m_pTool && !g_pArxApp->m_pTool->IsInActiveView())
        delete g_pArxApp->m_pTool;
}

// Editing works in model space only.
void DropRasterOutsideModelSpace()
{
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (database && !database->tilemode())
        DropCurrentRaster();
}

void PaintFramesOfCurrentRaster()
{
    CAcraster* raster = g_pArxApp->m_pRaster;
    if (raster && !raster->Lock(1)) {
        DropCurrentRaster();
        raster = nullptr;
    }
    if (g_pArxApp->m_pRaster)
        g_pArxApp->m_pRaster->Lock(0); // only adds to the count; both locks are given back below

    // Without its patterns, which only damaged resources lack, a tick ends early and leaves one lock counted.
    if (raster && !PaintCrawlingFrames(*raster)) {
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
    AdvanceCrawlingFrames();
    RunPendingFileSwap();
    EndToolOfOtherView();
    DropRasterOfOtherDrawing();
    DropRasterOutsideModelSpace();
    PaintFramesOfCurrentRaster();
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
    ForgetCrawlingFrames();
}
