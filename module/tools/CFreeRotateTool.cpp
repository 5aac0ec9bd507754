#include "module/tools/CFreeRotateTool.h"

#include <cstdlib>

#include "module/base/CArxApp.h"
#include "module/base/RedrawView.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/Stroke.h"
#include "module/tools/ToolMenu.h"

IMPLEMENT_DYNAMIC(CFreeRotateTool, CTool)

namespace {

constexpr COLORREF restColor = 255; // red
constexpr COLORREF dragColor = 0xFFFFFF;
constexpr DWORD settleTime = 300; // ms

// Works off what the thread's queue holds, for a moment or until it has ended the tool. Tells whether the tool lives.
bool Settle(const CTool* tool)
{
    const unsigned made = CTool::MadeSoFar();
    const auto lives = [&] { return g_pArxApp->m_pTool == tool && CTool::MadeSoFar() == made; };
    const DWORD start = GetTickCount();
    MSG message;
    while (lives() && GetTickCount() - start < settleTime) {
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
            continue;
        if (message.message == WM_QUIT)
            break; // stays in the queue for the host's own loop, which ends by it
        AfxGetThread()->PumpMessage();
    }
    return lives();
}

} // namespace

CFreeRotateTool::CFreeRotateTool() : m_cursorId(IDC_ROTATE_FREE), m_pen(PS_SOLID, 0, restColor)
{
    const CCurentRaster current;
    m_tip.Create(m_pView);
    if (current.m_pRaster) {
        CRect client;
        m_pView->GetClientRect(client);
        m_handles.Place(*current.m_pRaster, client.Size());
    }
    m_viewKey = CursorViewKey();

    if (!Settle(this))
        return; // what was queued, Escape perhaps or a command, has ended this tool, and nothing of it is left
    SaveScreen();
    m_bTransparent = true;
    m_bReady = true;
}

CFreeRotateTool::~CFreeRotateTool()
{
    m_pDrag.reset();
    ::ReleaseCapture();
    if (HasView())
        RedrawView(m_pView);
    m_tip.Destroy();
}

int CFreeRotateTool::ToolId()
{
    return ToolIdFreeRotate;
}

void CFreeRotateTool::UpdateCursor()
{
    if (m_bReady)
        SetToolCursor(m_cursorId);
}

int CFreeRotateTool::PreMessage(MSG* message)
{
    if (m_bReady)
        m_tip.Relay(message);
    return 0;
}

CRotateHandles::Part CFreeRotateTool::HitAt(CPoint point) const
{
    const CCurentRaster current;
    return current.m_pRaster ? m_handles.HitAt(*current.m_pRaster, point) : CRotateHandles::None;
}

int CFreeRotateTool::OnMouseMove(CPoint point, UINT flags)
{
    if (!m_bReady)
        return 1;
    m_tip.Show(IDS_ROTATE_CANCEL);
    if (!m_pDrag) {
        const CRotateHandles::Part hit = HitAt(point);
        m_cursorId = hit == CRotateHandles::None ? IDC_ROTATE_FREE : hit == CRotateHandles::All ? IDC_MOVE_IMAGE : 0;
        return 1;
    }
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    const CAcraster& raster = *current.m_pRaster;
    m_pDrag->MoveEnd(flags & MK_SHIFT ? Snap(raster, point) : point, [&](CDC& view) { DrawDragFigure(view, raster); });
    return 1;
}

// A move runs along an axis from where it began; an arm stands upright or level about the base point.
CPoint CFreeRotateTool::Snap(const CAcraster& raster, CPoint point) const
{
    if (m_draggedPart == CRotateHandles::All || m_draggedPart == CRotateHandles::Base)
        return m_pDrag->SnapToAxis(point);
    const CPoint base = raster.PixelToView(m_handles.BasePoint());
    if (std::abs(base.x - point.x) <= std::abs(base.y - point.y)) {
        point.x = base.x;
    } else {
        point.y = base.y;
    }
    return point;
}

