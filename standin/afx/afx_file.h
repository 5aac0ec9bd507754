// CFile: a file of the operating system; CMemFile: the same calls over a block of memory.
#pragma once

#include "standin/afx/afx_object.h"
#include "standin/afx/afx_string.h"

class CFileException;

/// Errors are thrown as CFileException*, except by Open, which returns false and fills the exception it was given.
class HALVORAN_STANDIN_API CFile : public CObject
{
    DECLARE_DYNAMIC(CFile)
public:
    enum OpenFlags
    {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum SeekPosition
    {
        begin = 0,
        current = 1,
        end = 2
    };
    static const HANDLE hFileNull;

    CFile();
    /// Takes the handle and closes it.
    explicit CFile(HANDLE hFile);
    CFile(LPCWSTR lpszFileName, UINT nOpenFlags);
    ~CFile() override;

    virtual BOOL Open(LPCWSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
    virtual ULONGLONG GetPosition() const;
    virtual CString GetFilePath() const { return m_strFileName; }
    virtual CString GetFileName() const;
    virtual void SetFilePath(LPCWSTR lpszNewName) { m_strFileName = lpszNewName; }
    virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
    virtual void SetLength(ULONGLONG dwNewLen);
    virtual ULONGLONG GetLength() const;
    /// Bytes read; fewer than asked only at the end of the file.
    virtual UINT Read(void* lpBuf, UINT nCount);
    virtual void Write(const void* lpBuf, UINT nCount);
    virtual void Flush();
    virtual void Close();
    virtual void Abort();
    ULONGLONG SeekToEnd() { return Seek(0, end); }
    void SeekToBegin() { Seek(0, begin); }
    operator HANDLE() const { return m_hFile; }

    static void Rename(LPCWSTR lpszOldName, LPCWSTR lpszNewName);
    static void Remove(LPCWSTR lpszFileName);

    HANDLE m_hFile;

protected:
    CString m_strFileName;
};

/// The block comes from malloc; Detach gives it to the caller, who frees it with free.
class HALVORAN_STANDIN_API CMemFile : public CFile
{
    DECLARE_DYNAMIC(CMemFile)
public:
    explicit CMemFile(UINT nGrowBytes = 1024);
    /// Works on the caller's block, which stays the caller's; it grows only if nGrowBytes is not 0.
    CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    ~CMemFile() override;

    void Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes = 0);
    BYTE* Detach();

    BOOL Open(LPCWSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr) override;
    ULONGLONG GetPosition() const override;
    ULONGLONG Seek(LONGLONG lOff, UINT nFrom) override;
    void SetLength(ULONGLONG dwNewLen) override;
    ULONGLONG GetLength() const override;
    UINT Read(void* lpBuf, UINT nCount) override;
    void Write(const void* lpBuf, UINT nCount) override;
    void Flush() override;
    void Close() override;
    void Abort() override;

protected:
    virtual BYTE* Alloc(SIZE_T nBytes);
    virtual BYTE* Realloc(BYTE* lpMem, SIZE_T nBytes);
    virtual void Free(BYTE* lpMem);
    virtual void GrowFile(SIZE_T dwNewLen);

    SIZE_T m_nGrowBytes;
    SIZE_T m_nPosition;
    SIZE_T m_nBufferSize;
    SIZE_T m_nFileSize;
    BYTE* m_lpBuffer;
    BOOL m_bAutoDelete;
};
