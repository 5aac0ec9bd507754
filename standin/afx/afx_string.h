// CString: UTF-16 text with value semantics.
#pragma once

#include <cstdarg>
#include <string>

#include "standin/afx/afx_base.h"

class CString;

namespace afx {

/// What Format hands to the C runtime: class objects cannot pass through an ellipsis, so a CString goes as its
/// characters.
inline LPCWSTR variadic(const CString& text);
template <typename Value> Value variadic(Value value)
{
    return value;
}

} // namespace afx

/// Narrow text is in the system's ANSI code page. Indices are in UTF-16 code units; a bad index yields empty text or
/// -1.
class HALVORAN_STANDIN_API CString
{
public:
    CString() = default;
    CString(LPCWSTR text);
    CString(LPCSTR text);
    CString(LPCWSTR text, int length);
    CString(LPCSTR text, int length);
    explicit CString(wchar_t character, int repeat = 1);

    CString& operator=(LPCWSTR text);
    CString& operator=(LPCSTR text);
    CString& operator=(wchar_t character);
    CString& operator+=(const CString& text);
    CString& operator+=(LPCWSTR text);
    CString& operator+=(LPCSTR text);
    CString& operator+=(wchar_t character);
    void Append(LPCWSTR text);
    void Append(LPCWSTR text, int length);
    void AppendChar(wchar_t character);

    operator LPCWSTR() const { return m_text.c_str(); }
    LPCWSTR GetString() const { return m_text.c_str(); }
    int GetLength() const { return static_cast<int>(m_text.size()); }
    BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    wchar_t GetAt(int index) const;
    wchar_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, wchar_t character);

    /// The characters for writing: at least minimumLength of them and a terminator, valid until ReleaseBuffer.
    LPWSTR GetBuffer() { return GetBuffer(GetLength()); }
    LPWSTR GetBuffer(int minimumLength);
    LPWSTR GetBufferSetLength(int length);
    /// -1: the text ends at its first terminator.
    void ReleaseBuffer(int length = -1);
    void ReleaseBufferSetLength(int length) { ReleaseBuffer(length); }
    void SetString(LPCWSTR text) { *this = text; }
    void SetString(LPCWSTR text, int length);
    void FreeExtra() { m_text.shrink_to_fit(); }

    int Compare(LPCWSTR other) const;
    int CompareNoCase(LPCWSTR other) const;

    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;
    CString SpanIncluding(LPCWSTR characters) const;
    CString SpanExcluding(LPCWSTR characters) const;

    CString& MakeUpper();
    CString& MakeLower();
    CString& Trim();
    CString& Trim(wchar_t character);
    CString& Trim(LPCWSTR characters);
    CString& TrimLeft();
    CString& TrimLeft(wchar_t character);
    CString& TrimLeft(LPCWSTR characters);
    CString& TrimRight();
    CString& TrimRight(wchar_t character);
    CString& TrimRight(LPCWSTR characters);
    int Replace(wchar_t from, wchar_t to);
    int Replace(LPCWSTR from, LPCWSTR to);
    int Remove(wchar_t character);
    /// Both return the new length.
    int Insert(int index, wchar_t character);
    int Insert(int index, LPCWSTR text);
    int Delete(int index, int count = 1);

    int Find(wchar_t character, int start = 0) const;
    int Find(LPCWSTR text, int start = 0) const;
    int ReverseFind(wchar_t character) const;
    int FindOneOf(LPCWSTR characters) const;

    /// As the C runtime's wide printf of Windows: %s is wide text, %S narrow.
    template <typename... Arguments> void Format(LPCWSTR format, const Arguments&... arguments)
    {
        FormatPlain(format, afx::variadic(arguments)...);
    }
    template <typename... Arguments> void Format(UINT formatId, const Arguments&... arguments)
    {
        CString format;
        if (format.LoadString(formatId)) {
            FormatPlain(format.GetString(), afx::variadic(arguments)...);
        } else {
            Empty();
        }
    }
    template <typename... Arguments> void AppendFormat(LPCWSTR format, const Arguments&... arguments)
    {
        CString tail;
        tail.FormatPlain(format, afx::variadic(arguments)...);
        *this += tail;
    }
    void FormatV(LPCWSTR format, va_list arguments);

    /// From the string table that AfxFindResourceHandle finds; false and empty when there is no such string.
    BOOL LoadString(UINT id);
    BOOL LoadString(HINSTANCE instance, UINT id);

private:
    void FormatPlain(const wchar_t* format, ...);

    std::wstring m_text;
};

inline LPCWSTR afx::variadic(const CString& text)
{
    return text.GetString();
}

HALVORAN_STANDIN_API CString operator+(const CString& left, const CString& right);
HALVORAN_STANDIN_API CString operator+(const CString& left, LPCWSTR right);
HALVORAN_STANDIN_API CString operator+(LPCWSTR left, const CString& right);
HALVORAN_STANDIN_API CString operator+(const CString& left, wchar_t right);
HALVORAN_STANDIN_API CString operator+(wchar_t left, const CString& right);

inline bool operator==(const CString& left, const CString& right)
{
    return left.Compare(right) == 0;
}
inline bool operator==(const CString& left, LPCWSTR right)
{
    return left.Compare(right) == 0;
}
inline bool operator<(const CString& left, const CString& right)
{
    return left.Compare(right) < 0;
}
inline bool operator>(const CString& left, const CString& right)
{
    return left.Compare(right) > 0;
}

/// The part of fullText between separators number `index` and `index` + 1; false and empty past the last part.
HALVORAN_STANDIN_API BOOL AfxExtractSubString(CString& part, LPCWSTR fullText, int index, wchar_t separator = L'\n');
