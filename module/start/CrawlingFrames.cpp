#include "module/start/CrawlingFrames.h"

#include "module/base/CArxApp.h"
#include "module/base/CTempMFC.h"
#include "module/raster/CAcraster.h"
#include "module/resources/resource.h"
#include "module/start/SelectionInView.h"
#include "module/tools/CFreeRotateTool.h"
#include "module/tools/CTool.h"
#include "module/tools/ViewDrawing.h"

namespace {

constexpr int phases = 8; // the pattern bitmaps are 8 pixels wide

int phase;

CWnd* ActiveView()
{
    return acedGetAcadFrame()->MDIGetActive()->GetActiveView();
}

bool PaintSelection(CAcraster& raster, CDC& view)
{
    view.SetROP2(R2_COPYPEN);
    return FrameRegionWithPattern(view, UpdateSelectionInView(raster), IDB_SELECTION_PATTERN, CPoint(phase, 0), 1);
}

void PaintRotateHandles(CDC& view)
{
    CTool* tool = g_pArxApp->m_pTool;
    if (!tool || tool->ToolId() != ToolIdFreeRotate)
        return;
    auto* rotate = static_cast<CFreeRotateTool*>(tool);
    if (!rotate->IsDragging())
        rotate->DrawHandles(view);
}

} // namespace

void AdvanceCrawlingFrames()
{
    phase = (phase + 1) % phases;
}

bool PaintCrawlingFrames(CAcraster& raster)
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
    if (raster.HasSelection() && !PaintSelection(raster, view))
        return false;
    PaintRotateHandles(view);
    return true;
}

void ForgetCrawlingFrames()
{
    ForgetSelectionInView();
}
