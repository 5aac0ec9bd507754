#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_file.h"

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT nGrowBytes)
    : m_nGrowBytes(nGrowBytes), m_nPosition(0), m_nBufferSize(0), m_nFileSize(0), m_lpBuffer(nullptr),
      m_bAutoDelete(TRUE)
{}

CMemFile::CMemFile(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes) : CMemFile(nGrowBytes)
{
    Attach(lpBuffer, nBufferSize, nGrowBytes);
}

CMemFile::~CMemFile()
{
    if (m_lpBuffer && m_bAutoDelete)
        CMemFile::Free(m_lpBuffer);
}

void CMemFile::Attach(BYTE* lpBuffer, UINT nBufferSize, UINT nGrowBytes)
{
    if (m_lpBuffer && m_bAutoDelete)
        Free(m_lpBuffer);
    m_nGrowBytes = nGrowBytes;
    m_nPosition = 0;
    m_nBufferSize = nBufferSize;
    // A block that may grow is taken as empty room, one that may not as a file of that length.
    m_nFileSize = nGrowBytes == 0 ? nBufferSize : 0;
    m_lpBuffer = lpBuffer;
    m_bAutoDelete = FALSE;
}

BYTE* CMemFile::Detach()
{
    BYTE* block = m_lpBuffer;
    m_lpBuffer = nullptr;
    m_nFileSize = m_nBufferSize = m_nPosition = 0;
    return block;
}

BYTE* CMemFile::Alloc(SIZE_T nBytes)
{
    return static_cast<BYTE*>(std::malloc(nBytes));
}

BYTE* CMemFile::Realloc(BYTE* lpMem, SIZE_T nBytes)
{
    return static_cast<BYTE*>(std::realloc(lpMem, nBytes));
}

void CMemFile::Free(BYTE* lpMem)
{
    std::free(lpMem);
}

void CMemFile::GrowFile(SIZE_T dwNewLen)
{
    if (dwNewLen <= m_nBufferSize)
        return;
    if (m_nGrowBytes == 0)
        AfxThrowMemoryException();
    // Half as much again at least, so that many small writes do not copy the block each time.
    const SIZE_T wanted = std::max(dwNewLen, m_nBufferSize + m_nBufferSize / 2);
    const SIZE_T size = (wanted + m_nGrowBytes - 1) / m_nGrowBytes * m_nGrowBytes;
    BYTE* block = m_lpBuffer ? Realloc(m_lpBuffer, size) : Alloc(size);
    if (!block)
        AfxThrowMemoryException();
    m_lpBuffer = block;
    m_nBufferSize = size;
}

BOOL CMemFile::Open(LPCWSTR, UINT, CFileException*)
{
    AfxThrowNotSupportedException();
}

ULONGLONG CMemFile::GetPosition() const
{
    return m_nPosition;
}

ULONGLONG CMemFile::Seek(LONGLONG lOff, UINT nFrom)
{
    const SIZE_T from = nFrom == begin ? 0 : nFrom == current ? m_nPosition : m_nFileSize;
    const LONGLONG position = static_cast<LONGLONG>(from) + lOff;
    if (position < 0)
        AfxThrowFileException(CFileException::badSeek);
    m_nPosition = static_cast<SIZE_T>(position);
    return m_nPosition;
}

void CMemFile::SetLength(ULONGLONG dwNewLen)
{
    GrowFile(dwNewLen);
    if (dwNewLen > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, dwNewLen - m_nFileSize);
    m_nPosition = std::min<SIZE_T>(m_nPosition, dwNewLen);
    m_nFileSize = dwNewLen;
}

ULONGLONG CMemFile::GetLength() const
{
    return m_nFileSize;
}

UINT CMemFile::Read(void* lpBuf, UINT nCount)
{
    if (m_nPosition >= m_nFileSize)
        return 0;
    const UINT count = static_cast<UINT>(std::min<SIZE_T>(nCount, m_nFileSize - m_nPosition));
    std::memcpy(lpBuf, m_lpBuffer + m_nPosition, count);
    m_nPosition += count;
    return count;
}

void CMemFile::Write(const void* lpBuf, UINT nCount)
{
    if (nCount == 0)
        return;
    const SIZE_T last = m_nPosition + nCount;
    GrowFile(last);
    if (m_nPosition > m_nFileSize)
        std::memset(m_lpBuffer + m_nFileSize, 0, m_nPosition - m_nFileSize);
    std::memcpy(m_lpBuffer + m_nPosition, lpBuf, nCount);
    m_nPosition = last;
    m_nFileSize = std::max(m_nFileSize, last);
}

void CMemFile::Flush() {}

void CMemFile::Close()
{
    if (m_lpBuffer && m_bAutoDelete)
        Free(m_lpBuffer);
    m_lpBuffer = nullptr;
    m_nFileSize = m_nBufferSize = m_nPosition = 0;
}

void CMemFile::Abort()
{
    CMemFile::Close();
}
