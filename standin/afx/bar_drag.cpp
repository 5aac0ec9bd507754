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

// Where a mouse message happened, on the screen: by its own account, which goes for posted ones too.
CPoint screenPoint(const MSG& message)
{
    CPoint at(message.lParam);
    ::ClientToScreen(message.hwnd, &at);
    return at;
}

} // namespace

void CControlBar::trackDrag(CPoint start)
{
    CFrameWnd* site = m_pDockSite;
    if (!site)
        return;
    CRect bar;
    (IsFloating() ? GetParentFrame() : static_cast<CWnd*>(this))->GetWindowRect(&bar);
    const CSize grab = start - bar.TopLeft();
    CPoint end = start;
    bool dropped = false;
    DragOutline outline;
    SetCapture();
    // Until the button comes up, the capture goes elsewhere or Escape gives the drag up.
    MSG message{};
    while (::GetCapture() == m_hWnd && ::GetMessageW(&message, nullptr, 0, 0)) {
        if (message.message == WM_LBUTTONUP) {
            end = screenPoint(message);
            dropped = true;
            break;
        }
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE)
            break;
        if (message.message == WM_MOUSEMOVE) {
            outline.show(CRect(screenPoint(message) - grab, bar.Size()));
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
    if (CDockBar* side = site->DockBarAt(end, m_dwDockStyle)) {
        // On another side the bar lies the other way: it hangs from where it was let go.
        const CRect target(side == m_pDockBar ? end - grab : end - CSize(4, 4), bar.Size());
        site->DockControlBar(this, side, &target);
    } else {
        floatAt(end - grab);
    }
}

void CControlBar::floatAt(CPoint corner)
{
    if (m_pDockBar && !IsFloating()) {
        m_formerSide = static_cast<UINT>(m_pDockBar->GetDlgCtrlID());
        GetWindowRect(&m_formerPlace);
        m_pDockBar->ScreenToClient(&m_formerPlace);
    }
    m_floatPosition = corner;
    m_pDockSite->FloatControlBar(this, corner);
}

// Back and forth between the latest place afloat and the one at a side.
void CControlBar::toggleFloating()
{
    CFrameWnd* site = m_pDockSite;
    if (!site)
        return;
    if (!IsFloating()) {
        CRect bar;
        GetWindowRect(&bar);
        const bool known = m_floatPosition != CPoint(-1, -1);
        floatAt(known ? m_floatPosition : bar.TopLeft() + CSize(24, 24));
        return;
    }
    CRect bar;
    GetParentFrame()->GetWindowRect(&bar);
    m_floatPosition = bar.TopLeft();
    CWnd* side = m_formerSide ? site->GetControlBar(m_formerSide) : nullptr;
    CRect place(m_formerPlace);
    if (side)
        side->ClientToScreen(&place);
    site->DockControlBar(this, m_formerSide, side ? &place : nullptr);
}
