// What the names of code pages in drawing files mean, and what holds for the conversions of every system.

#include "drawing/code_pages.h"

#include <algorithm>

#include "drawing/document.h"
#include "drawing/numbers.h"

namespace drawing {

namespace {

constexpr int kWindowsThai = 874;
constexpr int kWindowsCentralEurope = 1250;
constexpr int kWindowsCyrillic = 1251;
constexpr int kWindowsWest = 1252;
constexpr int kWindowsGreek = 1253;
constexpr int kWindowsTurkish = 1254;
constexpr int kWindowsHebrew = 1255;
constexpr int kWindowsArabic = 1256;
constexpr int kWindowsBaltic = 1257;
constexpr int kWindowsVietnamese = 1258;
constexpr int kJapanese = 932;
constexpr int kSimplifiedChinese = 936;
constexpr int kKorean = 949;
constexpr int kTraditionalChinese = 950;
constexpr int kJohab = 1361;
constexpr int kMacintosh = 10000;
constexpr int kIso8859 = 28590; // and the part's number

struct Known
{
    int number;
    int windows;
};
constexpr Known kCodePages[] = {
    {437, kWindowsWest},
    {737, kWindowsGreek},
    {775, kWindowsBaltic},
    {850, kWindowsWest},
    {852, kWindowsCentralEurope},
    {855, kWindowsCyrillic},
    {857, kWindowsTurkish},
    {860, kWindowsWest},
    {861, kWindowsWest},
    {862, kWindowsHebrew},
    {863, kWindowsWest},
    {864, kWindowsArabic},
    {865, kWindowsWest},
    {866, kWindowsCyrillic},
    {869, kWindowsGreek},
    {kWindowsThai, kWindowsThai},
    {kJapanese, kJapanese},
    {kSimplifiedChinese, kSimplifiedChinese},
    {kKorean, kKorean},
    {kTraditionalChinese, kTraditionalChinese},
    {kWindowsCentralEurope, kWindowsCentralEurope},
    {kWindowsCyrillic, kWindowsCyrillic},
    {kWindowsWest, kWindowsWest},
    {kWindowsGreek, kWindowsGreek},
    {kWindowsTurkish, kWindowsTurkish},
    {kWindowsHebrew, kWindowsHebrew},
    {kWindowsArabic, kWindowsArabic},
    {kWindowsBaltic, kWindowsBaltic},
    {kWindowsVietnamese, kWindowsVietnamese},
    {kJohab, kKorean},
    {kMacintosh, kWindowsWest},
    {kIso8859 + 1, kWindowsWest},
    {kIso8859 + 2, kWindowsCentralEurope},
    {kIso8859 + 3, kWindowsWest},
    {kIso8859 + 4, kWindowsBaltic},
    {kIso8859 + 5, kWindowsCyrillic},
    {kIso8859 + 6, kWindowsArabic},
    {kIso8859 + 7, kWindowsGreek},
    {kIso8859 + 8, kWindowsHebrew},
    {kIso8859 + 9, kWindowsTurkish},
};

const Known* find(int number)
{
    const auto* found = std::find_if(std::begin(kCodePages), std::end(kCodePages),
                                     [&](const Known& known) { return known.number == number; });
    return found == std::end(kCodePages) ? nullptr : found;
}

constexpr std::pair<std::string_view, int> kNamed[] = {
    {"ascii", kWindowsWest}, {"big5", kTraditionalChinese}, {"gb2312", kSimplifiedChinese}, {"ksc5601", kKorean},
    {"johab", kJohab},       {"mac-roman", kMacintosh}};
// What stands before a number.
constexpr std::pair<std::string_view, int> kPrefixes[] = {{"ansi_", 0}, {"dos", 0}, {"cp", 0}, {"iso8859_", kIso8859}};

// Characters of the lower half are never converted.
constexpr char32_t kFirstConverted = 0x80;
// Of a character, in any of these code pages.
constexpr std::size_t kLongestCharacter = 2;

} // namespace

std::optional<int> codePageNumber(std::string_view name)
{
    for (const auto& [known, number] : kNamed) {
        if (sameName(name, known)) {
            return number;
        }
    }
    for (const auto& [prefix, base] : kPrefixes) {
        if (sameName(name.substr(0, prefix.size()), prefix)) {
            const auto number = parseInteger(name.substr(prefix.size()));
            const Known* known = number && *number > 0 && *number < kMacintosh ? find(base + *number) : nullptr;
            return known ? std::optional(known->number) : std::nullopt;
        }
    }
    return std::nullopt;
}

int windowsCodePage(int number)
{
    const Known* known = find(number);
    return known ? known->windows : kWindowsWest;
}

char32_t CodePage::take(std::string_view& bytes) const
{
    const auto lead = static_cast<unsigned char>(bytes[0]);
    for (std::size_t size = 1; lead >= kFirstConverted && size <= std::min(kLongestCharacter, bytes.size()); ++size) {
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
    if (character < kFirstConverted) {
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
