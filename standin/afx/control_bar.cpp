#include <algorithm>

#include "standin/afx/afx_control_bar.h"

IMPLEMENT_DYNAMIC(CControlBar, CWnd)

BEGIN_MESSAGE_MAP(CControlBar, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_MESSAGE(WM_SIZEPARENT, &CControlBar::OnSizeParent)
ON_MESSAGE(WM_IDLEUPDATECMDUI, &CControlBar::OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

namespace {

constexpr int gripperWidth = 7;

} // namespace

CControlBar::~CControlBar()
{
    if (m_hWnd)
        DestroyWindow();
}

BOOL CControlBar::PreCreateWindow(CREATESTRUCT& cs)
{
    if (!cs.lpszClass) {
        cs.lpszClass =
            AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW), ::GetSysColorBrush(COLOR_BTNFACE));
    }
    cs.style |= WS_CLIPSIBLINGS;
    return CWnd::PreCreateWindow(cs);
}

int CControlBar::OnCreate(LPCREATESTRUCT lpcs)
{
    if (CWnd::OnCreate(lpcs) == -1)
        return -1;
    if (CFrameWnd* frame = DYNAMIC_DOWNCAST(CFrameWnd, CWnd::FromHandlePermanent(::GetParent(m_hWnd)))) {
        m_pDockSite = frame;
        frame->AddControlBar(this);
        SetOwner(frame); // notifications reach the frame from wherever the bar is docked
    }
    return 0;
}

void CControlBar::OnDestroy()
{
    if (m_pDockBar)
        m_pDockBar->RemoveControlBar(this);
    if (m_pDockSite)
        m_pDockSite->RemoveControlBar(this);
    m_pDockSite = nullptr;
    CWnd::OnDestroy();
}

void CControlBar::PostNcDestroy()
{
    if (m_bAutoDelete)
        delete this;
}

LRESULT CControlBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NOTIFY:
    case WM_COMMAND:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM: {
        // What the bar does not handle itself is its owner's.
        LRESULT result = 0;
        if (OnWndMsg(message, wParam, lParam, &result))
            return result;
        CWnd* owner = GetOwner();
        return owner ? owner->SendMessage(message, wParam, lParam) : 0;
    }
    default:
        return CWnd::WindowProc(message, wParam, lParam);
    }
}

void CControlBar::SetBorders(LPCRECT lpRect)
{
    m_borders = *lpRect;
}

void CControlBar::SetBorders(int cxLeft, int cyTop, int cxRight, int cyBottom)
{
    m_borders.SetRect(cxLeft, cyTop, cxRight, cyBottom);
}

BOOL CControlBar::IsFloating() const
{
    return m_pDockBar && m_pDockBar->m_bFloating;
}

BOOL CControlBar::IsVisible() const
{
    // Its own wish: a bar in a hidden frame counts as visible.
    return m_hWnd && (GetStyle() & WS_VISIBLE) != 0;
}

BOOL CControlBar::IsHorizontal() const
{
    return IsFloating() || (m_dwStyle & CBRS_ORIENT_VERT) == 0;
}

void CControlBar::EnableDocking(DWORD dwDockStyle)
{
    m_dwDockStyle = dwDockStyle;
}

CSize CControlBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz)
{
    constexpr int all = 32767;
    return CSize(bStretch && bHorz ? all : 0, bStretch && !bHorz ? all : 0);
}

CSize CControlBar::CalcDynamicLayout(int, DWORD dwMode)
{
    return CalcFixedLayout(dwMode & LM_STRETCH, dwMode & LM_HORZ);
}

CSize CControlBar::currentSize()
{
    if (m_dwStyle & CBRS_SIZE_DYNAMIC)
        return CalcDynamicLayout(-1, IsHorizontal() ? LM_HORZ | LM_HORZDOCK : LM_VERTDOCK);
    return CalcFixedLayout(FALSE, IsHorizontal());
}

LRESULT CControlBar::OnSizeParent(WPARAM, LPARAM lParam)
{
    AFX_SIZEPARENTPARAMS* layout = reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    if (!IsVisible() || !(m_dwStyle & CBRS_ALIGN_ANY))
        return 0;
    CRect rect(layout->rect);
    m_available = rect.Size();
    const bool horizontal = (m_dwStyle & CBRS_ORIENT_HORZ) != 0;
    const CSize wanted = CalcFixedLayout(layout->bStretch, horizontal);
    const int width = std::min<int>(wanted.cx, m_available.cx);
    const int height = std::min<int>(wanted.cy, m_available.cy);
    if (m_dwStyle & CBRS_ALIGN_TOP) {
        layout->rect.top += height;
    } else if (m_dwStyle & CBRS_ALIGN_BOTTOM) {
        layout->rect.bottom -= height;
        rect.top = rect.bottom - height;
    } else if (m_dwStyle & CBRS_ALIGN_LEFT) {
        layout->rect.left += width;
    } else {
        layout->rect.right -= width;
        rect.left = rect.right - width;
    }
    rect.right = rect.left + width;
    rect.bottom = rect.top + height;
    if (layout->hDWP) {
        layout->hDWP = ::DeferWindowPos(layout->hDWP, m_hWnd, nullptr, rect.left, rect.top, width, height,
                                        SWP_NOACTIVATE | SWP_NOZORDER);
    }
    return 0;
}

