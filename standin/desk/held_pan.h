#pragma once

#include <windows.h>
#include <functional>

namespace desk {

/// The view is held by the middle button: while this lives, it hears where the mouse moves.
///
/// A module's tool keeps the view's mouse moves for itself, by a hook that empties the messages before any window sees
/// them. The hook here is set when the button goes down, so that it comes before those that were there already.
class HeldPan
{
public:
    /// `moved` hears of each move, in client coordinates of the view. One view at a time can be held. The mouse is
    /// captured, unless a tool has captured it for the view already.
    HeldPan(HWND view, std::function<void(POINT client)> moved);
    ~HeldPan();
    HeldPan(const HeldPan&) = delete;
    HeldPan& operator=(const HeldPan&) = delete;

private:
    static LRESULT CALLBACK procedure(int code, WPARAM wParam, LPARAM lParam);

    static HeldPan* s_held;

    HWND m_view;
    std::function<void(POINT)> m_moved;
    HHOOK m_hook;
    bool m_captured;
};

} // namespace desk
