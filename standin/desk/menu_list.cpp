#include "standin/desk/menu_list.h"

#include <algorithm>

namespace desk {

std::wstring menuListText(std::size_t index, const std::wstring& text)
{
    std::wstring shown = (index < 9 ? L"&" : L"") + std::to_wstring(index + 1) + L" ";
    for (const wchar_t character : text) {
        shown += character;
        if (character == L'&')
            shown += character;
    }
    return shown;
}

void fillMenuList(HMENU popup, const MenuList& list, const std::vector<std::wstring>& texts, const std::wstring& none)
{
    int place = -1;
    for (int i = GetMenuItemCount(popup) - 1; i >= 0; --i) {
        const UINT id = GetMenuItemID(popup, i);
        if (!list.indexOf(id))
            continue;
        DeleteMenu(popup, static_cast<UINT>(i), MF_BYPOSITION);
        place = i;
    }
    if (place < 0)
        return;
    const auto at = static_cast<UINT>(place);
    const std::size_t count = std::min<std::size_t>(texts.size(), list.last - list.first + 1);
    for (std::size_t i = 0; i < count; ++i) {
        InsertMenuW(popup, at + static_cast<UINT>(i), MF_BYPOSITION | MF_STRING, list.first + static_cast<UINT>(i),
                    menuListText(i, texts[i]).c_str());
    }
    if (count == 0)
        InsertMenuW(popup, at, MF_BYPOSITION | MF_STRING | MF_GRAYED, list.first, none.c_str());
}

} // namespace desk