LRESULT CControlBar::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM)
{
    if (!IsVisible())
        return 0;
    CFrameWnd* target = DYNAMIC_DOWNCAST(CFrameWnd, GetOwner());
    if (!target)
        target = GetParentFrame();
    if (target)
        OnUpdateCmdUI(target, static_cast<BOOL>(wParam));
    return 0;
}

void CControlBar::CalcInsideRect(CRect& rect, BOOL bHorz) const
{
    rect.left += m_dwStyle & CBRS_BORDER_LEFT ? 1 : 0;
    rect.top += m_dwStyle & CBRS_BORDER_TOP ? 1 : 0;
    rect.right -= m_dwStyle & CBRS_BORDER_RIGHT ? 1 : 0;
    rect.bottom -= m_dwStyle & CBRS_BORDER_BOTTOM ? 1 : 0;
    if (bHorz) {
        rect.DeflateRect(m_borders.left, m_borders.top, m_borders.right, m_borders.bottom);
    } else { // the borders turn with the bar
        rect.DeflateRect(m_borders.top, m_borders.left, m_borders.bottom, m_borders.right);
    }
    if ((m_dwStyle & CBRS_GRIPPER) && !IsFloating())
        (bHorz ? rect.left : rect.top) += gripperWidth;
}

void CControlBar::DrawBorders(CDC* pDC, CRect& rect)
{
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    if (m_dwStyle & CBRS_BORDER_TOP)
        pDC->FillSolidRect(rect.left, rect.top, rect.Width(), 1, ::GetSysColor(COLOR_BTNHIGHLIGHT));
    if (m_dwStyle & CBRS_BORDER_LEFT)
        pDC->FillSolidRect(rect.left, rect.top, 1, rect.Height(), ::GetSysColor(COLOR_BTNHIGHLIGHT));
    if (m_dwStyle & CBRS_BORDER_BOTTOM)
        pDC->FillSolidRect(rect.left, rect.bottom - 1, rect.Width(), 1, shadow);
    if (m_dwStyle & CBRS_BORDER_RIGHT)
        pDC->FillSolidRect(rect.right - 1, rect.top, 1, rect.Height(), shadow);
}

void CControlBar::DrawGripper(CDC* pDC, const CRect& rect)
{
    if (!(m_dwStyle & CBRS_GRIPPER) || IsFloating())
        return;
    CRect grip(rect);
    if (IsHorizontal()) {
        grip.SetRect(rect.left + 2, rect.top + 2, rect.left + 5, rect.bottom - 2);
    } else {
        grip.SetRect(rect.left + 2, rect.top + 2, rect.right - 2, rect.top + 5);
    }
    pDC->Draw3dRect(&grip, ::GetSysColor(COLOR_BTNHIGHLIGHT), ::GetSysColor(COLOR_BTNSHADOW));
}

void CControlBar::DoPaint(CDC* pDC)
{
    CRect rect;
    GetClientRect(&rect);
    DrawBorders(pDC, rect);
    DrawGripper(pDC, rect);
}

void CControlBar::OnPaint()
{
    CPaintDC context(this);
    if (IsVisible())
        DoPaint(&context);
}

BOOL CControlBar::OnEraseBkgnd(CDC* pDC)
{
    CRect rect;
    GetClientRect(&rect);
    pDC->FillSolidRect(&rect, ::GetSysColor(COLOR_BTNFACE));
    return TRUE;
}

BOOL CControlBar::hitsTool(CPoint) const
{
    return FALSE;
}

void CControlBar::OnLButtonDown(UINT nFlags, CPoint point)
{
    if (m_pDockBar && m_dwDockStyle && !hitsTool(point)) {
        CPoint grab(point);
        ClientToScreen(&grab);
        trackDrag(grab);
    } else {
        CWnd::OnLButtonDown(nFlags, point);
    }
}

void CControlBar::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    if (m_pDockBar && m_dwDockStyle && !hitsTool(point)) {
        toggleFloating();
    } else {
        CWnd::OnLButtonDblClk(nFlags, point);
    }
}
