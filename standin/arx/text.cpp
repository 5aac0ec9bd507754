#include "standin/arx/text.h"

#include <algorithm>

namespace standin {

bool sameText(std::wstring_view a, std::wstring_view b)
{
    return CompareStringOrdinal(a.data(), int(a.size()), b.data(), int(b.size()), TRUE) == CSTR_EQUAL;
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
