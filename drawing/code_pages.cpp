// What the names of code pages in drawing files mean, and what holds for the conversions of every system.

#include "drawing/code_pages.h"

#include <algorithm>

#include "drawing/document.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr int windowsThai = 874;
constexpr int windowsCentralEurope = 1250;
constexpr int windowsCyrillic = 1251;
constexpr int windowsWest = 1252;
constexpr int windowsGreek = 1253;
constexpr int windowsTurkish = 1254;
constexpr int windowsHebrew = 1255;
constexpr int windowsArabic = 1256;
constexpr int windowsBaltic = 1257;
constexpr int windowsVietnamese = 1258;
constexpr int japanese = 932;
constexpr int simplifiedChinese = 936;
constexpr int korean = 949;
constexpr int traditionalChinese = 950;
constexpr int johab = 1361;
constexpr int macintosh = 10000;
constexpr int iso8859 = 28590; // and the part's number

struct Known
{
    int number;
    int windows;
};
constexpr Known codePages[] = {
    {437, windowsWest},
    {737, windowsGreek},
    {775, windowsBaltic},
    {850, windowsWest},
    {852, windowsCentralEurope},
    {855, windowsCyrillic},
    {857, windowsTurkish},
    {860, windowsWest},
    {861, windowsWest},
    {862, windowsHebrew},
    {863, windowsWest},
    {864, windowsArabic},
    {865, windowsWest},
    {866, windowsCyrillic},
    {869, windowsGreek},
    {windowsThai, windowsThai},
    {japanese, japanese},
    {simplifiedChinese, simplifiedChinese},
    {korean, korean},
    {traditionalChinese, traditionalChinese},
    {windowsCentralEurope, windowsCentralEurope},
    {windowsCyrillic, windowsCyrillic},
    {windowsWest, windowsWest},
    {windowsGreek, windowsGreek},
    {windowsTurkish, windowsTurkish},
    {windowsHebrew, windowsHebrew},
    {windowsArabic, windowsArabic},
    {windowsBaltic, windowsBaltic},
    {windowsVietnamese, windowsVietnamese},
    {johab, korean},
    {macintosh, windowsWest},
    {iso8859 + 1, windowsWest},
    {iso8859 + 2, windowsCentralEurope},
    {iso8859 + 3, windowsWest},
    {iso8859 + 4, windowsBaltic},
    {iso8859 + 5, windowsCyrillic},
    {iso8859 + 6, windowsArabic},
    {iso8859 + 7, windowsGreek},
    {iso8859 + 8, windowsHebrew},
    {iso8859 + 9, windowsTurkish},
};

const Known* find(int number)
{
    const auto* found = std::find_if(std::begin(codePages), std::end(codePages),
                                     [&](const Known& known) { return known.number == number; });
    return found == std::end(codePages) ? nullptr : found;
}

constexpr std::pair<std::string_view, int> named[] = {
    {"ascii", windowsWest}, {"big5", traditionalChinese}, {"gb2312", simplifiedChinese}, {"ksc5601", korean},
    {"johab", johab},       {"mac-roman", macintosh}};
// What stands before a number.
constexpr std::pair<std::string_view, int> prefixes[] = {{"ansi_", 0}, {"dos", 0}, {"cp", 0}, {"iso8859_", iso8859}};

// Characters of the lower half are never converted.
constexpr char32_t firstConverted = 0x80;
// Of a character, in any of these code pages.
constexpr std::size_t longestCharacter = 2;

} // namespace

std::optional<int> codePageNumber(std::string_view name)
{
    for (const auto& [known, number] : named) {
        if (sameName(name, known)) {
            return number;
        }
    }
    for (const auto& [prefix, base] : prefixes) {
        if (sameName(name.substr(0, prefix.size()), prefix)) {
            const auto number = parseInteger(name.substr(prefix.size()));
            const Known* known = number && *number > 0 && *number < macintosh ? find(base + *number) : nullptr;
            return known ? std::optional(known->number) : std::nullopt;
        }
    }
    return std::nullopt;
}

int windowsCodePage(int number)
{
    const Known* known = find(number);
    return known ? known->windows : windowsWest;
}

char32_t CodePage::take(std::string_view& bytes) const
{
    const auto lead = static_cast<unsigned char>(bytes[0]);
    for (std::size_t size = 1; lead >= firstConverted && size <= std::min(longestCharacter, bytes.size()); ++size) {
        if (const auto character = decodeOne(bytes.substr(0, size))) {
            bytes.remove_prefix(size);
            return *character;
        }
    }
    bytes.remove_prefix(1);
    return lead;
}

std::optional<std::string> CodePage::bytesOf(char32_t character) const
{
    if (character < firstConverted) {
        return std::string(1, static_cast<char>(character));
    }
    // A system may offer what only looks like the character; then it does not come back.
    const std::string bytes = encodeOne(character);
    std::string_view rest = bytes;
    if (bytes.empty() || take(rest) != character || !rest.empty()) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace drawing
