#include "standin/desk/file_dialogs.h"

#include <commdlg.h>
#include <vector>

namespace desk {
namespace {

constexpr DWORD longestPath = 32768;

OPENFILENAMEW describe(HWND owner, const wchar_t* title, const wchar_t* filter, std::vector<wchar_t>& buffer)
{
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = owner;
    dialog.lpstrTitle = title;
    dialog.lpstrFilter = filter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = buffer.data();
    dialog.nMaxFile = static_cast<DWORD>(buffer.size());
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
    return dialog;
}

} // namespace

std::optional<std::filesystem::path> askFileToOpen(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const std::filesystem::path& folder)
{
    std::vector<wchar_t> buffer(longestPath, L'\0');
    OPENFILENAMEW dialog = describe(owner, title, filter, buffer);
    const std::wstring initial = folder.wstring();
    if (!initial.empty())
        dialog.lpstrInitialDir = initial.c_str();
    dialog.Flags |= OFN_FILEMUSTEXIST;
    if (!GetOpenFileNameW(&dialog))
        return std::nullopt;
    return std::filesystem::path(buffer.data());
}

std::optional<std::filesystem::path> askFileToSave(HWND owner, const wchar_t* title, const wchar_t* filter,
                                                   const std::filesystem::path& preset, const wchar_t* extension)
{
    std::vector<wchar_t> buffer(longestPath, L'\0');
    const std::wstring name = preset.wstring();
    name.copy(buffer.data(), longestPath - 1);
    OPENFILENAMEW dialog = describe(owner, title, filter, buffer);
    dialog.Flags |= OFN_OVERWRITEPROMPT;
    dialog.lpstrDefExt = extension;
    if (!GetSaveFileNameW(&dialog))
        return std::nullopt;
    return std::filesystem::path(buffer.data());
}

} // namespace desk
