#include "module/tools/CEditPasteTool.h"

#include "module/base/CArxApp.h"
#include "module/base/COneShotTimer.h"
#include "module/base/PostCommandText.h"
#include "module/base/RedrawView.h"
#include "module/raster/CAcraster.h"
#include "module/raster/CCurentRaster.h"
#include "module/resources/resource.h"
#include "module/tools/ClipboardDib.h"
#include "module/tools/Stroke.h"
#include "module/tools/ToolMenu.h"
#include "module/tools/ViewDrawing.h"

IMPLEMENT_DYNAMIC(CEditPasteTool, CTool)

bool PasteTransparent = true;

namespace {

CDC PasteDC;         // holds the floating bitmap
double startViewKey; // the view that the floating bitmap was built for
CEditPasteTool* redrawTool;
CRect redrawRect; // in view space

constexpr UINT redrawDelay = 100; // ms: the host's time to paint before the image goes back on top

void PostAreaCommand()
{
    PostCommandText(L"orvo_selarea ");
}

void DrawFloatingAnew()
{
    redrawTool->DrawFloating(redrawRect);
}

// Runs between a move and the floating image's drawing anew.
using RedrawTimer = COneShotTimer<DrawFloatingAnew>;

} // namespace

CEditPasteTool::CEditPasteTool()
{
    PasteTransparent = true;
}

CEditPasteTool::~CEditPasteTool()
{
    RedrawTimer::Stop();
    ::ReleaseCapture();
    EndStarted();
    if (m_hPreviousBitmap) {
        ::SelectObject(PasteDC, m_hPreviousBitmap);
        PasteDC.DeleteDC();
    }
}

int CEditPasteTool::Start()
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 0;
    m_bDragging = false;
    const ClipboardDib dib(g_pArxApp->m_nClipFormat);
    if (!dib)
        return 0;

    CRect client;
    m_pView->GetClientRect(client);
    const CSize size = dib.GetSize();
    m_floating = CRect(current.m_pRaster->ViewToPixel(CPoint(client.Width() / 2, client.Height() / 2)), size);
    m_floating.OffsetRect(-(size.cx / 2), -(size.cy / 2));
    if (!BuildFloatingBitmap(*current.m_pRaster, dib))
        return 0;
    DrawFloating(current.m_pRaster->PixelToView(m_floating));
    if (current.m_pRaster->GetColorDepth() >= 2)
        PasteTransparent = false;
    m_cursorId = 0;
    m_bStarted = true;
    startViewKey = CursorViewKey();
    return 1;
}

bool CEditPasteTool::BuildFloatingBitmap(const CAcraster& raster, const ClipboardDib& dib)
{
    const CSize size = raster.PixelToView(m_floating).Size();
    CClientDC view(m_pView);
    // A context takes only bitmaps of one bit or of its own depth; that of a deeper raster is made for the view's.
    const BOOL made = raster.GetColorDepth() == 1 ? m_bitmap.CreateBitmap(size.cx, size.cy, 1, 1, nullptr)
                                                  : m_bitmap.CreateCompatibleBitmap(&view, size.cx, size.cy);
    if (!made || !PasteDC.CreateCompatibleDC(&view))
        return false;
    m_hPreviousBitmap = ::SelectObject(PasteDC, m_bitmap.GetSafeHandle());
    if (!m_hPreviousBitmap) {
        PasteDC.DeleteDC();
        return false;
    }
    dib.StretchTo(PasteDC, size);
    return true;
}

void CEditPasteTool::DrawFloating(const CRect& viewRect)
{
    SaveScreen();
    CClientDC view(m_pView);
    // Transparent is an AND of the pixels: ink is added, and the background shows through.
    view.BitBlt(viewRect.left, viewRect.top, viewRect.Width(), viewRect.Height(), &PasteDC, 0, 0,
                PasteTransparent ? SRCAND : SRCCOPY);
    CRgn frame;
    frame.CreateRectRgnIndirect(viewRect);
    view.SetROP2(R2_COPYPEN);
    FrameRegionWithPattern(view, frame, IDB_PASTE_PATTERN, CPoint(0, 0), 2);
}

int CEditPasteTool::OnMouseMove(CPoint point, UINT /*flags*/)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    m_cursorId = IDC_MOVE_IMAGE;
    if (!m_bDragging) {
        if (!current.m_pRaster->PixelToView(m_floating).PtInRect(point))
            m_cursorId = 0;
    } else if (!RedrawTimer::IsRunning()) {
        // A move while the timer runs is left out, and the next one makes up for it.
        DragTo(*current.m_pRaster, point);
    }
    return 1;
}

void CEditPasteTool::DragTo(const CAcraster& raster, CPoint point)
{
    const CRect old = m_floating;
    const CPoint pixel = raster.ViewToPixel(point);
    m_floating.OffsetRect(pixel - m_grabPixel);
    m_grabPixel = pixel;
    CRect both;
    both.UnionRect(old, m_floating);

    redrawRect = raster.PixelToView(m_floating);
    redrawTool = this;
    m_pView->RedrawWindow(raster.PixelToView(both), nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    RedrawTimer::Start(redrawDelay);
}

void CEditPasteTool::UpdateCursor()
{
    // The floating bitmap is good for one view only: after a pan or zoom the paste is dropped for the area tool.
    if (CursorViewKey() != startViewKey) {
        PostAreaCommand();
    } else {
        SetToolCursor(m_cursorId);
    }
}

int CEditPasteTool::OnLButtonDown(CPoint point, UINT /*flags*/)
{
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    if (CursorViewKey() != startViewKey)
        PostAreaCommand();
    if (m_cursorId) {
        m_bDragging = true;
        m_grabPixel = current.m_pRaster->ViewToPixel(point);
        m_pView->SetCapture();
    } else {
        Commit(*current.m_pRaster);
    }
    return 1;
}

void CEditPasteTool::Commit(CAcraster& raster)
{
    const CWaitCursor wait;
    raster.PasteFromClipboard(m_floating.TopLeft(), PasteTransparent);
    raster.Reload(true);
    PostAreaCommand();
}

int CEditPasteTool::OnLButtonUp(CPoint /*point*/, UINT /*flags*/)
{
    if (m_bDragging) {
        m_bDragging = false;
        ::ReleaseCapture();
    }
    return 1;
}

int CEditPasteTool::OnRButtonDown(CPoint point, UINT /*flags*/)
{
    m_menuPoint = point;
    TrackToolMenu(this, IDM_PASTE, *m_pView, point, [](CMenu& menu) {
        menu.CheckMenuItem(ID_PASTE_TRANSPARENT, MF_BYCOMMAND | (PasteTransparent ? MF_CHECKED : MF_UNCHECKED));
    });
    return 1;
}

int CEditPasteTool::OnCommand(UINT id)
{
    if (id != ID_PASTE_TRANSPARENT)
        return 0;
    PasteTransparent = !PasteTransparent;
    const CCurentRaster current;
    if (!current.m_pRaster)
        return 1;
    // A drag over no distance has the image repainted in the new mode.
    m_grabPixel = current.m_pRaster->ViewToPixel(m_menuPoint);
    m_bDragging = true;
    OnMouseMove(m_menuPoint, 0);
    m_bDragging = false;
    return 1;
}

void CEditPasteTool::Stop()
{
    CTool::Stop();
    if (!m_floating.IsRectEmpty() && HasView())
        RedrawView(m_pView);
}

int CEditPasteTool::ToolId()
{
    return ToolIdPaste;
}
