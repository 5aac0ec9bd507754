// Controls of a dialog that is up, by their numbers.
#pragma once

#include <windows.h>
#include <string>

namespace test {

inline std::wstring text(HWND dialog, int id)
{
    wchar_t shown[600] = {};
    GetDlgItemTextW(dialog, id, shown, 600);
    return shown;
}

inline void notify(HWND dialog, int id, int code)
{
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// Types into a field and leaves it for another one.
inline void enter(HWND dialog, int id, const std::wstring& typed)
{
    const HWND field = GetDlgItem(dialog, id);
    SetFocus(field);
    SetWindowTextW(field, typed.c_str());
    SetFocus(GetNextDlgTabItem(dialog, field, TRUE));
}

inline void choose(HWND dialog, int id, int row)
{
    SendDlgItemMessageW(dialog, id, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    notify(dialog, id, CBN_SELCHANGE);
}

inline int chosen(HWND dialog, int id)
{
    return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

inline bool enabled(HWND dialog, int id)
{
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

} // namespace test
