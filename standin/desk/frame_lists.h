// The lists in the frame's menus.
#pragma once

#include "standin/desk/desk_resources.h"
#include "standin/desk/menu_list.h"

namespace desk {
inline constexpr MenuList drawingList{ID_DESK_DRAWING_FIRST, ID_DESK_DRAWING_LAST};
inline constexpr MenuList recentList{ID_DESK_RECENT_FIRST, ID_DESK_RECENT_LAST};
} // namespace desk
