#include "standin/text.h"

#include <windows.h>

namespace standin {

std::string toUtf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    std::string bytes(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                        nullptr);
    return bytes;
}

std::wstring fromUtf8(std::string_view text)
{
    const int length = static_cast<int>(text.size());
    std::wstring wide(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::wstring upperCase(std::wstring_view text)
{
    std::wstring upper(text);
    CharUpperBuffW(upper.data(), static_cast<DWORD>(upper.size()));
    return upper;
}

} // namespace standin
