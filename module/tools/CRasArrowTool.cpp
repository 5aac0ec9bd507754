#include "module/tools/CRasArrowTool.h"

#include <utility>

#include "module/base/RedrawView.h"
#include "module/base/SayOnCommandLine.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/CEditPasteTool.h"
#include "module/tools/StartTool.h"
#include "module/tools/ToolMenu.h"
#include "module/tools/ToolMessageHook.h"
#include "module/tools/ViewDrawing.h"

IMPLEMENT_DYNAMIC(CRasArrowTool, CTool)

namespace {

void DeleteSelectedPixels(CAcraster& raster)
{
    raster.SetColor(0xFFFFFF);
    raster.FillRegion();
    raster.Reload(true);
}

// What could not be copied stays: nothing would bring it back.
void CutSelectedPixels(CAcraster& raster)
{
    if (raster.CopyToClipboard()) {
        DeleteSelectedPixels(raster);
    } else {
        SayOnCommandLine(L"The area was not cut: it could not be copied.");
    }
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
    EndStarted();
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
    if (m_pDrag) {
        m_pDrag->MoveEnd(point, [this](CDC& view) { DrawFigure(view); });
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

// Of the drag.
void CRasArrowTool::DrawFigure(CDC& view)
{
    if (m_state & StateMove) {
        DrawMovedFrame(view);
    } else if (!m_pDrag->IsThin()) {
        DrawOutline(view, CRect(m_pDrag->Start(), m_pDrag->End()));
    }
}

void CRasArrowTool::DrawMovedFrame(CDC& view)
{
    if (m_pDrag->IsShort())
        return;
    CRgn moved;
    moved.CreateRectRgn(0, 0, 1, 1);
    moved.CombineRgn(m_pMovedRegion.get(), nullptr, RGN_COPY);
    const CSize offset = m_pDrag->End() - m_pDrag->Start();
    moved.OffsetRgn(offset.cx, offset.cy);
    FrameRegionWithPattern(view, moved, IDB_SELECTION_PATTERN, CPoint(0, 0), 1);
}

int CRasArrowTool::OnLButtonDown(CPoint point, UINT flags)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    SaveScreen();
    m_state &= ~(StateRubberBand | StateMove); // of a press whose release never came
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
    m_pDrag = std::make_unique<CTwoPointDrag>(m_pView, m_xorPen, point);
    m_pView->SetCapture();
    return 1;
}

int CRasArrowTool::OnLButtonUp(CPoint /*point*/, UINT flags)
{
    ::ReleaseCapture();
    if (!m_pDrag)
        return 1;
    m_pDrag->DrawFigure([this](CDC& view) { DrawFigure(view); });
    const std::unique_ptr<CTwoPointDrag> drag = std::move(m_pDrag);
    if (m_state & StateMove) {
        if (!drag->IsShort())
            MoveRegion(*drag);
        m_pMovedRegion.reset();
    } else if (!drag->IsThin()) {
        CombineDraggedRectangle(*drag, flags);
    }
    m_state &= ~(StateRubberBand | StateMove);
    return 1;
}

void CRasArrowTool::CombineDraggedRectangle(const CTwoPointDrag& drag, UINT flags)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    CRect dragged(drag.Start(), drag.End());
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
void CRasArrowTool::MoveRegion(const CTwoPointDrag& drag)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    const CSize offset = current.m_pRaster->ViewToPixel(drag.End()) - current.m_pRaster->ViewToPixel(drag.Start());
    current.m_pRaster->GetRegion().OffsetRgn(offset.cx, offset.cy);
    RedrawView(m_pView);
}

int CRasArrowTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    TrackToolMenu(this, IDM_AREA, *m_pView, point, [](CMenu& menu) {
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
        StartTool<CEditPasteTool>();
        return 1;
    }
    if (id != ID_AREA_COPY && id != ID_AREA_DELETE && id != ID_AREA_CUT && id != ID_AREA_INVERT)
        return 0;

    const CWaitCursor wait;
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    if (id == ID_AREA_COPY)
        current.m_pRaster->CopyToClipboard();
    if (id == ID_AREA_CUT)
        CutSelectedPixels(*current.m_pRaster);
    if (id == ID_AREA_DELETE)
        DeleteSelectedPixels(*current.m_pRaster);
    if (id == ID_AREA_INVERT) {
        InvertSelection(*current.m_pRaster);
        RedrawView(m_pView);
    }
    return 1;
}
