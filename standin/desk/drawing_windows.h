#pragma once

#include <functional>
#include <vector>

#include "standin/afx/afx.h"
#include "standin/desk/drawing_view.h"
#include "standin/host.h"

namespace desk {

/// The frame's child windows, one for each open drawing, with the drawing's view in it. The one that is shown fills the
/// frame's client area without a border of its own; the others are hidden, so that neither the user nor the system
/// brings one of them up by itself.
class DrawingWindows
{
public:
    using MakeView = std::function<DrawingView*()>;

    /// The frame outlives it. `makeView` makes the view object of a window, which its window deletes.
    DrawingWindows(CMDIFrameWnd& frame, MakeView makeView) : m_frame(frame), m_makeView(std::move(makeView)) {}

    /// Makes the drawing's window if it has none yet. What held the mouse in the window before lets go of it.
    void show(standin::DrawingId drawing);
    /// Nothing if it has none.
    void close(standin::DrawingId drawing);
    /// The frame's client area has another size.
    void fit();

    /// Null while no drawing is shown.
    DrawingView* view() const { return m_shown < m_windows.size() ? m_windows[m_shown].view : nullptr; }
    /// Calls with each view, shown or not.
    void forEachView(const std::function<void(DrawingView&)>& call) const;

private:
    struct Window
    {
        standin::DrawingId drawing;
        CMDIChildWnd* frame; // deletes itself, like the view
        DrawingView* view;
    };

    std::size_t indexOf(standin::DrawingId drawing) const;
    void make(standin::DrawingId drawing);

    CMDIFrameWnd& m_frame;
    MakeView m_makeView;
    std::vector<Window> m_windows;
    std::size_t m_shown = 0;
};

} // namespace desk
