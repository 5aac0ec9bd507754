#include "standin/desk/held_pan.h"

#include <utility>
#include <windowsx.h>

namespace desk {

HeldPan* HeldPan::s_held = nullptr;

HeldPan::HeldPan(HWND view, std::function<void(POINT client)> moved)
    : m_view(view), m_moved(std::move(moved)),
      m_hook(SetWindowsHookExW(WH_GETMESSAGE, procedure, nullptr, GetCurrentThreadId())),
      m_captured(GetCapture() != view)
{
    s_held = this;
    if (m_captured)
        SetCapture(view);
}

HeldPan::~HeldPan()
{
    s_held = nullptr;
    UnhookWindowsHookEx(m_hook);
    if (m_captured && GetCapture() == m_view)
        ReleaseCapture();
}

LRESULT CALLBACK HeldPan::procedure(int code, WPARAM wParam, LPARAM lParam)
{
    const MSG& message = *reinterpret_cast<const MSG*>(lParam);
    if (code >= 0 && wParam == PM_REMOVE && s_held != nullptr && message.hwnd == s_held->m_view &&
        message.message == WM_MOUSEMOVE)
        s_held->m_moved({GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)});
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace desk
