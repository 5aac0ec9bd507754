#include <algorithm>
#include <cstring>
#include <cwchar>
#include <exception>

#include "standin/afx/afx_archive.h"
#include "standin/afx/afx_exception.h"

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_nMode(nMode), m_pFile(pFile), m_bufferSize(static_cast<UINT>(std::max(nBufSize, 128)))
{
    if (!lpBuf || nBufSize < 128)
        m_ownBuffer = std::make_unique<BYTE[]>(m_bufferSize);
    m_buffer = m_ownBuffer ? m_ownBuffer.get() : static_cast<BYTE*>(lpBuf);
}

CArchive::~CArchive() noexcept(false)
{
    if (!m_pFile || (m_nMode & bNoFlushOnDelete))
        return;
    try {
        Close();
    } catch (CException* problem) {
        if (std::uncaught_exceptions() == 0)
            throw;
        problem->Delete();
    }
}

CString CArchive::fileName() const
{
    return m_pFile ? m_pFile->GetFilePath() : CString();
}

void CArchive::requireStoring() const
{
    if (!IsStoring())
        AfxThrowArchiveException(CArchiveException::readOnly, fileName());
}

void CArchive::requireLoading() const
{
    if (!IsLoading())
        AfxThrowArchiveException(CArchiveException::writeOnly, fileName());
}

UINT CArchive::Read(void* lpBuf, UINT nMax)
{
    requireLoading();
    BYTE* target = static_cast<BYTE*>(lpBuf);
    UINT missing = nMax;
    while (missing > 0) {
        if (m_position == m_filled) {
            m_position = 0;
            m_filled = m_pFile->Read(m_buffer, m_bufferSize);
            if (m_filled == 0)
                break;
        }
        const UINT part = std::min(missing, m_filled - m_position);
        std::memcpy(target, m_buffer + m_position, part);
        m_position += part;
        target += part;
        missing -= part;
    }
    return nMax - missing;
}

void CArchive::EnsureRead(void* lpBuf, UINT nCount)
{
    if (Read(lpBuf, nCount) != nCount)
        AfxThrowArchiveException(CArchiveException::endOfFile, fileName());
}

void CArchive::Write(const void* lpBuf, UINT nMax)
{
    requireStoring();
    const BYTE* source = static_cast<const BYTE*>(lpBuf);
    while (nMax > 0) {
        const UINT part = std::min(nMax, m_bufferSize - m_position);
        std::memcpy(m_buffer + m_position, source, part);
        m_position += part;
        source += part;
        nMax -= part;
        if (m_position == m_bufferSize)
            Flush();
    }
}

void CArchive::Flush()
{
    if (!m_pFile)
        return;
    if (IsLoading()) {
        // The file goes back to where the archive's reader stands.
        if (m_filled > m_position)
            m_pFile->Seek(-static_cast<LONGLONG>(m_filled - m_position), CFile::current);
        m_position = m_filled = 0;
        return;
    }
    const UINT count = m_position;
    m_position = 0; // first: a write that fails is not tried again when the archive closes
    if (count > 0)
        m_pFile->Write(m_buffer, count);
}

void CArchive::Close()
{
    CFile* file = m_pFile;
    if (!file)
        return;
    Flush();
    m_pFile = nullptr;
}

void CArchive::Abort()
{
    m_position = m_filled = 0;
    m_pFile = nullptr;
}

void CArchive::WriteString(LPCWSTR lpsz)
{
    Write(lpsz, static_cast<UINT>(std::wcslen(lpsz) * sizeof(wchar_t)));
}

BOOL CArchive::ReadString(CString& rString)
{
    rString.Empty();
    wchar_t character;
    BOOL found = FALSE;
    while (Read(&character, sizeof character) == sizeof character) {
        found = TRUE;
        if (character == L'\n')
            break;
        rString += character;
    }
    rString.TrimRight(L'\r');
    return found;
}

void AfxWriteStringLength(CArchive& ar, UINT_PTR nLength, BOOL bUnicode)
{
    if (bUnicode)
        ar << BYTE{0xFF} << WORD{0xFFFE};
    if (nLength < 0xFF) {
        ar << static_cast<BYTE>(nLength);
        return;
    }
    ar << BYTE{0xFF};
    if (nLength < 0xFFFE) {
        ar << static_cast<WORD>(nLength);
        return;
    }
    ar << WORD{0xFFFF};
    if (nLength < 0xFFFFFFFF) {
        ar << static_cast<DWORD>(nLength);
        return;
    }
    ar << DWORD{0xFFFFFFFF} << static_cast<ULONGLONG>(nLength);
}

UINT_PTR AfxReadStringLength(CArchive& ar, int& nCharSize)
{
    nCharSize = sizeof(char);
    BYTE small = 0;
    ar >> small;
    if (small < 0xFF)
        return small;
    WORD medium = 0;
    ar >> medium;
    if (medium == 0xFFFE) { // the mark of wide text; its length follows
        nCharSize = sizeof(wchar_t);
        ar >> small;
        if (small < 0xFF)
            return small;
        ar >> medium;
    }
    if (medium < 0xFFFF)
        return medium;
    DWORD large = 0;
    ar >> large;
    if (large < 0xFFFFFFFF)
        return large;
    ULONGLONG huge = 0;
    ar >> huge;
    return huge;
}

CArchive& operator<<(CArchive& ar, const CString& string)
{
    const UINT_PTR length = static_cast<UINT_PTR>(string.GetLength());
    AfxWriteStringLength(ar, length, TRUE);
    ar.Write(string.GetString(), static_cast<UINT>(length * sizeof(wchar_t)));
    return ar;
}

namespace {

// Piece by piece, so that a length that the file does not hold ends in an error and not in a huge block of memory.
template <typename Character> std::basic_string<Character> readCharacters(CArchive& ar, UINT_PTR length)
{
    std::basic_string<Character> text;
    while (length > 0) {
        const std::size_t part = std::min<UINT_PTR>(length, 65536);
        const std::size_t had = text.size();
        text.resize(had + part);
        ar.EnsureRead(text.data() + had, static_cast<UINT>(part * sizeof(Character)));
        length -= part;
    }
    return text;
}

} // namespace

CArchive& operator>>(CArchive& ar, CString& string)
{
    int characterSize = 0;
    const UINT_PTR length = AfxReadStringLength(ar, characterSize);
    if (characterSize == sizeof(wchar_t)) {
        const std::wstring text = readCharacters<wchar_t>(ar, length);
        string.SetString(text.data(), static_cast<int>(text.size()));
    } else {
        const std::string text = readCharacters<char>(ar, length);
        string = CString(text.data(), static_cast<int>(text.size()));
    }
    return ar;
}

CArchive& operator<<(CArchive& ar, SIZE size)
{
    return ar << size.cx << size.cy;
}

CArchive& operator<<(CArchive& ar, POINT point)
{
    return ar << point.x << point.y;
}

CArchive& operator<<(CArchive& ar, const RECT& rect)
{
    return ar << rect.left << rect.top << rect.right << rect.bottom;
}

CArchive& operator>>(CArchive& ar, SIZE& size)
{
    return ar >> size.cx >> size.cy;
}

CArchive& operator>>(CArchive& ar, POINT& point)
{
    return ar >> point.x >> point.y;
}

CArchive& operator>>(CArchive& ar, RECT& rect)
{
    return ar >> rect.left >> rect.top >> rect.right >> rect.bottom;
}
