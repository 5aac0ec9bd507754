#include "module/raster/SetAsideFile.h"

#include <vector>

namespace {

constexpr DWORD longestPath = 32768;

// A free name beside the file, short, so that it does not become too long where the file's own is just short enough.
CString FreeNameBeside(const CString& path)
{
    const CString folder = path.Left(path.ReverseFind(L'\\') + 1);
    CString free;
    for (DWORD number = GetTickCount();; ++number) {
        free.Format(L"%sHV%08lx.old", static_cast<LPCWSTR>(folder), number);
        if (GetFileAttributesW(free) == INVALID_FILE_ATTRIBUTES)
            return free;
    }
}

FileRelease ReleaseOfError(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return FileRelease::Freed;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
        return FileRelease::Held;
    default:
        return FileRelease::WriteProtected;
    }
}

CString FullPath(const CString& path)
{
    std::vector<wchar_t> buffer(longestPath);
    const DWORD length = GetFullPathNameW(path, longestPath, buffer.data(), nullptr);
    return length > 0 && length < longestPath ? CString(buffer.data()) : path;
}

// The one name that the system has for a file that is there, links and short names resolved; else the full path.
CString FinalPath(const CString& path)
{
    const HANDLE file = CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FullPath(path);
    std::vector<wchar_t> buffer(longestPath);
    const DWORD length = GetFinalPathNameByHandleW(file, buffer.data(), longestPath, FILE_NAME_NORMALIZED);
    CloseHandle(file);
    return length > 0 && length < longestPath ? CString(buffer.data()) : FullPath(path);
}

} // namespace

CSetAsideFile::~CSetAsideFile()
{
    PutBack();
}

FileRelease CSetAsideFile::SetAside(const CString& path)
{
    if (IsMarkedReadOnly(path))
        return FileRelease::WriteProtected;
    const CString free = FreeNameBeside(path);
    if (!MoveFileW(path, free))
        return ReleaseOfError(GetLastError());
    m_strPath = path;
    m_strAside = free;
    return FileRelease::Freed;
}

void CSetAsideFile::Remove()
{
    if (!m_strAside.IsEmpty())
        DeleteFileW(m_strAside);
    m_strAside.Empty();
}

bool CSetAsideFile::PutBack()
{
    if (m_strAside.IsEmpty())
        return true;
    if (!MoveFileExW(m_strAside, m_strPath, MOVEFILE_REPLACE_EXISTING))
        return false;
    m_strAside.Empty();
    return true;
}

bool IsMarkedReadOnly(const CString& path)
{
    const DWORD attributes = GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

bool IsSameFile(const CString& one, const CString& other)
{
    if (one.IsEmpty() || other.IsEmpty())
        return false;
    return FinalPath(one).CompareNoCase(FinalPath(other)) == 0;
}
