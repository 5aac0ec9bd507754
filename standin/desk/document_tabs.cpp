#include "standin/desk/document_tabs.h"

#include <algorithm>
#include <windowsx.h>

namespace desk {
namespace {

// Lengths are those of a screen with 96 pixels to the inch.
constexpr int height = 27, widestTab = 220, margin = 10, crossSize = 9;
constexpr COLORREF ground = RGB(0xE3, 0xE6, 0xEA), activeGround = RGB(0xFF, 0xFF, 0xFF), rule = RGB(0xC9, 0xCE, 0xD5),
                   ink = RGB(0x5A, 0x63, 0x6E), activeInk = RGB(0x1F, 0x26, 0x2D), accent = RGB(0x2F, 0x6F, 0xDE);
// Away from those of the frame's other bars.
constexpr UINT barId = 0xE8F0;

} // namespace

DocumentTabs::DocumentTabs(const UiFonts& fonts, DocumentTabsEvents events)
    : m_fonts(fonts), m_events(std::move(events))
{}

DocumentTabs::~DocumentTabs()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL DocumentTabs::Create(CFrameWnd* frame)
{
    m_dwStyle = CBRS_ALIGN_TOP;
    const RECT nowhere{0, 0, 10, 10};
    return CWnd::Create(AfxRegisterWndClass(CS_HREDRAW, LoadCursorW(nullptr, IDC_ARROW)), L"Drawings", WS_CHILD,
                        nowhere, frame, barId);
}

bool DocumentTabs::show(std::vector<DocumentTab> tabs, standin::DrawingId active)
{
    if (m_hWnd == nullptr || (tabs == m_tabs && active == m_active))
        return false;
    const bool before = m_tabs.size() > 1;
    m_tabs = std::move(tabs);
    m_active = active;
    Invalidate(FALSE);
    const bool now = m_tabs.size() > 1;
    if (now != before)
        ShowWindow(now ? SW_SHOWNA : SW_HIDE);
    return now != before;
}

CSize DocumentTabs::CalcFixedLayout(BOOL, BOOL)
{
    return {32767, m_fonts.scaled(height)};
}

// All of one width, narrower the more there are.
CRect DocumentTabs::tabAt(std::size_t index) const
{
    CRect client;
    GetClientRect(&client);
    const int width =
        std::min<int>(m_fonts.scaled(widestTab), client.Width() / std::max<int>(1, static_cast<int>(m_tabs.size())));
    const int left = static_cast<int>(index) * width;
    return CRect(left, 0, left + width, client.bottom);
}

CRect DocumentTabs::crossIn(const CRect& tab) const
{
    const int size = m_fonts.scaled(crossSize), right = tab.right - m_fonts.scaled(margin);
    const int top = (tab.top + tab.bottom - size) / 2;
    return CRect(right - size, top, right, top + size);
}

void DocumentTabs::paintTab(CDC& context, std::size_t index) const
{
    const CRect tab = tabAt(index);
    const bool active = m_tabs[index].drawing == m_active;
    context.FillSolidRect(tab.left, tab.top, tab.Width(), tab.Height() - (active ? 0 : 1),
                          active ? activeGround : ground);
    context.FillSolidRect(tab.right - 1, tab.top, 1, tab.Height(), rule);
    if (active)
        context.FillSolidRect(tab.left, tab.top, tab.Width() - 1, 2, accent);
    const CRect cross = crossIn(tab);
    CRect text(tab.left + m_fonts.scaled(margin), tab.top, cross.left - m_fonts.scaled(margin / 2), tab.bottom);
    context.SetTextColor(active ? activeInk : ink);
    ::DrawTextW(context.GetSafeHdc(), m_tabs[index].title.c_str(), -1, &text,
                DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
    CPen pen(PS_SOLID, 1, active ? activeInk : ink);
    CPen* const former = context.SelectObject(&pen);
    context.MoveTo(cross.left, cross.top);
    context.LineTo(cross.right, cross.bottom);
    context.MoveTo(cross.left, cross.bottom - 1);
    context.LineTo(cross.right, cross.top - 1);
    context.SelectObject(former);
}

void DocumentTabs::DoPaint(CDC* pDC)
{
    CRect client;
    GetClientRect(&client);
    pDC->FillSolidRect(0, 0, client.right, client.bottom - 1, ground);
    pDC->FillSolidRect(0, client.bottom - 1, client.right, 1, rule);
    const HGDIOBJ former = SelectObject(pDC->GetSafeHdc(), m_fonts.text.GetSafeHandle());
    pDC->SetBkMode(TRANSPARENT);
    for (std::size_t i = 0; i < m_tabs.size(); ++i)
        paintTab(*pDC, i);
    SelectObject(pDC->GetSafeHdc(), former);
}

void DocumentTabs::pressed(CPoint at, bool close)
{
    for (std::size_t i = 0; i < m_tabs.size(); ++i) {
        CRect tab = tabAt(i);
        if (!tab.PtInRect(at))
            continue;
        CRect cross = crossIn(tab);
        cross.InflateRect(3, 3);
        const standin::DrawingId drawing = m_tabs[i].drawing; // the row may change before the call returns
        (close || cross.PtInRect(at) ? m_events.closed : m_events.chosen)(drawing);
        return;
    }
}

LRESULT DocumentTabs::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND:
        return TRUE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        pressed(CPoint(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)), false);
        return 0;
    case WM_MBUTTONDOWN:
        pressed(CPoint(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)), true);
        return 0;
    }
    return CControlBar::WindowProc(message, wParam, lParam);
}

} // namespace desk
