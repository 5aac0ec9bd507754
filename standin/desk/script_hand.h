#pragma once

#include <windows.h>
#include <string>
#include <vector>

#include "standin/desk/script_foothold.h"
#include "standin/desk/script_steps.h"

namespace desk::script {

/// What is held down while the mouse works.
struct Held
{
    bool shift = false, control = false, leftButton = false, middleButton = false;
};

/// Works the mouse and the keyboard: puts the messages of a real hand into the windows' queue, where hooks, dialogs and
/// menus find them. Nothing is sent straight to a window, so that everything takes its turn.
class Hand
{
public:
    explicit Hand(const Foothold& foothold) : m_foothold(foothold) {}

    void move(HWND window, POINT client, Held held = {}) const;
    void click(HWND window, POINT client, MouseButton button = MouseButton::left, bool twice = false,
               Held held = {}) const;
    /// Presses at the first point, moves through the others and releases at the last. The right button is for clicks.
    void drag(HWND window, const std::vector<POINT>& points, MouseButton button, Held held) const;
    /// Moves there and presses; the button stays down until the release.
    void press(HWND window, POINT client, MouseButton button, Held held = {}) const;
    void release(HWND window, POINT client, MouseButton button, Held held = {}) const;
    /// The wheel's messages go to the window that has the focus, wherever the mouse is.
    void turnWheel(HWND focus, POINT screen, int notches) const;
    /// In the middle of a control.
    void clickControl(HWND control) const;
    /// Over an open menu; screen coordinates.
    void releaseOverMenu(HWND owner, POINT screen) const;
    void clickMenu(HWND owner, POINT screen) const;

    void key(HWND window, unsigned virtualKey, bool control = false) const;
    void character(HWND window, wchar_t character) const;
    void type(HWND window, const std::wstring& text) const;
    /// Replaces what an edit control holds.
    void typeInto(HWND edit, const std::wstring& text) const;

private:
    void post(HWND window, UINT message, WPARAM wParam, POINT at) const;

    const Foothold& m_foothold;
};

} // namespace desk::script
