#include "standin/desk/drawing_windows.h"

#include <algorithm>

namespace desk {

std::size_t DrawingWindows::indexOf(standin::DrawingId drawing) const
{
    const auto found =
        std::find_if(m_windows.begin(), m_windows.end(), [&](const Window& each) { return each.drawing == drawing; });
    return static_cast<std::size_t>(found - m_windows.begin());
}

void DrawingWindows::show(standin::DrawingId drawing)
{
    if (view() != nullptr && ::GetCapture() == view()->m_hWnd)
        ReleaseCapture();
    const std::size_t wanted = indexOf(drawing);
    const bool made = wanted == m_windows.size();
    if (made)
        make(drawing);
    m_shown = wanted;
    fit();
    const Window& shown = m_windows[m_shown];
    if (!made) {
        shown.frame->ShowWindow(SW_SHOWNA);
        m_frame.MDIActivate(shown.frame);
    }
    // Only now: the system makes another child the active one when the active one is hidden.
    for (const Window& each : m_windows) {
        if (&each != &shown)
            each.frame->ShowWindow(SW_HIDE);
    }
    // Whatever of the program is in front of the desk, a splash or a dialog, stays there.
    if (CWnd::GetActiveWindow() == &m_frame)
        shown.view->SetFocus();
}

void DrawingWindows::make(standin::DrawingId drawing)
{
    auto* child = new CMDIChildWnd;
    child->Create(nullptr, L"Drawing", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 100, 100), &m_frame);
    child->ModifyStyle(WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_BORDER, 0,
                       SWP_FRAMECHANGED);
    child->ModifyStyleEx(WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE, 0, SWP_FRAMECHANGED);
    DrawingView* const view = m_makeView();
    view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), child, AFX_IDW_PANE_FIRST);
    child->SetActiveView(view);
    m_windows.push_back({drawing, child, view});
}

void DrawingWindows::close(standin::DrawingId drawing)
{
    const std::size_t index = indexOf(drawing);
    if (index == m_windows.size())
        return;
    CMDIChildWnd* const frame = m_windows[index].frame;
    m_windows.erase(m_windows.begin() + static_cast<std::ptrdiff_t>(index));
    // Of the one that was shown another has taken the place before, unless it was the last.
    if (index < m_shown)
        --m_shown;
    frame->MDIDestroy();
}

// Hidden windows follow when they are shown.
void DrawingWindows::fit()
{
    if (m_shown >= m_windows.size() || m_frame.m_hWndMDIClient == nullptr)
        return;
    CRect client;
    ::GetClientRect(m_frame.m_hWndMDIClient, &client);
    m_windows[m_shown].frame->MoveWindow(&client);
    m_windows[m_shown].frame->RecalcLayout();
}

void DrawingWindows::forEachView(const std::function<void(DrawingView&)>& call) const
{
    for (const Window& each : m_windows)
        call(*each.view);
}

} // namespace desk
