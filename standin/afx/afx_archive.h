// CArchive: typed little-endian values over a CFile, buffered.
#pragma once

#include <memory>

#include "standin/afx/afx_file.h"
#include "standin/afx/afx_string.h"

/// An archive either stores or loads. A value that the file does not hold whole is a CArchiveException* with endOfFile.
class HALVORAN_STANDIN_API CArchive
{
public:
    enum Mode
    {
        store = 0,
        load = 1,
        bNoFlushOnDelete = 2
    };

    /// The file stays the caller's. With lpBuf null the archive has a buffer of its own.
    CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
    /// Closes the archive; what cannot be written then is thrown, unless another exception is on its way.
    ~CArchive() noexcept(false);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    BOOL IsLoading() const { return (m_nMode & load) != 0; }
    BOOL IsStoring() const { return (m_nMode & load) == 0; }
    CFile* GetFile() const { return m_pFile; }

    /// Bytes read; fewer than asked only at the end of the file.
    UINT Read(void* lpBuf, UINT nMax);
    void EnsureRead(void* lpBuf, UINT nCount);
    void Write(const void* lpBuf, UINT nMax);
    void Flush();
    void Close();
    void Abort();

    /// The bare characters, without a length.
    void WriteString(LPCWSTR lpsz);
    /// One line without its end; false at the end of the file.
    BOOL ReadString(CString& rString);

    CArchive& operator<<(BYTE value) { return put(value); }
    CArchive& operator<<(WORD value) { return put(value); }
    CArchive& operator<<(LONG value) { return put(value); }
    CArchive& operator<<(DWORD value) { return put(value); }
    CArchive& operator<<(float value) { return put(value); }
    CArchive& operator<<(double value) { return put(value); }
    CArchive& operator<<(LONGLONG value) { return put(value); }
    CArchive& operator<<(ULONGLONG value) { return put(value); }
    CArchive& operator<<(int value) { return put(value); }
    CArchive& operator<<(short value) { return put(value); }
    CArchive& operator<<(char value) { return put(value); }
    CArchive& operator<<(wchar_t value) { return put(value); }
    CArchive& operator<<(unsigned value) { return put(value); }
    CArchive& operator<<(bool value) { return put(static_cast<BYTE>(value ? 1 : 0)); }

    CArchive& operator>>(BYTE& value) { return get(value); }
    CArchive& operator>>(WORD& value) { return get(value); }
    CArchive& operator>>(LONG& value) { return get(value); }
    CArchive& operator>>(DWORD& value) { return get(value); }
    CArchive& operator>>(float& value) { return get(value); }
    CArchive& operator>>(double& value) { return get(value); }
    CArchive& operator>>(LONGLONG& value) { return get(value); }
    CArchive& operator>>(ULONGLONG& value) { return get(value); }
    CArchive& operator>>(int& value) { return get(value); }
    CArchive& operator>>(short& value) { return get(value); }
    CArchive& operator>>(char& value) { return get(value); }
    CArchive& operator>>(wchar_t& value) { return get(value); }
    CArchive& operator>>(unsigned& value) { return get(value); }
    CArchive& operator>>(bool& value)
    {
        BYTE stored = 0;
        get(stored);
        value = stored != 0;
        return *this;
    }

private:
    template <typename Value> CArchive& put(Value value)
    {
        Write(&value, sizeof value);
        return *this;
    }
    template <typename Value> CArchive& get(Value& value)
    {
        EnsureRead(&value, sizeof value);
        return *this;
    }
    void requireStoring() const;
    void requireLoading() const;
    CString fileName() const;

    UINT m_nMode;
    CFile* m_pFile;
    std::unique_ptr<BYTE[]> m_ownBuffer;
    BYTE* m_buffer;
    UINT m_bufferSize;
    UINT m_position = 0; // next byte to read or write in the buffer
    UINT m_filled = 0;   // loading: end of what the file gave
};

/// Text with its length in front; stored in the wide form, loaded from the wide and the narrow form.
HALVORAN_STANDIN_API CArchive& operator<<(CArchive& ar, const CString& string);
HALVORAN_STANDIN_API CArchive& operator>>(CArchive& ar, CString& string);
/// The length in front of a string; nCharSize becomes 1 for narrow text, 2 for wide.
HALVORAN_STANDIN_API UINT_PTR AfxReadStringLength(CArchive& ar, int& nCharSize);
HALVORAN_STANDIN_API void AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode);

HALVORAN_STANDIN_API CArchive& operator<<(CArchive& ar, SIZE size);
HALVORAN_STANDIN_API CArchive& operator<<(CArchive& ar, POINT point);
HALVORAN_STANDIN_API CArchive& operator<<(CArchive& ar, const RECT& rect);
HALVORAN_STANDIN_API CArchive& operator>>(CArchive& ar, SIZE& size);
HALVORAN_STANDIN_API CArchive& operator>>(CArchive& ar, POINT& point);
HALVORAN_STANDIN_API CArchive& operator>>(CArchive& ar, RECT& rect);
