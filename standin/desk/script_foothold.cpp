#include "standin/desk/script_foothold.h"

namespace desk::script {
namespace {

constexpr UINT askMessage = WM_APP + 1, passedMessage = WM_APP + 2, heldKeysMessage = WM_APP + 3;
const wchar_t* const className = L"HalvoranDeskScriptFoothold";

void holdKeys(bool shift, bool control)
{
    BYTE state[256];
    GetKeyboardState(state);
    state[VK_SHIFT] = state[VK_LSHIFT] = shift ? 0x80 : 0;
    state[VK_CONTROL] = state[VK_LCONTROL] = control ? 0x80 : 0;
    SetKeyboardState(state);
}

} // namespace

Foothold::Foothold() : m_threadId(GetCurrentThreadId())
{
    WNDCLASSW description{};
    description.lpfnWndProc = procedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = className;
    RegisterClassW(&description);
    m_window = CreateWindowW(className, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, description.hInstance, nullptr);
}

Foothold::~Foothold()
{
    DestroyWindow(m_window);
    CloseHandle(m_passed);
}

LRESULT CALLBACK Foothold::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case askMessage:
        if (!reinterpret_cast<const Foothold*>(wParam)->m_open)
            return FALSE;
        (*reinterpret_cast<const std::function<void()>*>(lParam))();
        return TRUE;
    case passedMessage:
        SetEvent(reinterpret_cast<const Foothold*>(wParam)->m_passed);
        return 0;
    case heldKeysMessage:
        holdKeys(wParam != 0, lParam != 0);
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void Foothold::ask(const std::function<void()>& function) const
{
    if (SendMessageW(m_window, askMessage, reinterpret_cast<WPARAM>(this), reinterpret_cast<LPARAM>(&function)) ==
        FALSE)
        throw DeskGone{};
}

void Foothold::waitForPosted() const
{
    if (!PostMessageW(m_window, passedMessage, reinterpret_cast<WPARAM>(this), 0))
        throw DeskGone{};
    // The run's time limit ends a wait that has no end. One that is given up is the script's last.
    while (WaitForSingleObject(m_passed, 50) == WAIT_TIMEOUT) {
        if (!m_open)
            throw DeskGone{};
    }
}

void Foothold::postHeldKeys(bool shift, bool control) const
{
    PostMessageW(m_window, heldKeysMessage, shift, control);
}

} // namespace desk::script
