#include "module/tools/CRasArrowTool.h"

#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CEditPasteTool.h"
#include "module/tools/CSelectObject.h"
#include "module/tools/ToolMenu.h"
#include "module/tools/ToolMessageHook.h"
#include "module/tools/ViewDrawing.h"

IMPLEMENT_DYNAMIC(CRasArrowTool, CTool)

namespace {

void DeleteSelectedPixels(CAcraster& raster)
{
    raster.SetColor(0xFFFFFF);
    raster.FillRegion();
    raster.Reload();
}

void InvertSelection(CAcraster& raster)
{
    CRgn whole;
    whole.CreateRectRgnIndirect(raster.GetImageRect());
    CRgn& region = raster.GetRegion();
    region.CombineRgn(&whole, &region, RGN_DIFF);
}

} // namespace

CRasArrowTool::CRasArrowTool() : m_xorPen(PS_DOT, 0, 0xFFFFFF), m_cursorId(IDC_AREA) {}

CRasArrowTool::~CRasArrowTool()
{
    ::ReleaseCapture();
    if (m_bStarted)
        CRasArrowTool::Stop();
}

int CRasArrowTool::Start()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 0;
    // The tool's button pressed twice drops the selection.
    if (ButtonClickTimer && !ButtonClickTimer->HasElapsed() && LastToolIdOnClick == ToolIdArea) {
        current.m_pRaster->ResetRegion();
        RedrawView(m_pView);
        return 0;
    }
    m_state = current.m_pRaster->HasSelection() ? unsigned(StateSelection) : 0;
    m_cursorId = IDC_AREA;
    m_bStarted = true;
    return 1;
}

void CRasArrowTool::Stop()
{
    CTool::Stop();
    m_bStarted = false;
}

int CRasArrowTool::ToolId()
{
    return ToolIdArea;
}

void CRasArrowTool::UpdateCursor()
{
    SetToolCursor(m_cursorId);
}

int CRasArrowTool::OnMouseMove(CPoint point, UINT flags)
{
    if (m_state & (StateRubberBand | StateMove)) {
        DrawFeedback();
        m_end = point;
        DrawFeedback();
    } else if (m_state & StateSelection) {
        ChooseCursor(point, flags);
    }
    return 1;
}

// Shift comes before Ctrl, here and when the button is released.
void CRasArrowTool::ChooseCursor(CPoint point, UINT flags)
{
    m_cursorId = IDC_AREA;
    if (flags & MK_SHIFT) {
        m_cursorId = IDC_AREA_ADD;
    } else if (flags & MK_CONTROL) {
        m_cursorId = IDC_AREA_SUBTRACT;
    } else {
        const CCurentRaster current;
        if (current.m_pRaster && current.m_pRaster->GetRegion().PtInRegion(current.m_pRaster->ViewToPixel(point)))
            m_cursorId = IDC_AREA_MOVE;
    }
}

// Of a drag; drawn a second time it erases itself.
void CRasArrowTool::DrawFeedback()
{
    CClientDC view(m_pView);
    view.SetROP2(R2_XORPEN);
    const CSelectObject pen(view, m_xorPen);
    if (m_state & StateRubberBand) {
        DrawRubberBand(view);
    } else {
        DrawMovedFrame(view);
    }
}

void CRasArrowTool::DrawRubberBand(CDC& view)
{
    const CSize drag = DragSize();
    if (drag.cx >= shortestDrag && drag.cy >= shortestDrag)
        DrawOutline(view, CRect(m_start, m_end));
}

void CRasArrowTool::DrawMovedFrame(CDC& view)
{
    const CSize drag = DragSize();
    if (drag.cx < shortestDrag && drag.cy < shortestDrag)
        return;
    CRgn moved;
    moved.CreateRectRgn(0, 0, 1, 1);
    moved.CombineRgn(m_pMovedRegion.get(), nullptr, RGN_COPY);
    moved.OffsetRgn(m_end.x - m_start.x, m_end.y - m_start.y);
    FrameRegionWithPattern(view, moved, IDB_SELECTION_PATTERN, CPoint(0, 0), 1);
}

