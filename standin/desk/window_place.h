#pragma once

#include <windows.h>

namespace desk {

/// Where a window stands while it is neither maximized nor minimized, in screen pixels.
struct WindowPlace
{
    RECT rect{};
    bool maximized = false;
};

/// The place, made as small as the work area and moved into it, as far as it must be: of a window that was on a screen
/// that is gone or smaller now, all can be reached.
RECT movedInto(const RECT& place, const RECT& workArea);

/// Puts the window where it was at the end of the last run that saved it; false if no such place is known.
bool restoreWindowPlace(HWND window);
void saveWindowPlace(HWND window);

} // namespace desk
