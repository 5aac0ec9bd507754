#include <algorithm>
#include <cstring>
#include <cwchar>
#include <cwctype>

#include "standin/afx/afx_exception.h"
#include "standin/afx/afx_string.h"
#include "standin/afx/state.h"

namespace {

std::wstring widened(const char* text, int length)
{
    if (!text || length <= 0)
        return {};
    const int count = MultiByteToWideChar(CP_ACP, 0, text, length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(count), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, length, wide.data(), count);
    return wide;
}

int toIndex(std::wstring::size_type position)
{
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

LPCWSTR orEmpty(LPCWSTR text)
{
    return text ? text : L"";
}

constexpr LPCWSTR whiteSpace = L" \t\r\n\v\f";

} // namespace

CString::CString(LPCWSTR text) : m_text(orEmpty(text)) {}

CString::CString(LPCSTR text) : m_text(widened(text, text ? static_cast<int>(std::strlen(text)) : 0)) {}

CString::CString(LPCWSTR text, int length)
{
    SetString(text, length);
}

CString::CString(LPCSTR text, int length) : m_text(widened(text, length)) {}

CString::CString(wchar_t character, int repeat) : m_text(static_cast<std::size_t>(std::max(repeat, 0)), character) {}

CString& CString::operator=(LPCWSTR text)
{
    m_text = std::wstring(orEmpty(text)); // a copy first: the text may be a part of this string
    return *this;
}

CString& CString::operator=(LPCSTR text)
{
    return *this = CString(text);
}

CString& CString::operator=(wchar_t character)
{
    m_text.assign(1, character);
    return *this;
}

CString& CString::operator+=(const CString& text)
{
    m_text += text.m_text;
    return *this;
}

CString& CString::operator+=(LPCWSTR text)
{
    m_text += orEmpty(text);
    return *this;
}

CString& CString::operator+=(LPCSTR text)
{
    return *this += CString(text);
}

CString& CString::operator+=(wchar_t character)
{
    m_text += character;
    return *this;
}

void CString::Append(LPCWSTR text)
{
    *this += text;
}

void CString::Append(LPCWSTR text, int length)
{
    *this += CString(text, length);
}

void CString::AppendChar(wchar_t character)
{
    m_text += character;
}

wchar_t CString::GetAt(int index) const
{
    if (index < 0 || index > GetLength())
        AfxThrowInvalidArgException();
    return m_text[static_cast<std::size_t>(index)];
}

void CString::SetAt(int index, wchar_t character)
{
    if (index < 0 || index >= GetLength())
        AfxThrowInvalidArgException();
    m_text[static_cast<std::size_t>(index)] = character;
}

LPWSTR CString::GetBuffer(int minimumLength)
{
    if (minimumLength > GetLength())
        m_text.resize(static_cast<std::size_t>(minimumLength));
    return m_text.data();
}

LPWSTR CString::GetBufferSetLength(int length)
{
    m_text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return m_text.data();
}

void CString::ReleaseBuffer(int length)
{
    m_text.resize(length < 0 ? std::wcslen(m_text.c_str()) : static_cast<std::size_t>(length));
}

void CString::SetString(LPCWSTR text, int length)
{
    m_text = text && length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

int CString::Compare(LPCWSTR other) const
{
    return std::wcscmp(m_text.c_str(), orEmpty(other));
}

int CString::CompareNoCase(LPCWSTR other) const
{
    return _wcsicmp(m_text.c_str(), orEmpty(other));
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    first = std::clamp(first, 0, GetLength());
    count = std::clamp(count, 0, GetLength() - first);
    return CString(m_text.c_str() + first, count);
}

CString CString::Left(int count) const
{
    return Mid(0, count);
}

CString CString::Right(int count) const
{
    count = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - count, count);
}

CString CString::SpanIncluding(LPCWSTR characters) const
{
    return Left(static_cast<int>(std::wcsspn(m_text.c_str(), characters)));
}

CString CString::SpanExcluding(LPCWSTR characters) const
{
    return Left(static_cast<int>(std::wcscspn(m_text.c_str(), characters)));
}

CString& CString::MakeUpper()
{
    CharUpperBuffW(m_text.data(), static_cast<DWORD>(m_text.size()));
    return *this;
}

CString& CString::MakeLower()
{
    CharLowerBuffW(m_text.data(), static_cast<DWORD>(m_text.size()));
    return *this;
}

CString& CString::Trim()
{
    return Trim(whiteSpace);
}

CString& CString::Trim(wchar_t character)
{
    return TrimRight(character).TrimLeft(character);
}

CString& CString::Trim(LPCWSTR characters)
{
    return TrimRight(characters).TrimLeft(characters);
}

CString& CString::TrimLeft()
{
    return TrimLeft(whiteSpace);
}

CString& CString::TrimLeft(wchar_t character)
{
    return TrimLeft(std::wstring(1, character).c_str());
}

CString& CString::TrimLeft(LPCWSTR characters)
{
    m_text.erase(0, std::min(m_text.find_first_not_of(characters), m_text.size()));
    return *this;
}

CString& CString::TrimRight()
{
    return TrimRight(whiteSpace);
}

CString& CString::TrimRight(wchar_t character)
{
    return TrimRight(std::wstring(1, character).c_str());
}

CString& CString::TrimRight(LPCWSTR characters)
{
    const auto last = m_text.find_last_not_of(characters);
    m_text.erase(last == std::wstring::npos ? 0 : last + 1);
    return *this;
}

int CString::Replace(wchar_t from, wchar_t to)
{
    const auto found = std::count(m_text.begin(), m_text.end(), from);
    std::replace(m_text.begin(), m_text.end(), from, to);
    return static_cast<int>(found);
}

int CString::Replace(LPCWSTR from, LPCWSTR to)
{
    const std::wstring wanted = orEmpty(from);
    const std::wstring replacement = orEmpty(to);
    if (wanted.empty())
        return 0;
    int replaced = 0;
    for (auto at = m_text.find(wanted); at != std::wstring::npos; at = m_text.find(wanted, at + replacement.size())) {
        m_text.replace(at, wanted.size(), replacement);
        ++replaced;
    }
    return replaced;
}

int CString::Remove(wchar_t character)
{
    return static_cast<int>(std::erase(m_text, character));
}

int CString::Insert(int index, wchar_t character)
{
    m_text.insert(static_cast<std::size_t>(std::clamp(index, 0, GetLength())), 1, character);
    return GetLength();
}

int CString::Insert(int index, LPCWSTR text)
{
    m_text.insert(static_cast<std::size_t>(std::clamp(index, 0, GetLength())), std::wstring(orEmpty(text)));
    return GetLength();
}

int CString::Delete(int index, int count)
{
    index = std::max(index, 0);
    if (index < GetLength() && count > 0)
        m_text.erase(static_cast<std::size_t>(index), static_cast<std::size_t>(count));
    return GetLength();
}

int CString::Find(wchar_t character, int start) const
{
    return start < 0 ? -1 : toIndex(m_text.find(character, static_cast<std::size_t>(start)));
}

int CString::Find(LPCWSTR text, int start) const
{
    return start < 0 || !text ? -1 : toIndex(m_text.find(text, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(wchar_t character) const
{
    return toIndex(m_text.rfind(character));
}

int CString::FindOneOf(LPCWSTR characters) const
{
    return toIndex(m_text.find_first_of(characters));
}

void CString::FormatV(LPCWSTR format, va_list arguments)
{
    va_list measured;
    va_copy(measured, arguments);
    const int length = _vscwprintf(format, measured);
    va_end(measured);
    if (length < 0)
        AfxThrowInvalidArgException();
    // The runtime of Windows itself: its %s is wide text, the standard's is narrow.
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    _vsnwprintf(text.data(), text.size(), format, arguments);
    text.resize(static_cast<std::size_t>(length));
    m_text = std::move(text);
}

void CString::FormatPlain(const wchar_t* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

BOOL CString::LoadString(UINT id)
{
    return LoadString(afx::findStringModule(id), id);
}

BOOL CString::LoadString(HINSTANCE instance, UINT id)
{
    LPCWSTR text = nullptr;
    // With a size of 0 the call yields the string where it lies, which has no terminator.
    const int length = ::LoadStringW(instance, id, reinterpret_cast<LPWSTR>(&text), 0);
    SetString(text, length);
    return length > 0;
}

CString operator+(const CString& left, const CString& right)
{
    CString joined(left);
    joined += right;
    return joined;
}

CString operator+(const CString& left, LPCWSTR right)
{
    CString joined(left);
    joined += right;
    return joined;
}

CString operator+(LPCWSTR left, const CString& right)
{
    CString joined(left);
    joined += right;
    return joined;
}

CString operator+(const CString& left, wchar_t right)
{
    CString joined(left);
    joined += right;
    return joined;
}

CString operator+(wchar_t left, const CString& right)
{
    CString joined(left);
    joined += right;
    return joined;
}

BOOL AfxExtractSubString(CString& part, LPCWSTR fullText, int index, wchar_t separator)
{
    part.Empty();
    if (!fullText)
        return FALSE;
    for (; index > 0; --index) {
        fullText = std::wcschr(fullText, separator);
        if (!fullText)
            return FALSE;
        ++fullText;
    }
    const wchar_t* end = std::wcschr(fullText, separator);
    part.SetString(fullText, static_cast<int>(end ? static_cast<std::size_t>(end - fullText) : std::wcslen(fullText)));
    return TRUE;
}
