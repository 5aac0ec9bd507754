// Sides of a frame that hold control bars, and the small frames of floating ones.
#include <algorithm>

#include "standin/afx/afx_control_bar.h"

IMPLEMENT_DYNAMIC(CDockBar, CControlBar)
IMPLEMENT_DYNCREATE(CMiniDockFrameWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CMiniDockFrameWnd, CFrameWnd)
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_WM_NCLBUTTONDOWN()
ON_WM_NCLBUTTONDBLCLK()
END_MESSAGE_MAP()

CDockBar::~CDockBar()
{
    for (CControlBar* bar : m_bars)
        bar->m_pDockBar = nullptr;
    if (m_hWnd)
        DestroyWindow();
}

BOOL CDockBar::Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID)
{
    m_dwStyle = dwStyle & CBRS_ALIGN_ANY; // sides have no borders of their own
    SetBorders();
    return CWnd::Create(nullptr, nullptr, dwStyle & ~static_cast<DWORD>(CBRS_ALL), CRect(0, 0, 0, 0), pParentWnd, nID);
}

bool CDockBar::horizontal() const
{
    return m_bFloating || (m_dwStyle & CBRS_ORIENT_HORZ) != 0;
}

void CDockBar::DockControlBar(CControlBar* pBar, LPCRECT lpRect)
{
    auto place = m_bars.end();
    if (lpRect) {
        // In front of the first bar whose middle lies behind the wanted place.
        place = std::find_if(m_bars.begin(), m_bars.end(), [&](CControlBar* bar) {
            CRect rect;
            bar->GetWindowRect(&rect);
            return bar != pBar &&
                   (horizontal() ? rect.CenterPoint().x > lpRect->left : rect.CenterPoint().y > lpRect->top);
        });
    }
    CDockBar* former = pBar->m_pDockBar;
    if (former == this) {
        const auto present = std::find(m_bars.begin(), m_bars.end(), pBar);
        if (present < place) {
            std::rotate(present, present + 1, place);
        } else {
            std::rotate(place, present, present + 1);
        }
        return;
    }
    m_bars.insert(place, pBar);
    pBar->m_pDockBar = this;
    if (!m_bFloating)
        pBar->m_dwStyle = (pBar->m_dwStyle & ~static_cast<DWORD>(CBRS_ALIGN_ANY)) | (m_dwStyle & CBRS_ALIGN_ANY);
    pBar->m_dwStyle =
        m_bFloating ? pBar->m_dwStyle | CBRS_FLOATING : pBar->m_dwStyle & ~static_cast<DWORD>(CBRS_FLOATING);
    pBar->SetParent(this);
    if (former) {
        std::erase(former->m_bars, pBar);
        // A floating frame goes with its last bar.
        if (former->m_bFloating && former->m_bars.empty())
            former->GetParentFrame()->DestroyWindow();
    }
}

void CDockBar::RemoveControlBar(CControlBar* pBar)
{
    std::erase(m_bars, pBar);
    pBar->m_pDockBar = nullptr;
    if (m_bFloating && m_bars.empty()) {
        // The bar's window is a child of the frame and on its way out: the frame follows it later.
        ::PostMessageW(::GetParent(m_hWnd), WM_CLOSE, 0, 0);
    } else if (m_pDockSite) {
        m_pDockSite->RecalcLayout();
    }
}

CSize CDockBar::arrange(int length, bool horizontalSide, std::vector<Place>& places)
{
    // Rows fill up along the side; a bar that does not fit any more begins the next row.
    int along = 0;
    int across = 0;
    int thickness = 0;
    int longest = 0;
    for (CControlBar* bar : m_bars) {
        if (!bar->IsVisible())
            continue;
        const CSize size = bar->currentSize();
        const int extent = horizontalSide ? size.cx : size.cy;
        if (along > 0 && along + extent > length) {
            across += thickness;
            along = thickness = 0;
        }
        const CPoint corner = horizontalSide ? CPoint(along, across) : CPoint(across, along);
        places.push_back({bar, CRect(corner, size)});
        along += extent;
        longest = std::max(longest, along);
        thickness = std::max<int>(thickness, horizontalSide ? size.cy : size.cx);
    }
    across += thickness;
    return horizontalSide ? CSize(longest, across) : CSize(across, longest);
}

