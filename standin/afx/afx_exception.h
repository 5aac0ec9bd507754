// Exceptions, thrown as pointers; whoever catches one and does not pass it on calls Delete.
#pragma once

#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

class HALVORAN_STANDIN_API CException : public CObject
{
    DECLARE_DYNAMIC(CException)
public:
    explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}

    void Delete();
    /// Writes at most nMaxError characters with the terminator; false when there is no text for the user.
    virtual BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;
    virtual int ReportError(UINT nType = MB_OK, UINT nMessageID = 0);

    BOOL m_bAutoDelete;
};

class HALVORAN_STANDIN_API CMemoryException : public CException
{
    DECLARE_DYNAMIC(CMemoryException)
public:
    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

class HALVORAN_STANDIN_API CResourceException : public CException
{
    DECLARE_DYNAMIC(CResourceException)
public:
    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

class HALVORAN_STANDIN_API CNotSupportedException : public CException
{
    DECLARE_DYNAMIC(CNotSupportedException)
public:
    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

class HALVORAN_STANDIN_API CInvalidArgException : public CException
{
    DECLARE_DYNAMIC(CInvalidArgException)
public:
    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

/// The user has been told already; it ends an operation in silence.
class HALVORAN_STANDIN_API CUserException : public CException
{
    DECLARE_DYNAMIC(CUserException)
};

class HALVORAN_STANDIN_API CFileException : public CException
{
    DECLARE_DYNAMIC(CFileException)
public:
    enum
    {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG lOsError = -1, LPCWSTR lpszArchiveName = nullptr);

    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
    static int OsErrorToException(LONG lOsError);
    [[noreturn]] static void ThrowOsError(LONG lOsError, LPCWSTR lpszFileName = nullptr);

    int m_cause;
    LONG m_lOsError;
    CString m_strFileName;
};

class HALVORAN_STANDIN_API CArchiveException : public CException
{
    DECLARE_DYNAMIC(CArchiveException)
public:
    enum
    {
        none,
        genericException,
        readOnly,
        endOfFile,
        writeOnly,
        badIndex,
        badClass,
        badSchema
    };

    explicit CArchiveException(int cause = none, LPCWSTR lpszArchiveName = nullptr);

    BOOL GetErrorMessage(LPWSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

    int m_cause;
    CString m_strFileName;
};

[[noreturn]] HALVORAN_STANDIN_API void AfxThrowMemoryException();
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowNotSupportedException();
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowInvalidArgException();
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowResourceException();
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowUserException();
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowFileException(int cause, LONG lOsError = -1,
                                                             LPCWSTR lpszFileName = nullptr);
[[noreturn]] HALVORAN_STANDIN_API void AfxThrowArchiveException(int cause, LPCWSTR lpszArchiveName = nullptr);
