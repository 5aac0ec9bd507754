#include "module/tools/CTool.h"

#include "module/base/CArxApp.h"
#include "module/tools/CSelectObject.h"
#include "module/tools/ToolMessageHook.h"

IMPLEMENT_DYNAMIC(CTool, CObject)

namespace {
unsigned madeSoFar;
}

CTool::CTool() : m_pView(acedGetAcadDwgView()), m_hView(m_pView ? m_pView->m_hWnd : nullptr)
{
    if (g_pArxApp->m_pTool) {
        StopToolCloseTimer();
        delete g_pArxApp->m_pTool;
    }
    g_pArxApp->m_pTool = this;
    ++madeSoFar;
    ToolInputEnabled = 1;
    InstallToolHook();
}

CTool::~CTool()
{
    RemoveToolHook();
    g_pArxApp->m_pTool = nullptr;
    // A younger timer stays, so that the next tool's Start can see how soon the button was pressed again.
    if (ButtonClickTimer && ButtonClickTimer->HasElapsed())
        ButtonClickTimer.reset();
    StopToolCloseTimer();
}

bool CTool::IsInActiveView() const
{
    const CView* view = acedGetAcadDwgView();
    return view && view->m_hWnd == m_hView;
}

unsigned CTool::MadeSoFar()
{
    return madeSoFar;
}

int CTool::Start()
{
    return 1;
}

void CTool::Stop()
{
    SetToolCursor(0);
}

void CTool::EndStarted()
{
    if (!m_bStarted)
        return;
    m_bStarted = false;
    Stop();
}

int CTool::ToolId()
{
    return ToolIdNone;
}

void CTool::UpdateCursor()
{
    SetToolCursor(0);
}

int CTool::OnLButtonDown(CPoint, UINT)
{
    return 1;
}

int CTool::OnRButtonDown(CPoint, UINT)
{
    return 1;
}

int CTool::OnLButtonUp(CPoint, UINT)
{
    return 1;
}

int CTool::OnRButtonUp(CPoint, UINT)
{
    return 1;
}

int CTool::OnLButtonDblClk(CPoint, UINT)
{
    return 1;
}

int CTool::OnMouseMove(CPoint, UINT)
{
    return 1;
}

int CTool::OnCommand(UINT)
{
    return 0;
}

int CTool::PreMessage(MSG*)
{
    return 0;
}

void CTool::SetToolCursor(UINT cursorId)
{
    SetCursor(cursorId ? AfxGetApp()->LoadCursor(cursorId) : LoadCursorW(nullptr, IDC_ARROW));
}

void CTool::SaveScreen()
{
    CRect client;
    m_pView->GetClientRect(client);
    CPoint origin(0, 0);
    m_pView->ClientToScreen(&origin);

    CClientDC view(m_pView);
    CClientDC screen(nullptr);
    // What the screen shows is written into the view first: the host may have drawn past the view's own context.
    view.BitBlt(0, 0, client.right, client.bottom, &screen, origin.x, origin.y, SRCCOPY);

    m_pSaveUnder = std::make_unique<CBitmap>();
    m_pSaveUnder->CreateCompatibleBitmap(&view, client.right, client.bottom);
    CDC memory;
    memory.CreateCompatibleDC(&view);
    const CSelectObject selected(memory, *m_pSaveUnder);
    memory.BitBlt(0, 0, client.right, client.bottom, &view, 0, 0, SRCCOPY);
}

void CTool::RestoreScreen()
{
    if (!m_pSaveUnder)
        return;
    BITMAP size = {};
    m_pSaveUnder->GetBitmap(&size);
    CClientDC view(m_pView);
    CDC memory;
    memory.CreateCompatibleDC(&view);
    const CSelectObject selected(memory, *m_pSaveUnder);
    view.BitBlt(0, 0, size.bmWidth, size.bmHeight, &memory, 0, 0, SRCCOPY);
}
