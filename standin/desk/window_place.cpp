#include "standin/desk/window_place.h"

#include <algorithm>

#include "standin/afx/afx.h"

namespace desk {
namespace {

const wchar_t* const section = L"Window";
// Less than this is no place that a user chose, but a broken setting.
constexpr int least = 200;
// And more than this no screen has.
constexpr int most = 100'000;

int setting(const wchar_t* name)
{
    return std::clamp(static_cast<int>(AfxGetApp()->GetProfileInt(section, name, 0)), -most, most);
}

MONITORINFO monitorOf(const RECT& place)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor;
}

} // namespace

RECT movedInto(const RECT& place, const RECT& workArea)
{
    const LONG width = std::min(place.right - place.left, workArea.right - workArea.left);
    const LONG height = std::min(place.bottom - place.top, workArea.bottom - workArea.top);
    const LONG left = std::clamp(place.left, workArea.left, workArea.right - width);
    const LONG top = std::clamp(place.top, workArea.top, workArea.bottom - height);
    return {left, top, left + width, top + height};
}

bool restoreWindowPlace(HWND window)
{
    const int left = setting(L"Left");
    const int top = setting(L"Top");
    const RECT place{left, top, left + setting(L"Width"), top + setting(L"Height")};
    if (place.right - place.left < least || place.bottom - place.top < least)
        return false;
    const RECT fitted = movedInto(place, monitorOf(place).rcWork);
    MoveWindow(window, fitted.left, fitted.top, fitted.right - fitted.left, fitted.bottom - fitted.top, FALSE);
    if (setting(L"Maximized") != 0)
        ShowWindow(window, SW_MAXIMIZE);
    return true;
}

void saveWindowPlace(HWND window)
{
    WINDOWPLACEMENT now{};
    now.length = sizeof now;
    if (!GetWindowPlacement(window, &now))
        return;
    // The system counts from the corner of the work area, not of the screen.
    RECT place = now.rcNormalPosition;
    const MONITORINFO monitor = monitorOf(place);
    OffsetRect(&place, monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top);
    CWinApp& program = *AfxGetApp();
    program.WriteProfileInt(section, L"Left", place.left);
    program.WriteProfileInt(section, L"Top", place.top);
    program.WriteProfileInt(section, L"Width", place.right - place.left);
    program.WriteProfileInt(section, L"Height", place.bottom - place.top);
    program.WriteProfileInt(section, L"Maximized", now.showCmd == SW_SHOWMAXIMIZED ? 1 : 0);
}

} // namespace desk
