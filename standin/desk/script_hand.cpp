#include "standin/desk/script_hand.h"

namespace desk::script {
namespace {

struct ButtonMessages
{
    UINT down, up, twice;
    WPARAM bit;
};

constexpr ButtonMessages messagesOf(MouseButton button)
{
    switch (button) {
    case MouseButton::right:
        return {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, MK_RBUTTON};
    case MouseButton::middle:
        return {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, MK_MBUTTON};
    default:
        return {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, MK_LBUTTON};
    }
}

WPARAM keyBits(Held held)
{
    return (held.shift ? MK_SHIFT : 0) | (held.control ? MK_CONTROL : 0) | (held.leftButton ? MK_LBUTTON : 0) |
           (held.middleButton ? MK_MBUTTON : 0);
}

} // namespace

void Hand::post(HWND window, UINT message, WPARAM wParam, POINT at) const
{
    PostMessageW(window, message, wParam, MAKELPARAM(at.x, at.y));
}

void Hand::move(HWND window, POINT client, Held held) const
{
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, WM_MOUSEMOVE, keyBits(held), client);
    m_foothold.postHeldKeys(false, false);
}

void Hand::click(HWND window, POINT client, MouseButton button, bool twice, Held held) const
{
    const ButtonMessages messages = messagesOf(button);
    const WPARAM pressed = keyBits(held) | messages.bit;
    move(window, client, held);
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, messages.down, pressed, client);
    post(window, messages.up, keyBits(held), client);
    if (twice) {
        post(window, messages.twice, pressed, client);
        post(window, messages.up, keyBits(held), client);
    }
    m_foothold.postHeldKeys(false, false);
}

void Hand::drag(HWND window, const std::vector<POINT>& points, MouseButton button, Held held) const
{
    press(window, points.front(), button, held);
    Held pressed = held;
    (button == MouseButton::middle ? pressed.middleButton : pressed.leftButton) = true;
    for (std::size_t i = 1; i < points.size(); ++i)
        move(window, points[i], pressed);
    release(window, points.back(), button, held);
}

void Hand::press(HWND window, POINT client, MouseButton button, Held held) const
{
    move(window, client, held);
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, messagesOf(button).down, keyBits(held) | messagesOf(button).bit, client);
    m_foothold.postHeldKeys(false, false);
}

void Hand::release(HWND window, POINT client, MouseButton button, Held held) const
{
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, messagesOf(button).up, keyBits(held), client);
    m_foothold.postHeldKeys(false, false);
}

void Hand::turnWheel(HWND focus, POINT screen, int notches) const
{
    post(focus, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<short>(notches * WHEEL_DELTA)), screen);
}

void Hand::clickControl(HWND control) const
{
    RECT client{};
    GetClientRect(control, &client);
    click(control, {client.right / 2, client.bottom / 2});
}

void Hand::releaseOverMenu(HWND owner, POINT screen) const
{
    post(owner, WM_LBUTTONUP, 0, screen);
}

// While a menu is open, mouse messages carry screen coordinates.
void Hand::clickMenu(HWND owner, POINT screen) const
{
    post(owner, WM_MOUSEMOVE, 0, screen);
    post(owner, WM_LBUTTONDOWN, MK_LBUTTON, screen);
    post(owner, WM_LBUTTONUP, 0, screen);
}

void Hand::key(HWND window, unsigned virtualKey, bool control) const
{
    m_foothold.postHeldKeys(false, control);
    const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(window, WM_KEYDOWN, virtualKey, scan | 1);
    PostMessageW(window, WM_KEYUP, virtualKey, scan | 0xC0000001);
    m_foothold.postHeldKeys(false, false);
}

void Hand::character(HWND window, wchar_t character) const
{
    PostMessageW(window, WM_CHAR, character, 1);
}

void Hand::type(HWND window, const std::wstring& text) const
{
    for (const wchar_t letter : text)
        character(window, letter);
}

void Hand::typeInto(HWND edit, const std::wstring& text) const
{
    clickControl(edit);
    PostMessageW(edit, EM_SETSEL, 0, -1);
    if (text.empty()) {
        character(edit, L'\b');
    } else {
        type(edit, text);
    }
}

} // namespace desk::script