int CRasArrowTool::OnLButtonDown(CPoint point, UINT flags)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    SaveScreen();
    if (m_cursorId != IDC_AREA_MOVE) {
        if (current.m_pRaster->HasSelection() && !(flags & (MK_SHIFT | MK_CONTROL))) {
            current.m_pRaster->ResetRegion();
            RedrawView(m_pView);
            m_state &= ~StateSelection;
        }
        m_state |= StateRubberBand;
    } else {
        m_state |= StateMove;
        m_pMovedRegion = std::make_unique<CRgn>();
        current.m_pRaster->GetViewRegion(*m_pMovedRegion);
    }
    m_start = point;
    m_end = point;
    m_pView->SetCapture();
    return 1;
}

int CRasArrowTool::OnLButtonUp(CPoint /*point*/, UINT flags)
{
    ::ReleaseCapture();
    const unsigned drag = m_state & (StateRubberBand | StateMove);
    if (!drag)
        return 1;
    DrawFeedback();
    m_state &= ~drag;
    const CSize size = DragSize();
    if (drag & StateRubberBand) {
        if (size.cx >= shortestDrag && size.cy >= shortestDrag)
            CombineDraggedRectangle(flags);
    } else {
        if (size.cx >= shortestDrag || size.cy >= shortestDrag)
            MoveRegion();
        m_pMovedRegion.reset();
    }
    return 1;
}

void CRasArrowTool::CombineDraggedRectangle(UINT flags)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    CRect dragged(m_start, m_end);
    dragged.NormalizeRect();
    const CRect pixels = current.m_pRaster->ViewToPixel(dragged);

    CRgn& region = current.m_pRaster->GetRegion();
    if (current.m_pRaster->HasSelection()) {
        CRgn rectangle;
        rectangle.CreateRectRgnIndirect(pixels);
        region.CombineRgn(&region, &rectangle, flags & MK_SHIFT ? RGN_OR : RGN_DIFF);
    } else {
        region.SetRectRgn(pixels);
    }
    RedrawView(m_pView);
    m_state |= StateSelection;
}

// Only the outline moves, by whole pixels; the pixels under it stay. It may leave the image.
void CRasArrowTool::MoveRegion()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    const CSize offset = current.m_pRaster->ViewToPixel(m_end) - current.m_pRaster->ViewToPixel(m_start);
    current.m_pRaster->GetRegion().OffsetRgn(offset.cx, offset.cy);
    RedrawView(m_pView);
}

int CRasArrowTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    TrackToolMenu(this, IDM_AREA, point, [](CMenu& menu) {
        const CCurentRaster current;
        const bool selection = current.m_pRaster && current.m_pRaster->HasSelection();
        const auto enable = [&menu](UINT id, bool enabled) {
            menu.EnableMenuItem(id, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
        };
        for (const UINT id : {ID_AREA_CUT, ID_AREA_COPY, ID_AREA_DELETE, ID_AREA_INVERT})
            enable(id, selection);
        enable(ID_AREA_PASTE, IsClipboardFormatAvailable(CF_DIB));
    });
    return 1;
}

int CRasArrowTool::OnCommand(UINT id)
{
    if (id == ID_AREA_PASTE) {
        // The new tool ends this one: nothing of it may be touched from here on.
        CTool* paste = new CEditPasteTool;
        if (!paste->Start())
            delete paste;
        return 1;
    }
    if (id != ID_AREA_COPY && id != ID_AREA_DELETE && id != ID_AREA_CUT && id != ID_AREA_INVERT)
        return 0;

    const CWaitCursor wait;
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    if (id == ID_AREA_COPY || id == ID_AREA_CUT)
        current.m_pRaster->CopyToClipboard();
    if (id == ID_AREA_DELETE || id == ID_AREA_CUT)
        DeleteSelectedPixels(*current.m_pRaster);
    if (id == ID_AREA_INVERT) {
        InvertSelection(*current.m_pRaster);
        RedrawView(m_pView);
    }
    return 1;
}
