// Dragging a control bar from its place to another side, or afloat.
#include <cstdlib>

#include "standin/afx/afx_control_bar.h"

namespace {

// The outline that follows the mouse, inverted on the screen: drawing it a second time removes it.
class DragOutline
{
public:
    ~DragOutline() { hide(); }
    void show(const CRect& rect)
    {
        if (m_visible && rect == m_rect)
            return;
        hide();
        m_rect = rect;
        draw();
        m_visible = true;
    }
    void hide()
    {
        if (m_visible)
            draw();
        m_visible = false;
    }

private:
    void draw() const
    {
        constexpr int thick = 2;
        CClientDC screen(nullptr);
        screen.PatBlt(m_rect.left, m_rect.top, m_rect.Width(), thick, DSTINVERT);
        screen.PatBlt(m_rect.left, m_rect.bottom - thick, m_rect.Width(), thick, DSTINVERT);
        screen.PatBlt(m_rect.left, m_rect.top + thick, thick, m_rect.Height() - 2 * thick, DSTINVERT);
        screen.PatBlt(m_rect.right - thick, m_rect.top + thick, thick, m_rect.Height() - 2 * thick, DSTINVERT);
    }

    CRect m_rect;
    bool m_visible = false;
};

} // namespace

void CControlBar::trackDrag()
{
    CFrameWnd* site = m_pDockSite;
    if (!site)
        return;
    const CPoint start(static_cast<LPARAM>(::GetMessagePos()));
    CRect bar;
    GetWindowRect(&bar);
    const CSize grab = start - bar.TopLeft();
    CPoint end = start;
    bool dropped = false;
    DragOutline outline;
    SetCapture();
    // Until the button comes up, the capture goes elsewhere or Escape gives the drag up.
    MSG message{};
    while (::GetCapture() == m_hWnd && ::GetMessageW(&message, nullptr, 0, 0)) {
        if (message.message == WM_LBUTTONUP) {
            end = CPoint(message.pt);
            dropped = true;
            break;
        }
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE)
            break;
        if (message.message == WM_MOUSEMOVE) {
            outline.show(CRect(CPoint(message.pt) - grab, bar.Size()));
        } else {
            ::DispatchMessageW(&message);
        }
    }
    if (message.message == WM_QUIT)
        ::PostQuitMessage(static_cast<int>(message.wParam));
    outline.hide();
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    const CSize moved = end - start;
    if (!dropped || (std::abs(moved.cx) < 4 && std::abs(moved.cy) < 4))
        return;
    const CRect target(CPoint(end) - grab, bar.Size());
    if (CDockBar* side = site->DockBarAt(end, m_dwDockStyle)) {
        site->DockControlBar(this, side, &target);
    } else {
        m_floatPosition = target.TopLeft();
        site->FloatControlBar(this, m_floatPosition);
    }
}

void CControlBar::toggleFloating()
{
    CFrameWnd* site = m_pDockSite;
    if (!site)
        return;
    if (IsFloating()) {
        site->DockControlBar(this);
        return;
    }
    CRect bar;
    GetWindowRect(&bar);
    const bool known = m_floatPosition != CPoint(-1, -1);
    site->FloatControlBar(this, known ? m_floatPosition : bar.TopLeft() + CSize(24, 24));
}
