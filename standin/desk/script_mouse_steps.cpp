// The steps of a script that work the view by mouse and keyboard.

#include "standin/desk/script_player.h"

namespace desk::script {

HWND Player::focusWindow() const
{
    const GUITHREADINFO state = inputState(m_foothold.threadId());
    HWND target = state.hwndFocus != nullptr ? state.hwndFocus : state.hwndActive;
    if (target == nullptr) {
        m_foothold.ask([&] {
            const DrawingView* view = m_frame.view();
            target = view != nullptr ? view->m_hWnd : m_frame.m_hWnd;
        });
    }
    return target;
}

void Player::typeLine(const std::wstring& line)
{
    HWND input = nullptr;
    bool reachable = false;
    m_foothold.ask([&] {
        input = m_frame.commandPanel().inputWindow();
        reachable = m_frame.IsWindowEnabled() != FALSE;
    });
    if (!reachable)
        throw Miss{L"the command line is out of reach: a dialog is open"};
    m_hand.type(input, line);
    m_hand.character(input, L'\r');
    settle();
}

void Player::pressKey(const Key& key)
{
    const HWND target = focusWindow();
    if (key.virtualKey != 0) {
        m_hand.key(target, key.virtualKey, key.control);
    } else {
        m_hand.character(target, key.character);
    }
    settle();
}

void Player::click(const Click& click)
{
    const HWND view = viewForMouse();
    const POINT at = inView(click.place);
    mouseIsAt(at, {});
    m_hand.click(view, at, click.button, click.twice, {click.shift, click.control});
    settle();
}

void Player::drag(const Drag& drag)
{
    const HWND view = viewForMouse();
    std::vector<POINT> points;
    for (const Place& place : drag.places)
        points.push_back(inView(place));
    mouseIsAt(points.back(), {});
    m_hand.drag(view, points, drag.button, {drag.shift, drag.control});
    settle();
}

void Player::move(const HeldPlace& to)
{
    const HWND view = viewForMouse();
    const POINT at = inView(to.place);
    const Held held{to.shift, to.control, m_pressed};
    mouseIsAt(at, m_pressed ? held : Held{});
    m_hand.move(view, at, held);
    settle();
}

void Player::press(const HeldPlace& there)
{
    if (m_pressed)
        throw Miss{L"the button is held already"};
    const HWND view = viewForMouse();
    const POINT at = inView(there.place);
    mouseIsAt(at, {there.shift, there.control, true});
    m_hand.press(view, at, MouseButton::left, {there.shift, there.control});
    m_pressed = true;
    settle();
}

void Player::release(const HeldPlace& there)
{
    if (!m_pressed)
        throw Miss{L"the button is not held"};
    const HWND view = viewForMouse();
    const POINT at = inView(there.place);
    mouseIsAt(at, {});
    m_hand.move(view, at, {there.shift, there.control, true});
    m_hand.release(view, at, MouseButton::left, {there.shift, there.control});
    m_pressed = false;
    settle();
}

void Player::turnWheel(const Wheel& wheel)
{
    const HWND view = viewForMouse();
    const POINT at = inView(wheel.place);
    mouseIsAt(at, {});
    m_hand.move(view, at);
    POINT screen = at;
    ClientToScreen(view, &screen);
    m_hand.turnWheel(focusWindow(), screen, wheel.notches);
    settle();
}

void Player::resizeView(imaging::Size wanted)
{
    imaging::Size size;
    m_foothold.ask([&] {
        RECT frame{};
        GetWindowRect(m_frame.m_hWnd, &frame);
        size = m_frame.editor().view().client();
        m_frame.SetWindowPos(nullptr, 0, 0, frame.right - frame.left + wanted.width - size.width,
                             frame.bottom - frame.top + wanted.height - size.height,
                             SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    });
    settle();
    if (!comesTrue([&] { return (size = m_frame.editor().view().client()) == wanted; }))
        throw Miss{L"the view measures " + std::to_wstring(size.width) + L"x" + std::to_wstring(size.height)};
}

} // namespace desk::script
