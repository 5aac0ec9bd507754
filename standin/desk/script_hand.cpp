#include "standin/desk/script_hand.h"

namespace desk::script {
namespace {

WPARAM keyBits(Held held)
{
    return (held.shift ? MK_SHIFT : 0) | (held.control ? MK_CONTROL : 0) | (held.leftButton ? MK_LBUTTON : 0);
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

void Hand::click(HWND window, POINT client, bool right, bool twice, Held held) const
{
    const UINT down = right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, up = right ? WM_RBUTTONUP : WM_LBUTTONUP;
    const WPARAM pressed = keyBits(held) | (right ? MK_RBUTTON : MK_LBUTTON);
    move(window, client, held);
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, down, pressed, client);
    post(window, up, keyBits(held), client);
    if (twice) {
        post(window, right ? WM_RBUTTONDBLCLK : WM_LBUTTONDBLCLK, pressed, client);
        post(window, up, keyBits(held), client);
    }
    m_foothold.postHeldKeys(false, false);
}

void Hand::drag(HWND window, const std::vector<POINT>& points, Held held) const
{
    press(window, points.front(), held);
    for (std::size_t i = 1; i < points.size(); ++i)
        move(window, points[i], {held.shift, held.control, true});
    release(window, points.back(), held);
}

void Hand::press(HWND window, POINT client, Held held) const
{
    move(window, client, held);
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, WM_LBUTTONDOWN, keyBits(held) | MK_LBUTTON, client);
    m_foothold.postHeldKeys(false, false);
}

void Hand::release(HWND window, POINT client, Held held) const
{
    m_foothold.postHeldKeys(held.shift, held.control);
    post(window, WM_LBUTTONUP, keyBits(held), client);
    m_foothold.postHeldKeys(false, false);
}

void Hand::clickControl(HWND control) const
{
    RECT client{};
    GetClientRect(control, &client);
    click(control, {client.right / 2, client.bottom / 2}, false, false);
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

void Hand::key(HWND window, unsigned virtualKey) const
{
    const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(window, WM_KEYDOWN, virtualKey, scan | 1);
    PostMessageW(window, WM_KEYUP, virtualKey, scan | 0xC0000001);
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
