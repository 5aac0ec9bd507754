// Window classes, and the attachment of objects to windows that are being created.
#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_window.h"
#include "standin/afx/state.h"

namespace {

LRESULT CALLBACK createHook(int code, WPARAM wParam, LPARAM lParam)
{
    afx::ThreadState& state = afx::threadState();
    const HHOOK hook = state.createHook;
    if (code == HCBT_CREATEWND && state.m_pWndInit) {
        const HWND window = reinterpret_cast<HWND>(wParam);
        // An input method's window may come first; the object waits for its own.
        if (!(::GetClassLongPtrW(window, GCL_STYLE) & CS_IME)) {
            CWnd* object = state.m_pWndInit;
            state.m_pWndInit = nullptr;
            object->SubclassWindow(window);
        }
    }
    return ::CallNextHookEx(hook, code, wParam, lParam);
}

} // namespace

void AfxHookWindowCreate(CWnd* pWnd)
{
    afx::ThreadState& state = afx::threadState();
    if (!state.createHook)
        state.createHook = ::SetWindowsHookExW(WH_CBT, createHook, nullptr, ::GetCurrentThreadId());
    state.m_pWndInit = pWnd;
}

BOOL AfxUnhookWindowCreate()
{
    afx::ThreadState& state = afx::threadState();
    if (state.createHook)
        ::UnhookWindowsHookEx(state.createHook);
    state.createHook = nullptr;
    const BOOL came = state.m_pWndInit == nullptr;
    state.m_pWndInit = nullptr;
    return came;
}

BOOL AfxRegisterClass(WNDCLASSW* lpWndClass)
{
    WNDCLASSW present{};
    return ::GetClassInfoW(lpWndClass->hInstance, lpWndClass->lpszClassName, &present) || ::RegisterClassW(lpWndClass);
}

LPCWSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    CString name;
    name.Format(L"Afx:%p:%x:%p:%p:%p", static_cast<const void*>(AfxGetInstanceHandle()), nClassStyle,
                static_cast<const void*>(hCursor), static_cast<const void*>(hbrBackground),
                static_cast<const void*>(hIcon));
    WNDCLASSW windowClass{};
    windowClass.style = nClassStyle;
    windowClass.lpfnWndProc = ::DefWindowProcW;
    windowClass.hInstance = AfxGetInstanceHandle();
    windowClass.hIcon = hIcon;
    windowClass.hCursor = hCursor;
    windowClass.hbrBackground = hbrBackground;
    std::wstring& kept = afx::threadState().windowClassName;
    kept = name.GetString();
    windowClass.lpszClassName = kept.c_str();
    if (!AfxRegisterClass(&windowClass))
        AfxThrowResourceException();
    return kept.c_str();
}