CSize CDockBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz)
{
    std::vector<Place> places;
    CSize size = arrange(bHorz ? m_available.cx : m_available.cy, bHorz, places);
    if (bStretch)
        (bHorz ? size.cx : size.cy) = bHorz ? m_available.cx : m_available.cy;
    return size;
}

void CDockBar::layOutBars()
{
    CRect client;
    GetClientRect(&client);
    std::vector<Place> places;
    arrange(horizontal() ? client.Width() : client.Height(), horizontal(), places);
    for (const Place& place : places) {
        place.bar->SetWindowPos(nullptr, place.rect.left, place.rect.top, place.rect.Width(), place.rect.Height(),
                                SWP_NOACTIVATE | SWP_NOZORDER | SWP_FRAMECHANGED);
    }
}

void CDockBar::OnUpdateCmdUI(CFrameWnd*, BOOL) {}

CMiniDockFrameWnd::CMiniDockFrameWnd() = default;

BOOL CMiniDockFrameWnd::Create(CFrameWnd* pParent, CPoint point)
{
    m_pOwnerFrame = pParent;
    if (!CreateEx(WS_EX_TOOLWINDOW, nullptr, nullptr, WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, point.x,
                  point.y, 0, 0, pParent->m_hWnd, nullptr))
        return FALSE;
    pParent->m_floatingFrames.push_back(this);
    m_wndDockBar.m_available = CSize(32767, 32767);
    return m_wndDockBar.Create(this, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, AFX_IDW_DOCKBAR_FLOAT);
}

void CMiniDockFrameWnd::RecalcLayout(BOOL)
{
    if (!m_wndDockBar.m_hWnd || m_bInRecalcLayout)
        return;
    m_bInRecalcLayout = TRUE;
    const CSize size = m_wndDockBar.CalcFixedLayout(FALSE, TRUE);
    CRect window(CPoint(0, 0), size);
    ::AdjustWindowRectEx(&window, GetStyle(), FALSE, GetExStyle());
    bool shown = false;
    for (CControlBar* bar : m_wndDockBar.m_bars)
        shown = shown || bar->IsVisible();
    // Without a visible bar the frame hides, and keeps its size for the next time.
    if (shown) {
        SetWindowPos(nullptr, 0, 0, window.Width(), window.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        m_wndDockBar.MoveWindow(0, 0, size.cx, size.cy);
        m_wndDockBar.layOutBars();
    }
    ShowWindow(shown ? SW_SHOWNA : SW_HIDE);
    m_bInRecalcLayout = FALSE;
}

void CMiniDockFrameWnd::OnClose()
{
    if (m_wndDockBar.m_bars.empty()) {
        DestroyWindow();
        return;
    }
    for (CControlBar* bar : m_wndDockBar.m_bars)
        bar->ShowWindow(SW_HIDE);
    RecalcLayout();
}

void CMiniDockFrameWnd::OnDestroy()
{
    if (m_pOwnerFrame)
        std::erase(m_pOwnerFrame->m_floatingFrames, this);
    CFrameWnd::OnDestroy();
}

void CMiniDockFrameWnd::OnNcLButtonDown(UINT nHitTest, CPoint point)
{
    // By its title the bar moves as by its own blank part, so that it can be docked again.
    if (nHitTest == HTCAPTION && !m_wndDockBar.m_bars.empty()) {
        m_wndDockBar.m_bars.front()->trackDrag();
    } else {
        CFrameWnd::OnNcLButtonDown(nHitTest, point);
    }
}

void CMiniDockFrameWnd::OnNcLButtonDblClk(UINT nHitTest, CPoint point)
{
    if (nHitTest == HTCAPTION && !m_wndDockBar.m_bars.empty()) {
        m_wndDockBar.m_bars.front()->toggleFloating();
    } else {
        CFrameWnd::OnNcLButtonDblClk(nHitTest, point);
    }
}
