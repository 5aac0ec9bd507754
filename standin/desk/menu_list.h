#pragma once

#include <windows.h>
#include <optional>
#include <string>
#include <vector>

namespace desk {

/// Commands of a menu that stand for what there is just now: drawings, files.
struct MenuList
{
    /// Where in the list the command stands; nothing if it is no entry of this list.
    std::optional<std::size_t> indexOf(UINT id) const
    {
        return id >= first && id <= last ? std::optional<std::size_t>(id - first) : std::nullopt;
    }

    UINT first = 0; // the numbers of its entries
    UINT last = 0;
};

/// Puts the texts into the pop-up in the place of what the list had there before, as many of them as it has numbers
/// for. Nothing if no entry of the list stands in the pop-up: then the list belongs to another one. Without texts one
/// greyed entry says `none`.
void fillMenuList(HMENU popup, const MenuList& list, const std::vector<std::wstring>& texts, const std::wstring& none);

/// With a figure in front to choose it by, and with what a menu would take for a mark of its own kept as text.
std::wstring menuListText(std::size_t index, const std::wstring& text);

} // namespace desk
