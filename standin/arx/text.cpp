#include "standin/arx/text.h"

#include <algorithm>

namespace standin {

std::wstring widen(std::string_view utf8)
{
    if (utf8.empty())
        return {};
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), int(utf8.size()), nullptr, 0);
    std::wstring wide(std::size_t(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), int(utf8.size()), wide.data(), length);
    return wide;
}

std::string narrow(std::wstring_view wide)
{
    if (wide.empty())
        return {};
    const int length = WideCharToMultiByte(CP_UTF8, 0, wide.data(), int(wide.size()), nullptr, 0, nullptr, nullptr);
    std::string utf8(std::size_t(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), int(wide.size()), utf8.data(), length, nullptr, nullptr);
    return utf8;
}

bool sameText(std::wstring_view a, std::wstring_view b)
{
    return CompareStringOrdinal(a.data(), int(a.size()), b.data(), int(b.size()), TRUE) == CSTR_EQUAL;
}

std::wstring upperCase(std::wstring_view text)
{
    std::wstring upper(text);
    CharUpperBuffW(upper.data(), DWORD(upper.size()));
    return upper;
}

std::wstring readArgument(const ACHAR* text)
{
    MEMORY_BASIC_INFORMATION block{};
    if (!text || !VirtualQuery(text, &block, sizeof block) || block.State != MEM_COMMIT)
        return {};
    const auto* end = static_cast<const std::uint8_t*>(block.BaseAddress) + block.RegionSize;
    const auto room = std::size_t(end - reinterpret_cast<const std::uint8_t*>(text)) / sizeof(ACHAR);
    const std::size_t limit = std::min<std::size_t>(room, 255);
    return std::wstring(text, std::find(text, text + limit, L'\0'));
}

} // namespace standin
