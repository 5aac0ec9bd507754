#include <algorithm>
#include <cwchar>

#include "standin/afx/afx_app.h"
#include "standin/afx/afx_exception.h"

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CException)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

namespace {

BOOL copyMessage(LPCWSTR message, LPWSTR target, UINT size, UINT* helpContext)
{
    if (helpContext)
        *helpContext = 0;
    if (size == 0)
        return FALSE;
    const std::size_t length = std::min<std::size_t>(std::wcslen(message), size - 1);
    std::copy_n(message, length, target);
    target[length] = L'\0';
    return TRUE;
}

CString nameOr(const CString& name, LPCWSTR substitute)
{
    return name.IsEmpty() ? CString(substitute) : name;
}

CString fileMessage(int cause, const CString& name)
{
    switch (cause) {
    case CFileException::fileNotFound:
        return name + L" was not found.";
    case CFileException::badPath:
        return name + L" contains an invalid path.";
    case CFileException::tooManyOpenFiles:
        return name + L" could not be opened because there are too many open files.";
    case CFileException::accessDenied:
        return L"Access to " + name + L" was denied.";
    case CFileException::invalidFile:
        return L"An invalid file handle was associated with " + name + L".";
    case CFileException::removeCurrentDir:
        return name + L" could not be removed because it is the current directory.";
    case CFileException::directoryFull:
        return name + L" could not be created because the directory is full.";
    case CFileException::badSeek:
        return L"Seek failed on " + name + L".";
    case CFileException::hardIO:
        return L"A hardware I/O error was reported while accessing " + name + L".";
    case CFileException::sharingViolation:
        return L"A sharing violation occurred while accessing " + name + L".";
    case CFileException::lockViolation:
        return L"A locking violation occurred while accessing " + name + L".";
    case CFileException::diskFull:
        return L"Disk full while accessing " + name + L".";
    case CFileException::endOfFile:
        return L"An attempt was made to access " + name + L" past its end.";
    case CFileException::none:
        return L"No error occurred.";
    default:
        return L"An unknown error occurred while accessing " + name + L".";
    }
}

CString archiveMessage(int cause, const CString& name)
{
    switch (cause) {
    case CArchiveException::readOnly:
        return L"An attempt was made to write to the reading " + name + L".";
    case CArchiveException::endOfFile:
        return L"An attempt was made to access " + name + L" past its end.";
    case CArchiveException::writeOnly:
        return L"An attempt was made to read from the writing " + name + L".";
    case CArchiveException::badIndex:
        return name + L" has a bad format.";
    case CArchiveException::badClass:
        return name + L" contained an unexpected object.";
    case CArchiveException::badSchema:
        return name + L" contains an incorrect schema.";
    case CArchiveException::none:
        return L"No error occurred.";
    default:
        return L"An unknown error occurred while accessing " + name + L".";
    }
}

} // namespace

void CException::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

BOOL CException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    copyMessage(L"", lpszError, nMaxError, pnHelpContext);
    return FALSE;
}

int CException::ReportError(UINT nType, UINT nMessageID)
{
    wchar_t message[512];
    if (GetErrorMessage(message, 512))
        return AfxMessageBox(message, nType);
    return nMessageID == 0 ? AfxMessageBox(L"No error message is available.", nType) : AfxMessageBox(nMessageID, nType);
}

BOOL CMemoryException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(L"Out of memory.", lpszError, nMaxError, pnHelpContext);
}

BOOL CResourceException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(L"A required resource was unavailable.", lpszError, nMaxError, pnHelpContext);
}

BOOL CNotSupportedException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(L"An unsupported operation was attempted.", lpszError, nMaxError, pnHelpContext);
}

BOOL CInvalidArgException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(L"An invalid argument was encountered.", lpszError, nMaxError, pnHelpContext);
}

CFileException::CFileException(int cause, LONG lOsError, LPCWSTR lpszArchiveName)
    : m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszArchiveName)
{}

BOOL CFileException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(fileMessage(m_cause, nameOr(m_strFileName, L"an unnamed file")), lpszError, nMaxError,
                       pnHelpContext);
}

int CFileException::OsErrorToException(LONG lOsError)
{
    switch (static_cast<DWORD>(lOsError)) {
    case NO_ERROR:
        return none;
    case ERROR_FILE_NOT_FOUND:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
        return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
    case ERROR_BAD_FORMAT:
        return invalidFile;
    case ERROR_CURRENT_DIRECTORY:
        return removeCurrentDir;
    case ERROR_CANNOT_MAKE:
        return directoryFull;
    case ERROR_SEEK:
    case ERROR_NEGATIVE_SEEK:
    case ERROR_SEEK_ON_DEVICE:
        return badSeek;
    case ERROR_SHARING_VIOLATION:
        return sharingViolation;
    case ERROR_LOCK_VIOLATION:
        return lockViolation;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return diskFull;
    case ERROR_HANDLE_EOF:
        return endOfFile;
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
        return hardIO;
    default:
        return genericException;
    }
}

void CFileException::ThrowOsError(LONG lOsError, LPCWSTR lpszFileName)
{
    AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

CArchiveException::CArchiveException(int cause, LPCWSTR lpszArchiveName)
    : m_cause(cause), m_strFileName(lpszArchiveName)
{}

BOOL CArchiveException::GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const
{
    return copyMessage(archiveMessage(m_cause, nameOr(m_strFileName, L"archive")), lpszError, nMaxError, pnHelpContext);
}

void AfxThrowMemoryException()
{
    throw new CMemoryException;
}

void AfxThrowNotSupportedException()
{
    throw new CNotSupportedException;
}

void AfxThrowInvalidArgException()
{
    throw new CInvalidArgException;
}

void AfxThrowResourceException()
{
    throw new CResourceException;
}

void AfxThrowUserException()
{
    throw new CUserException;
}

void AfxThrowFileException(int cause, LONG lOsError, LPCWSTR lpszFileName)
{
    throw new CFileException(cause, lOsError, lpszFileName);
}

void AfxThrowArchiveException(int cause, LPCWSTR lpszArchiveName)
{
    throw new CArchiveException(cause, lpszArchiveName);
}
