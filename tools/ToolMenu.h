#pragma once

#include "tools/CTool.h"

/// Shows the first pop-up of a menu resource at a point of the view, as the tool's own: the mouse is left to the menu
/// while it is up. `prepare(CMenu&)` sets the entries' states. The choice comes back to the tool as a command.
template <typename Prepare> void TrackToolMenu(CTool* tool, UINT menuId, CPoint point, Prepare&& prepare);

/// What TrackToolMenu does once the entries are set. The tool may be gone on return: Escape ends it under the menu.
void TrackPopUp(CTool* tool, CMenu& popUp, CPoint point);

template <typename Prepare> void TrackToolMenu(CTool* tool, UINT menuId, CPoint point, Prepare&& prepare)
{
    CMenu menu;
    if (!menu.LoadMenu(menuId))
        return;
    CMenu* popUp = menu.GetSubMenu(0);
    prepare(*popUp);
    TrackPopUp(tool, *popUp, point);
}
