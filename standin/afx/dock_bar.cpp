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
ON_WM_MOUSEACTIVATE()
END_MESSAGE_MAP()

CDockBar::~CDockBar()
{
    for (CControlBar* bar : docked())
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

int CDockBar::length() const
{
    CRect client;
    GetClientRect(&client);
    return horizontal() ? client.Width() : client.Height();
}

std::vector<CControlBar*> CDockBar::docked() const
{
    std::vector<CControlBar*> bars;
    for (const Row& row : m_rows) {
        for (const Docked& docked : row)
            bars.push_back(docked.bar);
    }
    return bars;
}

CDockBar::Row& CDockBar::rowAt(const CRect& rect)
{
    std::vector<Place> places;
    arrange(length(), horizontal(), places);
    const int middle = horizontal() ? rect.CenterPoint().y : rect.CenterPoint().x;
    for (Row& row : m_rows) {
        for (const Place& place : places) {
            const bool inRow =
                std::any_of(row.begin(), row.end(), [&](const Docked& at) { return at.bar == place.bar; });
            const int end = horizontal() ? place.rect.bottom : place.rect.right;
            if (inRow && middle >= 0 && middle < end)
                return row;
        }
    }
    return *m_rows.emplace(middle < 0 ? m_rows.begin() : m_rows.end());
}

void CDockBar::insertAt(CControlBar* pBar, const CRect& rect)
{
    const int offset = horizontal() ? rect.left : rect.top;
    Row& row = rowAt(rect);
    for (Row& each : m_rows) // it may come from another row, or from farther along this one
        std::erase_if(each, [&](const Docked& at) { return at.bar == pBar; });
    row.insert(std::find_if(row.begin(), row.end(), [&](const Docked& at) { return at.offset > offset; }),
               {pBar, offset});
    std::erase_if(m_rows, [](const Row& each) { return each.empty(); });
}

void CDockBar::takeOut(CControlBar* pBar)
{
    for (Row& row : m_rows)
        std::erase_if(row, [&](const Docked& at) { return at.bar == pBar; });
    std::erase_if(m_rows, [](const Row& row) { return row.empty(); });
}

void CDockBar::DockControlBar(CControlBar* pBar, LPCRECT lpRect)
{
    CDockBar* former = pBar->m_pDockBar;
    if (lpRect) {
        CRect rect(*lpRect);
        ScreenToClient(&rect);
        insertAt(pBar, rect);
    } else if (former != this) {
        m_rows.push_back({{pBar, 0}});
    }
    if (former == this)
        return;
    pBar->m_pDockBar = this;
    if (!m_bFloating)
        pBar->m_dwStyle = (pBar->m_dwStyle & ~static_cast<DWORD>(CBRS_ALIGN_ANY)) | (m_dwStyle & CBRS_ALIGN_ANY);
    pBar->m_dwStyle =
        m_bFloating ? pBar->m_dwStyle | CBRS_FLOATING : pBar->m_dwStyle & ~static_cast<DWORD>(CBRS_FLOATING);
    pBar->SetParent(this);
    if (former) {
        former->takeOut(pBar);
        // A floating frame goes with its last bar.
        if (former->m_bFloating && former->m_rows.empty())
            former->GetParentFrame()->DestroyWindow();
    }
}

void CDockBar::RemoveControlBar(CControlBar* pBar)
{
    takeOut(pBar);
    pBar->m_pDockBar = nullptr;
    if (m_bFloating && m_rows.empty()) {
        // The bar's window is a child of the frame and on its way out: the frame follows it later.
        ::PostMessageW(::GetParent(m_hWnd), WM_CLOSE, 0, 0);
    } else if (m_pDockSite) {
        m_pDockSite->RecalcLayout();
    }
}

void CDockBar::arrangeRow(std::vector<Place>& places, std::size_t first, int length, bool horizontalSide)
{
    const auto shift = [&](std::size_t i, int by) {
        places[i].rect.OffsetRect(horizontalSide ? by : 0, horizontalSide ? 0 : by);
    };
    const auto begin = [&](std::size_t i) { return horizontalSide ? places[i].rect.left : places[i].rect.top; };
    const auto end = [&](std::size_t i) { return horizontalSide ? places[i].rect.right : places[i].rect.bottom; };
    // Each where it was put, unless the one before it is in the way; then back from the side's end as far as needed.
    int free = 0;
    for (std::size_t i = first; i < places.size(); ++i) {
        shift(i, std::max<int>(free - begin(i), 0));
        free = end(i);
    }
    free = length;
    for (std::size_t i = places.size(); i-- > first;) {
        shift(i, std::min<int>(free - end(i), 0));
        free = begin(i);
    }
}

CSize CDockBar::arrange(int length, bool horizontalSide, std::vector<Place>& places)
{
    int across = 0;
    int longest = 0;
    for (const Row& row : m_rows) {
        std::size_t first = places.size();
        int taken = 0;
        int thickness = 0;
        const auto endRow = [&] {
            arrangeRow(places, first, length, horizontalSide);
            for (std::size_t i = first; i < places.size(); ++i)
                longest = std::max<int>(longest, horizontalSide ? places[i].rect.right : places[i].rect.bottom);
            first = places.size();
            across += thickness;
            taken = thickness = 0;
        };
        for (const Docked& docked : row) {
            if (!docked.bar->IsVisible())
                continue;
            const CSize size = docked.bar->currentSize();
            const int extent = horizontalSide ? size.cx : size.cy;
            if (taken > 0 && taken + extent > length)
                endRow(); // what does not fit any more begins a line of its own, for as long as that is so
            const int along = std::max(docked.offset, 0);
            places.push_back({docked.bar, CRect(horizontalSide ? CPoint(along, across) : CPoint(across, along), size)});
            taken += extent;
            thickness = std::max<int>(thickness, horizontalSide ? size.cy : size.cx);
        }
        endRow();
    }
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
                                SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOCOPYBITS | SWP_FRAMECHANGED);
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
    for (CControlBar* bar : m_wndDockBar.docked())
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
    if (m_wndDockBar.m_rows.empty()) {
        DestroyWindow();
        return;
    }
    for (CControlBar* bar : m_wndDockBar.docked())
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
    if (nHitTest == HTCAPTION && m_wndDockBar.GetDockedCount() > 0) {
        m_wndDockBar.GetDockedControlBar(0)->trackDrag(point);
    } else {
        CFrameWnd::OnNcLButtonDown(nHitTest, point);
    }
}

void CMiniDockFrameWnd::OnNcLButtonDblClk(UINT nHitTest, CPoint point)
{
    if (nHitTest == HTCAPTION && m_wndDockBar.GetDockedCount() > 0) {
        m_wndDockBar.GetDockedControlBar(0)->toggleFloating();
    } else {
        CFrameWnd::OnNcLButtonDblClk(nHitTest, point);
    }
}

int CMiniDockFrameWnd::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    // A click on a floating button leaves the keyboard where it is.
    return nHitTest == HTCLIENT ? MA_NOACTIVATE : CFrameWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
}
