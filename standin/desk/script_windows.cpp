#include "standin/desk/script_windows.h"

#include <algorithm>
#include <commctrl.h>

namespace desk::script {
namespace {

constexpr int messageBoxTextId = 0xFFFF;
// The file name's control in the system's file dialogs: the combined box, or the plain one.
constexpr int fileNameIds[] = {1148, 1152};
constexpr UINT getMenuHandle = 0x01E1; // MN_GETHMENU
constexpr int longestRow = 600;

struct ControlSearch
{
    int id;
    HWND found = nullptr;
};

BOOL CALLBACK noteControl(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<ControlSearch*>(parameter);
    if (GetDlgCtrlID(window) != search.id || !IsWindowVisible(window))
        return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK noteToolbar(HWND window, LPARAM parameter)
{
    if (classOf(window) == TOOLBARCLASSNAMEW)
        reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    return TRUE;
}

std::vector<HWND> toolbars(DWORD threadId)
{
    std::vector<HWND> found;
    EnumThreadWindows(
        threadId,
        [](HWND window, LPARAM parameter) -> BOOL {
            EnumChildWindows(window, noteToolbar, parameter);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

std::vector<std::wstring> treeRows(HWND tree)
{
    std::vector<std::wstring> rows;
    for (LRESULT item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0); item != 0;
         item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
        wchar_t text[longestRow]{};
        TVITEMW row{};
        row.mask = TVIF_TEXT | TVIF_HANDLE;
        row.hItem = reinterpret_cast<HTREEITEM>(item);
        row.pszText = text;
        row.cchTextMax = longestRow;
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&row));
        rows.emplace_back(row.pszText);
    }
    return rows;
}

std::vector<std::wstring> listRows(HWND list)
{
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const int columns = std::max(1, static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)));
    std::vector<std::wstring> rows(static_cast<std::size_t>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < columns; ++column) {
            wchar_t text[longestRow]{};
            LVITEMW field{};
            field.iSubItem = column;
            field.pszText = text;
            field.cchTextMax = longestRow;
            SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&field));
            rows[row] += (column > 0 ? L" " : L"") + std::wstring(field.pszText);
        }
    }
    return rows;
}

} // namespace

std::wstring windowText(HWND window)
{
    const LRESULT length = SendMessageW(window, WM_GETTEXTLENGTH, 0, 0);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::wstring classOf(HWND window)
{
    wchar_t name[64]{};
    GetClassNameW(window, name, 64);
    return name;
}

std::vector<HWND> topWindows(DWORD threadId)
{
    std::vector<HWND> found;
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        if (GetWindowThreadProcessId(window, nullptr) == threadId && IsWindowVisible(window))
            found.push_back(window);
    }
    return found;
}

HWND openDialog(DWORD threadId)
{
    for (const HWND window : topWindows(threadId)) {
        if (classOf(window) == L"#32770" && IsWindowEnabled(window))
            return window;
    }
    return nullptr;
}

HWND openSplash(DWORD threadId)
{
    for (const HWND window : topWindows(threadId)) {
        const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
        const bool bare = (style & WS_POPUP) != 0 && (style & WS_CAPTION) != WS_CAPTION;
        // Menus, tips and floating bars belong to the desk's window or have the system's own classes.
        if (bare && GetWindow(window, GW_OWNER) == nullptr && classOf(window).starts_with(L"Afx"))
            return window;
    }
    return nullptr;
}

HWND findControl(HWND parent, int id)
{
    ControlSearch search{id};
    EnumChildWindows(parent, noteControl, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

bool isMessageBox(HWND dialog)
{
    const HWND text = GetDlgItem(dialog, messageBoxTextId);
    return text != nullptr && classOf(text) == L"Static" &&
           (GetDlgItem(dialog, IDOK) != nullptr || GetDlgItem(dialog, IDYES) != nullptr ||
            GetDlgItem(dialog, IDCANCEL) != nullptr) &&
           FindWindowExW(dialog, nullptr, L"Edit", nullptr) == nullptr;
}

std::wstring messageBoxText(HWND box)
{
    return windowText(GetDlgItem(box, messageBoxTextId));
}

HWND editWithin(HWND control)
{
    const std::wstring kind = classOf(control);
    if (kind == WC_COMBOBOXEXW)
        return reinterpret_cast<HWND>(SendMessageW(control, CBEM_GETEDITCONTROL, 0, 0));
    COMBOBOXINFO parts{};
    parts.cbSize = sizeof(parts);
    if (kind == L"ComboBox" && GetComboBoxInfo(control, &parts) && parts.hwndItem != nullptr)
        return parts.hwndItem;
    return control;
}

std::vector<std::wstring> rowTexts(HWND control)
{
    const std::wstring kind = classOf(control);
    return kind == WC_TREEVIEWW   ? treeRows(control)
           : kind == WC_LISTVIEWW ? listRows(control)
                                  : std::vector<std::wstring>{};
}

HWND fileNameBox(HWND dialog)
{
    for (const int id : fileNameIds) {
        if (const HWND box = findControl(dialog, id))
            return editWithin(box);
    }
    return nullptr;
}

ToolbarButton findToolbarButton(DWORD threadId, int id)
{
    for (const HWND toolbar : toolbars(threadId)) {
        const LRESULT index = SendMessageW(toolbar, TB_COMMANDTOINDEX, static_cast<WPARAM>(id), 0);
        if (index < 0)
            continue;
        ToolbarButton found;
        found.toolbar = toolbar;
        SendMessageW(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&found.place));
        TBBUTTON button{};
        SendMessageW(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
        found.visible = IsWindowVisible(toolbar) != FALSE;
        found.enabled = (button.fsState & TBSTATE_ENABLED) != 0;
        found.checked = (button.fsState & TBSTATE_CHECKED) != 0;
        found.hasArrow = (button.fsStyle & BTNS_DROPDOWN) != 0;
        return found;
    }
    return {};
}

HWND visibleToolbar(DWORD threadId)
{
    for (const HWND toolbar : toolbars(threadId)) {
        if (!IsWindowVisible(toolbar))
            continue;
        const HWND frame = GetAncestor(toolbar, GA_ROOT);
        return GetWindow(frame, GW_OWNER) != nullptr ? frame : toolbar;
    }
    return nullptr;
}

std::vector<HWND> menuWindows(DWORD threadId)
{
    std::vector<HWND> windows = topWindows(threadId);
    std::erase_if(windows, [](HWND window) { return classOf(window) != L"#32768"; });
    return windows;
}

HMENU openMenu(DWORD threadId)
{
    const std::vector<HWND> windows = menuWindows(threadId);
    return windows.empty() ? nullptr : reinterpret_cast<HMENU>(SendMessageW(windows.front(), getMenuHandle, 0, 0));
}

MenuItem findMenuItem(HMENU menu, int id)
{
    MenuItem item;
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
        if (GetMenuItemID(menu, position) != static_cast<UINT>(id))
            continue;
        item.found = true;
        const UINT state = GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION);
        item.enabled = (state & (MF_GRAYED | MF_DISABLED)) == 0;
        item.checked = (state & MF_CHECKED) != 0;
        GetMenuItemRect(nullptr, menu, static_cast<UINT>(position), &item.place);
        break;
    }
    return item;
}

HWND menuOwner(DWORD threadId)
{
    const GUITHREADINFO state = inputState(threadId);
    return state.hwndMenuOwner != nullptr ? state.hwndMenuOwner : state.hwndCapture;
}

GUITHREADINFO inputState(DWORD threadId)
{
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    GetGUIThreadInfo(threadId, &state);
    return state;
}

} // namespace desk::script
