#include "fonts/font_names.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

namespace fonts {
namespace {

// The bytes of a file, numbers big-endian; what lies outside reads as 0.
class Bytes
{
public:
    explicit Bytes(std::vector<char> content) : m_content(std::move(content)) {}

    std::uint32_t number(std::size_t at, std::size_t size) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = at; i < at + size; ++i)
            value = value << 8 | (i < m_content.size() ? static_cast<unsigned char>(m_content[i]) : 0u);
        return value;
    }
    std::string_view text(std::size_t at, std::size_t size) const
    {
        const std::string_view all(m_content.data(), m_content.size());
        return at < all.size() ? all.substr(at, size) : std::string_view();
    }

private:
    std::vector<char> m_content;
};

// Where a table begins; 0 if there is none.
std::size_t tableAt(const Bytes& font, std::string_view tag)
{
    constexpr std::size_t firstRecord = 12, recordSize = 16;
    const std::uint32_t count = font.number(4, 2);
    for (std::size_t record = firstRecord; record < firstRecord + count * recordSize; record += recordSize) {
        if (font.text(record, 4) == tag)
            return font.number(record + 8, 4);
    }
    return 0;
}

// The family's name as the system knows it; of several languages the American one.
std::wstring familyOf(const Bytes& font, std::size_t names)
{
    constexpr std::uint32_t windowsPlatform = 3, familyName = 1, american = 0x409;
    constexpr std::size_t recordSize = 12;
    const std::size_t strings = names + font.number(names + 4, 2);
    std::wstring family;
    for (std::uint32_t i = 0; i < font.number(names + 2, 2); ++i) {
        const std::size_t record = names + 6 + i * recordSize;
        const bool wanted = font.number(record, 2) == windowsPlatform && font.number(record + 6, 2) == familyName;
        if (!wanted || (!family.empty() && font.number(record + 4, 2) != american))
            continue;
        family.clear();
        const std::size_t at = strings + font.number(record + 10, 2);
        for (std::size_t k = 0; k + 1 < font.number(record + 8, 2); k += 2)
            family += static_cast<wchar_t>(font.number(at + k, 2));
    }
    return family;
}

} // namespace

std::optional<FontNames> readFontNames(const std::filesystem::path& file)
{
    constexpr std::uint32_t trueType = 0x00010000;
    std::ifstream stream(file, std::ios::binary);
    const Bytes font(std::vector<char>(std::istreambuf_iterator<char>(stream), {}));
    const std::size_t names = tableAt(font, "name"), head = tableAt(font, "head");
    if (font.number(0, 4) != trueType || names == 0 || head == 0)
        return std::nullopt;
    constexpr std::size_t styleInHead = 44;
    const std::uint32_t style = font.number(head + styleInHead, 2);
    FontNames found{familyOf(font, names), (style & 1) != 0, (style & 2) != 0};
    return found.family.empty() ? std::nullopt : std::optional(found);
}

} // namespace fonts
