#include "module/raster/SetAsideFile.h"

#include <vector>

#include "module/base/SayOnCommandLine.h"

namespace {

constexpr DWORD longestPath = 32768;

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
    if (MoveFileW(path, free)) {
        m_strAside = free;
    } else if (const FileRelease release = ReleaseOfError(GetLastError()); release != FileRelease::Freed) {
        return release;
    }
    m_strPath = path;
    return FileRelease::Freed;
}

void CSetAsideFile::Remove()
{
    if (!m_strAside.IsEmpty() && !DeleteFileW(m_strAside))
        SayOnCommandLine(L"The raster's former file could not be removed. It lies in " + m_strAside);
    m_strPath.Empty();
}

void CSetAsideFile::PutBack()
{
    if (m_strPath.IsEmpty())
        return;
    if (m_strAside.IsEmpty()) {
        DeleteFileW(m_strPath);
    } else if (!MoveFileExW(m_strAside, m_strPath, MOVEFILE_REPLACE_EXISTING)) {
        SayOnCommandLine(L"The raster's former file lies in " + m_strAside);
    }
}

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
