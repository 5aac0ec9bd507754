// CFrameWnd: its control bars, at the edges and afloat.
#include <algorithm>

#include "standin/afx/afx_control_bar.h"
#include "standin/afx/afx_frame.h"

void CFrameWnd::AddControlBar(CControlBar* pBar)
{
    m_bars.push_back(pBar);
}

void CFrameWnd::RemoveControlBar(CControlBar* pBar)
{
    std::erase(m_bars, pBar);
    std::erase(m_dockBars, pBar);
}

CControlBar* CFrameWnd::GetControlBar(UINT nID)
{
    for (CControlBar* bar : m_bars) {
        if (static_cast<UINT>(bar->GetDlgCtrlID()) == nID)
            return bar;
    }
    return nullptr;
}

void CFrameWnd::RecalcLayout(BOOL)
{
    if (m_bInRecalcLayout || !m_hWnd)
        return;
    m_bInRecalcLayout = TRUE;
    AFX_SIZEPARENTPARAMS layout{};
    GetClientRect(&layout.rect);
    layout.bStretch = TRUE;
    layout.hDWP = ::BeginDeferWindowPos(8);
    // Fixed bars take the edge of the frame, docked ones come inside them.
    for (const bool dockBars : {false, true}) {
        for (CControlBar* bar : m_bars) {
            if (bar->IsKindOf(RUNTIME_CLASS(CDockBar)) == dockBars && ::GetParent(bar->m_hWnd) == m_hWnd)
                bar->SendMessage(WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
        }
    }
    if (const HWND inside = ::GetDlgItem(m_hWnd, AFX_IDW_PANE_FIRST)) {
        const CRect rect(layout.rect);
        layout.hDWP = ::DeferWindowPos(layout.hDWP, inside, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                                       SWP_NOACTIVATE | SWP_NOZORDER);
    }
    ::EndDeferWindowPos(layout.hDWP);
    for (CDockBar* side : m_dockBars)
        side->layOutBars();
    m_bInRecalcLayout = FALSE;
}

void CFrameWnd::EnableDocking(DWORD dwDockStyle)
{
    constexpr struct
    {
        UINT id;
        DWORD style;
    } sides[] = {{AFX_IDW_DOCKBAR_TOP, CBRS_TOP},
                 {AFX_IDW_DOCKBAR_BOTTOM, CBRS_BOTTOM},
                 {AFX_IDW_DOCKBAR_LEFT, CBRS_LEFT},
                 {AFX_IDW_DOCKBAR_RIGHT, CBRS_RIGHT}};
    for (const auto& side : sides) {
        if (!(dwDockStyle & side.style & CBRS_ALIGN_ANY) || dockBar(side.id))
            continue;
        CDockBar* bar = new CDockBar;
        bar->m_bAutoDelete = TRUE;
        if (bar->Create(this, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | side.style, side.id))
            m_dockBars.push_back(bar);
    }
    RecalcLayout();
}

CDockBar* CFrameWnd::dockBar(UINT id)
{
    for (CDockBar* bar : m_dockBars) {
        if (static_cast<UINT>(bar->GetDlgCtrlID()) == id)
            return bar;
    }
    return nullptr;
}

CDockBar* CFrameWnd::DockBarAt(POINT screen, DWORD dwDockStyle)
{
    // A side without bars is thin: some pixels on both sides of it count as well.
    constexpr int reach = 12;
    for (CDockBar* bar : m_dockBars) {
        CRect rect;
        bar->GetWindowRect(&rect);
        rect.InflateRect(reach, reach);
        if ((bar->m_dwStyle & dwDockStyle & CBRS_ALIGN_ANY) && rect.PtInRect(screen))
            return bar;
    }
    return nullptr;
}

void CFrameWnd::DockControlBar(CControlBar* pBar, UINT nDockBarID, LPCRECT lpRect)
{
    CDockBar* chosen = nullptr;
    for (CDockBar* bar : m_dockBars) {
        const bool wanted = nDockBarID ? static_cast<UINT>(bar->GetDlgCtrlID()) == nDockBarID
                                       : (bar->m_dwStyle & pBar->m_dwDockStyle & CBRS_ALIGN_ANY) != 0;
        if (wanted && !chosen)
            chosen = bar;
    }
    if (chosen)
        DockControlBar(pBar, chosen, lpRect);
}

void CFrameWnd::DockControlBar(CControlBar* pBar, CDockBar* pDockBar, LPCRECT lpRect)
{
    pDockBar->DockControlBar(pBar, lpRect);
    RecalcLayout();
}

void CFrameWnd::FloatControlBar(CControlBar* pBar, CPoint point, DWORD)
{
    if (pBar->IsFloating() && pBar->m_pDockBar->GetDockedCount() == 1) {
        pBar->GetParentFrame()->SetWindowPos(nullptr, point.x, point.y, 0, 0,
                                             SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    CMiniDockFrameWnd* frame = new CMiniDockFrameWnd;
    if (!frame->Create(this, point))
        return;
    CString title;
    pBar->GetWindowText(title);
    frame->SetWindowText(title);
    frame->GetDockBar()->DockControlBar(pBar);
    frame->RecalcLayout();
    if (pBar->IsVisible())
        frame->ShowWindow(SW_SHOWNA);
    RecalcLayout();
}

void CFrameWnd::ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL)
{
    // At once, whether or not a delay is allowed: the next layout sees the same either way.
    pBar->ShowWindow(bShow ? SW_SHOWNA : SW_HIDE);
    if (pBar->IsFloating())
        pBar->m_pDockBar->GetParentFrame()->RecalcLayout();
    RecalcLayout();
}
