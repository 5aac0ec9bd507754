#pragma once

#include <functional>

#include "module/tools/CTool.h"

/// Shows the first pop-up of a menu resource at a point of its owner, as the tool's own: the mouse is left to the menu
/// while it is up. `prepare` sets the entries' states. The choice comes back to the tool as a command. The tool may be
/// gone on return: Escape ends it under the menu.
void TrackToolMenu(CTool* tool, UINT menuId, CWnd& owner, CPoint point,
                   const std::function<void(CMenu& popUp)>& prepare);
