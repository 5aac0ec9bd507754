#include "module/shell/CPathSplit.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/platform.h"

namespace {

// "\\server\share\" is to the directory's text what a drive is to others: moves it over.
void MoveShareToDrive(wchar_t* drive, wchar_t* directory)
{
    constexpr size_t leadLength = 2;
    if (std::wcsncmp(directory, L"\\\\", leadLength) != 0)
        return;
    const wchar_t* afterServer = std::wcschr(directory + leadLength, L'\\');
    const wchar_t* afterShare = afterServer ? std::wcschr(afterServer + 1, L'\\') : nullptr;
    if (!afterShare)
        return;
    const std::wstring share(static_cast<const wchar_t*>(directory), afterShare + 1);
    const std::wstring rest(afterShare + 1);
    lstrcpynW(drive, share.c_str(), CPathSplit::partLength);
    lstrcpynW(directory, rest.c_str(), CPathSplit::partLength);
}

void Join(wchar_t* result, const wchar_t* first, const wchar_t* second)
{
    lstrcpynW(result, (std::wstring(first) + second).c_str(), CPathSplit::partLength);
}

} // namespace

CPathSplit::CPathSplit(const wchar_t* path)
{
    lstrcpynW(m_path, path, partLength);
    _wsplitpath_s(m_path, m_drive, partLength, m_directory, partLength, m_name, partLength, m_extension, partLength);
    MoveShareToDrive(m_drive, m_directory);
    Join(m_nameExt, m_name, m_extension);
    Join(m_folder, m_drive, m_directory);
}
