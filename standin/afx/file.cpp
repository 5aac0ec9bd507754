#include <algorithm>

#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_file.h"

IMPLEMENT_DYNAMIC(CFile, CObject)

const HANDLE CFile::hFileNull = INVALID_HANDLE_VALUE;

CFile::CFile() : m_hFile(hFileNull) {}

CFile::CFile(HANDLE hFile) : m_hFile(hFile) {}

CFile::CFile(LPCWSTR lpszFileName, UINT nOpenFlags) : m_hFile(hFileNull)
{
    CFileException error;
    if (!CFile::Open(lpszFileName, nOpenFlags, &error))
        AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile()
{
    CFile::Abort();
}

namespace {

DWORD shareMode(UINT flags)
{
    switch (flags & 0x70) {
    case CFile::shareDenyWrite:
        return FILE_SHARE_READ;
    case CFile::shareDenyRead:
        return FILE_SHARE_WRITE;
    case CFile::shareDenyNone:
        return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default:
        return 0;
    }
}

DWORD accessMode(UINT flags)
{
    switch (flags & 3) {
    case CFile::modeWrite:
        return GENERIC_WRITE;
    case CFile::modeReadWrite:
        return GENERIC_READ | GENERIC_WRITE;
    default:
        return GENERIC_READ;
    }
}

DWORD disposition(UINT flags)
{
    if (!(flags & CFile::modeCreate))
        return OPEN_EXISTING;
    return flags & CFile::modeNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;
}

} // namespace

BOOL CFile::Open(LPCWSTR lpszFileName, UINT nOpenFlags, CFileException* pError)
{
    m_strFileName = lpszFileName;
    SECURITY_ATTRIBUTES security{sizeof security, nullptr, (nOpenFlags & modeNoInherit) == 0};
    m_hFile = CreateFileW(lpszFileName, accessMode(nOpenFlags), shareMode(nOpenFlags), &security,
                          disposition(nOpenFlags), FILE_ATTRIBUTE_NORMAL, nullptr);
    if (m_hFile != hFileNull)
        return TRUE;
    if (pError) {
        pError->m_lOsError = static_cast<LONG>(GetLastError());
        pError->m_cause = CFileException::OsErrorToException(pError->m_lOsError);
        pError->m_strFileName = lpszFileName;
    }
    return FALSE;
}

ULONGLONG CFile::GetPosition() const
{
    LARGE_INTEGER position{};
    if (!SetFilePointerEx(m_hFile, LARGE_INTEGER{}, &position, FILE_CURRENT))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

CString CFile::GetFileName() const
{
    const int slash = m_strFileName.FindOneOf(L"/\\") < 0
                          ? -1
                          : std::max(m_strFileName.ReverseFind(L'\\'), m_strFileName.ReverseFind(L'/'));
    return m_strFileName.Mid(slash + 1);
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom)
{
    LARGE_INTEGER offset{};
    offset.QuadPart = lOff;
    LARGE_INTEGER position{};
    if (!SetFilePointerEx(m_hFile, offset, &position, nFrom))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(position.QuadPart);
}

void CFile::SetLength(ULONGLONG dwNewLen)
{
    Seek(static_cast<LONGLONG>(dwNewLen), begin);
    if (!SetEndOfFile(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

ULONGLONG CFile::GetLength() const
{
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(m_hFile, &size))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return static_cast<ULONGLONG>(size.QuadPart);
}

UINT CFile::Read(void* lpBuf, UINT nCount)
{
    DWORD read = 0;
    if (nCount > 0 && !ReadFile(m_hFile, lpBuf, nCount, &read, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    return read;
}

void CFile::Write(const void* lpBuf, UINT nCount)
{
    DWORD written = 0;
    if (nCount > 0 && !WriteFile(m_hFile, lpBuf, nCount, &written, nullptr))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
    if (written != nCount)
        AfxThrowFileException(CFileException::diskFull, -1, m_strFileName);
}

void CFile::Flush()
{
    if (m_hFile != hFileNull && !FlushFileBuffers(m_hFile))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), m_strFileName);
}

void CFile::Close()
{
    const BOOL closed = m_hFile == hFileNull || CloseHandle(m_hFile);
    const DWORD error = GetLastError();
    m_hFile = hFileNull;
    const CString name = m_strFileName;
    m_strFileName.Empty();
    if (!closed)
        CFileException::ThrowOsError(static_cast<LONG>(error), name);
}

void CFile::Abort()
{
    if (m_hFile != hFileNull)
        CloseHandle(m_hFile);
    m_hFile = hFileNull;
    m_strFileName.Empty();
}

void CFile::Rename(LPCWSTR lpszOldName, LPCWSTR lpszNewName)
{
    if (!MoveFileW(lpszOldName, lpszNewName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), lpszOldName);
}

void CFile::Remove(LPCWSTR lpszFileName)
{
    if (!DeleteFileW(lpszFileName))
        CFileException::ThrowOsError(static_cast<LONG>(GetLastError()), lpszFileName);
}