void CFreeRotateTool::DrawDragFigure(CDC& view, const CAcraster& raster)
{
    const CPoint end = m_pDrag->End();
    if (end == m_pDrag->Start())
        return;
    if (m_draggedPart == CRotateHandles::All) {
        const CSize offset = raster.ViewToPixel(end) - raster.ViewToPixel(m_pDrag->Start());
        m_handles.Offset(offset);
        DrawHandles(view);
        m_handles.Offset(CSize(-offset.cx, -offset.cy));
        return;
    }
    if (m_draggedPart == CRotateHandles::Base) {
        view.MoveTo(raster.PixelToView(m_handles.FirstArmPoint()));
        view.LineTo(end);
        view.LineTo(raster.PixelToView(m_handles.SecondArmPoint()));
    } else {
        view.MoveTo(raster.PixelToView(m_handles.BasePoint()));
        view.LineTo(end);
    }
    DrawHandles(view);
}

void CFreeRotateTool::DrawHandles(CDC& view)
{
    // The monitor's tick comes by while the tool settles. What it drew then would get into the save-under, and each
    // press would bring it back.
    if (!m_bReady)
        return;
    if (CursorViewKey() != m_viewKey) {
        m_viewKey = CursorViewKey();
        m_tip.Hide();
        SaveScreen();
    }
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    const CSelectObject pen(view, m_pen);
    m_handles.Draw(view, *current.m_pRaster);
}

void CFreeRotateTool::ReplacePen(COLORREF color)
{
    m_pen.DeleteObject();
    m_pen.CreatePen(PS_SOLID, 0, color);
}

int CFreeRotateTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    if (!m_bReady)
        return 1;
    RestoreScreen();
    // Of a press whose release never came.
    if (m_pDrag)
        ReplacePen(restColor);
    m_pDrag.reset();
    m_draggedPart = HitAt(point);
    if (m_draggedPart == CRotateHandles::None)
        return 1;
    m_pView->SetCapture();
    ReplacePen(dragColor);
    m_pDrag = std::make_unique<CTwoPointDrag>(m_pView, m_pen, point);
    return 1;
}

int CFreeRotateTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    if (!m_bReady || !m_pDrag)
        return 1;
    const CCurentRaster current;
    if (const CAcraster* raster = current.m_pRaster)
        m_pDrag->DrawFigure([&](CDC& view) { DrawDragFigure(view, *raster); });
    ::ReleaseCapture();
    if (const CAcraster* raster = current.m_pRaster)
        m_handles.Drop(m_draggedPart, raster->ViewToPixel(m_pDrag->Start()), raster->ViewToPixel(m_pDrag->End()));
    ReplacePen(restColor);
    m_pDrag.reset();
    m_draggedPart = CRotateHandles::None;
    RedrawView(m_pView);
    return 1;
}

int CFreeRotateTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    if (!m_bReady)
        return 1;
    TrackToolMenu(this, IDM_ROTATE, *m_pView, point, [this](CMenu& menu) {
        menu.EnableMenuItem(ID_ROTATE_TRANSPARENT, MF_BYCOMMAND | (m_bSelectedArea ? MF_ENABLED : MF_GRAYED));
        menu.CheckMenuItem(ID_ROTATE_TRANSPARENT, MF_BYCOMMAND | (m_bTransparent ? MF_CHECKED : MF_UNCHECKED));
    });
    return 1;
}

int CFreeRotateTool::OnCommand(UINT id)
{
    if (!m_bReady)
        return 1;
    if (id == ID_ROTATE_TRANSPARENT) {
        m_bTransparent = !m_bTransparent;
        return 1;
    }
    if (id == ID_ROTATE_START)
        StartRotation();
    return 0;
}

void CFreeRotateTool::StartRotation()
{
    const CWaitCursor wait;
    const CCurentRaster current;
    if (!current.m_pRaster)
        return;
    current.m_pRaster->Rotate(m_handles.SweptAngle(), m_handles.BasePoint(), m_bSelectedArea, m_bTransparent);
    current.m_pRaster->Reload(true);
    current.m_pRaster->ResetRegion();
}
